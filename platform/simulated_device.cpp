// The device's four calls on hosts that have no driver for it: the simulated adapter answers in
// the tool's own process. A8000_SCENARIO names the scenario file (the built-in scenario without
// it), A8000_TRACE a file that every call is recorded in.
#ifndef _WIN32

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/device_io.h"
#include "platform/trace_file.h"
#include "simulator/adapter.h"
#include "simulator/builtin_scenario.h"
#include "simulator/scenario_error.h"
#include "simulator/scenario_memory.h"
#include "simulator/scenario_parser.h"

namespace {

constexpr char DevicePath[] = R"(\\.\A8000)";

constexpr DWORD ErrorInvalidHandle = 6;
constexpr DWORD ErrorInvalidData = 13;

struct SimulatedDevice {
  bool started;   // the two variables have been read
  bool unusable;  // the scenario or the trace file could not be used
  bool open;
  DWORD lastError;
  Adapter adapter;
  Scenario scenario;  // one that was read from a file
  void* memory;       // the scenario's records, the adapter's counters
  bool tracing;
  TraceFile trace;
};

SimulatedDevice* Device() {
  static SimulatedDevice device;
  return &device;
}

// Says "a8000: FILE:LINE: what is wrong" on standard error; the word is the one at fault.
void ReportError(const char* name, const ScenarioError* error, const char* text) {
  char line[12] = {};
  char* digit = line + sizeof(line) - 1;
  uint32_t number = error->line;
  do {
    *--digit = static_cast<char>('0' + number % 10);
    number /= 10;
  } while (number > 0);

  WriteMessage("a8000: ");
  WriteMessage(name);
  WriteMessage(":");
  WriteMessage(digit);
  WriteMessage(": ");
  WriteMessage(error->what);
  if (error->wordLength > 0) {
    char word[MostShown + 1];
    CopyWord(text + error->wordStart, error->wordLength, word);
    WriteMessage(": ");
    WriteMessage(word);
  }
  WriteMessage("\n");
}

struct FileText {
  char* bytes;
  size_t size;
};

// Makes room for more of a file's text. Returns false where memory or the limit is reached; one
// byte more than a scenario may have is let in, for the parser to refuse.
bool GrowText(FileText* text, size_t* capacity) {
  constexpr size_t Limit = MaxScenarioBytes + size_t{1};
  const size_t doubled = *capacity == 0 ? 65536 : *capacity * 2;
  const size_t wanted = doubled < Limit ? doubled : Limit;
  if (wanted == *capacity) return false;
  char* larger = static_cast<char*>(realloc(text->bytes, wanted));
  if (larger == nullptr) return false;
  text->bytes = larger;
  *capacity = wanted;
  return true;
}

// Reads a file to its end or to the limit. Returns false on failure; errno says why.
bool ReadText(const char* name, FileText* text) {
  const int file = open(name, O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  size_t capacity = 0;
  ssize_t got = 1;
  while (got > 0) {
    if (text->size == capacity && !GrowText(text, &capacity)) break;
    do {
      got = read(file, text->bytes + text->size, capacity - text->size);
    } while (got < 0 && errno == EINTR);
    if (got > 0) text->size += static_cast<size_t>(got);
  }
  const int error = errno;
  close(file);
  errno = error;
  return got >= 0 && (got == 0 || text->size > MaxScenarioBytes);
}

// Parses a scenario that is known to be sound into memory that the process keeps, and starts the
// adapter with it. Returns false where there is no memory.
bool StoreScenario(SimulatedDevice* device, const FileText* text, ScenarioSizes sizes) {
  device->memory = calloc(1, ScenarioMemoryBytes(&sizes) + size_t{1});
  if (device->memory == nullptr) return false;
  ScenarioMemory memory = {};
  uint32_t* served = DivideScenarioMemory(device->memory, &sizes, &memory);
  ParseScenario(text->bytes, text->size, &memory, &sizes, &device->scenario);
  AdapterStart(&device->adapter, &device->scenario, served);
  return true;
}

// Returns false, after a message, for a file that cannot be used.
bool LoadScenario(SimulatedDevice* device, const char* name) {
  FileText text = {};
  ScenarioSizes sizes = {};
  ScenarioError error = {};
  bool loaded = false;
  if (ReadText(name, &text)) {
    error = ParseScenario(text.bytes, text.size, nullptr, &sizes, nullptr);
    loaded = error.what == nullptr && StoreScenario(device, &text, sizes);
  }
  if (error.what != nullptr) {
    ReportError(name, &error, text.bytes);
  } else if (!loaded) {
    ReportFileError(name);
  }
  free(text.bytes);
  return loaded;
}

// Starts the adapter with the built-in scenario.
bool LoadBuiltinScenario(SimulatedDevice* device) {
  device->memory = calloc(BuiltinScenario.ruleCount, sizeof(uint32_t));
  if (device->memory == nullptr) return false;
  AdapterStart(&device->adapter, &BuiltinScenario, static_cast<uint32_t*>(device->memory));
  return true;
}

// Reads the two variables at the first call that touches the device.
void Start(SimulatedDevice* device) {
  if (device->started) return;
  device->started = true;

  const char* scenarioName = HostVariable("A8000_SCENARIO");
  device->unusable =
      scenarioName == nullptr ? !LoadBuiltinScenario(device) : !LoadScenario(device, scenarioName);

  const char* traceName = HostVariable("A8000_TRACE");
  if (traceName == nullptr) return;
  device->tracing = CreateTraceFile(&device->trace, traceName);
  if (!device->tracing) device->unusable = true;
}

// Sets the last-error code of a failed call.
BOOL Refuse(SimulatedDevice* device, DWORD error) {
  device->lastError = error;
  return 0;
}

HANDLE RefuseOpening(SimulatedDevice* device, DWORD error) {
  Refuse(device, error);
  return INVALID_HANDLE_VALUE;
}

}  // namespace

HANDLE CreateFileA(const char* path, DWORD access, DWORD sharing, void* /*security*/,
                   DWORD disposition, DWORD attributes, HANDLE /*templateFile*/) {
  SimulatedDevice* simulated = Device();
  Start(simulated);
  const bool channelParameters = access == (GENERIC_READ | GENERIC_WRITE) && sharing == 0 &&
                                 disposition == CREATE_ALWAYS &&
                                 attributes == FILE_ATTRIBUTE_NORMAL;
  if (path == nullptr || strcmp(path, DevicePath) != 0) {
    return RefuseOpening(simulated, ErrorFileNotFound);
  }
  if (!channelParameters) return RefuseOpening(simulated, ErrorInvalidParameter);
  CallResult result = {Outcome::Fails, ErrorInvalidData};
  if (!simulated->unusable) result = AdapterOpen(&simulated->adapter);
  if (simulated->tracing) TraceOpen(&simulated->trace.trace, result);
  if (result.outcome == Outcome::Fails) return RefuseOpening(simulated, result.error);
  if (result.outcome == Outcome::YieldsNull) return nullptr;
  simulated->open = true;
  return simulated;
}

BOOL DeviceIoControl(HANDLE device, DWORD controlCode, void* input, DWORD inputLength, void* output,
                     DWORD outputLength, DWORD* bytesReturned, void* /*overlapped*/) {
  SimulatedDevice* simulated = Device();
  uint32_t oid = 0;
  if (device != simulated || !simulated->open) return Refuse(simulated, ErrorInvalidHandle);
  if (controlCode != QueryGlobalStats) return Refuse(simulated, ErrorInvalidFunction);
  if (inputLength != sizeof(oid)) return Refuse(simulated, ErrorInvalidParameter);
  memcpy(&oid, input, sizeof(oid));

  auto* payload = static_cast<uint8_t*>(output);
  Trace* trace = simulated->tracing ? &simulated->trace.trace : nullptr;
  if (trace != nullptr) TraceRequest(trace, oid, payload, outputLength);
  const RequestResult result = AdapterRequest(&simulated->adapter, oid, payload, outputLength);
  if (trace != nullptr) TraceAnswer(trace, &result, payload, outputLength);
  if (trace != nullptr && result.unserved) {
    const NearestRule nearest = FindNearestRule(&simulated->adapter, oid, payload, outputLength);
    TraceUnserved(trace, &nearest);
  }
  if (bytesReturned != nullptr) *bytesReturned = result.returned;
  if (result.call.outcome == Outcome::Fails) return Refuse(simulated, result.call.error);
  return 1;
}

BOOL CloseHandle(HANDLE device) {
  SimulatedDevice* simulated = Device();
  if (device != simulated || !simulated->open) return Refuse(simulated, ErrorInvalidHandle);
  const CallResult result = AdapterClose(&simulated->adapter);
  if (simulated->tracing) TraceClose(&simulated->trace.trace, result);
  if (result.outcome == Outcome::Fails) return Refuse(simulated, result.error);
  simulated->open = false;
  return 1;
}

DWORD GetLastError() {
  return Device()->lastError;
}

#endif
