// The device's calls on hosts that have no driver for it: the simulated adapter answers in the
// tool's own process. A8000_SCENARIO names the scenario file (the built-in scenario without it),
// A8000_TRACE a file that every call is recorded in.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "device/device.h"
#include "device/trace_file.h"
#include "simulator/adapter.h"
#include "simulator/builtin_scenario.h"
#include "simulator/scenario_error.h"
#include "simulator/scenario_memory.h"
#include "simulator/scenario_parser.h"

namespace {

constexpr uint32_t ErrorInvalidData = 13;

struct SimulatedDevice {
  uint32_t lastError;
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

// Prints "a8000: FILE:LINE: what is wrong: WORD" on standard error. `word` is the one at fault.
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

// Makes room for more of a file's text. Returns false if there is no memory or the limit is
// reached. The limit is one byte more than a scenario may have, so that the parser refuses it.
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

// Parses a scenario that has no errors into memory that the process keeps, and starts the adapter
// with it. Returns false if there is no memory.
bool StoreScenario(SimulatedDevice* device, const FileText* text, ScenarioSizes sizes) {
  device->memory = calloc(1, ScenarioMemoryBytes(&sizes) + size_t{1});
  if (device->memory == nullptr) return false;
  ScenarioMemory memory = {};
  uint32_t* served = DivideScenarioMemory(device->memory, &sizes, &memory);
  ParseScenario(text->bytes, text->size, &memory, &sizes, &device->scenario);
  AdapterStart(&device->adapter, &device->scenario, served);
  return true;
}

// If the file cannot be used, prints a message and returns false.
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

// Whether two names are of one file, through links too.
bool IsSameFile(const char* name, const char* other) {
  struct stat one = {};
  struct stat two = {};
  return stat(name, &one) == 0 && stat(other, &two) == 0 && S_ISREG(one.st_mode) &&
         one.st_dev == two.st_dev && one.st_ino == two.st_ino;
}

// Reads the two variables. If a file cannot be used, prints a message and returns false.
bool Start(SimulatedDevice* device) {
  const char* scenarioName = HostVariable("A8000_SCENARIO");
  const char* traceName = HostVariable("A8000_TRACE");
  if (scenarioName != nullptr && traceName != nullptr && IsSameFile(scenarioName, traceName)) {
    const ScenarioError error = {0, "the trace would take the place of the scenario", 0, 0};
    ReportError(traceName, &error, nullptr);
    return false;
  }
  const bool loaded =
      scenarioName == nullptr ? LoadBuiltinScenario(device) : LoadScenario(device, scenarioName);
  if (traceName == nullptr) return loaded;
  device->tracing = CreateTraceFile(&device->trace, traceName);
  return loaded && device->tracing;
}

Trace* TraceOf(SimulatedDevice* device) {
  return device->tracing ? &device->trace.trace : nullptr;
}

// Keeps the code of a failed call. Returns whether the call succeeded.
bool Succeeded(SimulatedDevice* device, CallResult result) {
  if (result.outcome != Outcome::Fails) return true;
  device->lastError = result.error;
  return false;
}

}  // namespace

bool DeviceOpen(void** device) {
  SimulatedDevice* simulated = Device();
  CallResult result = {Outcome::Fails, ErrorInvalidData};
  if (Start(simulated)) result = AdapterOpen(&simulated->adapter);
  if (simulated->tracing) TraceOpen(&simulated->trace.trace, result);
  *device = result.outcome == Outcome::YieldsNull ? nullptr : simulated;
  return Succeeded(simulated, result);
}

bool DeviceRequest(void* device, uint32_t oid, void* payload, uint32_t length, uint32_t* returned) {
  auto* simulated = static_cast<SimulatedDevice*>(device);
  auto* bytes = static_cast<uint8_t*>(payload);
  Trace* trace = TraceOf(simulated);
  if (trace != nullptr) TraceSent(trace, oid, bytes, length);
  const RequestResult result = TracedRequest(&simulated->adapter, trace, oid, bytes, length);
  *returned = result.returned;
  return Succeeded(simulated, result.call);
}

bool DeviceClose(void* device) {
  auto* simulated = static_cast<SimulatedDevice*>(device);
  const CallResult result = AdapterClose(&simulated->adapter);
  if (simulated->tracing) TraceClose(&simulated->trace.trace, result);
  return Succeeded(simulated, result);
}

uint32_t DeviceError() {
  return Device()->lastError;
}
