// The device's calls on hosts that have no driver for it: the simulated adapter answers in the
// tool's own process. A8000_SCENARIO names the scenario file (the built-in scenario without it),
// A8000_TRACE a file that every call is recorded in.
#include <sys/stat.h>

#include <cstdlib>

#include "device/device.h"
#include "device/trace_file.h"
#include "simulator/adapter.h"
#include "simulator/builtin_scenario.h"
#include "simulator/host_program.h"
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

// Parses a scenario that has no errors into memory that the process keeps, and starts the adapter
// with it. Returns false if there is no memory.
bool StoreScenario(SimulatedDevice* device, const char* text, uint32_t size, ScenarioSizes sizes) {
  device->memory = calloc(1, ScenarioMemoryBytes(&sizes) + size_t{1});
  if (device->memory == nullptr) return false;
  ScenarioMemory memory = {};
  uint32_t* served = DivideScenarioMemory(device->memory, &sizes, &memory);
  ParseScenario(text, size, &memory, &sizes, &device->scenario);
  AdapterStart(&device->adapter, &device->scenario, served);
  return true;
}

// Reads a scenario into `text`, which takes a byte more than a scenario may have, so that the
// parser refuses it. If the file cannot be used, prints a message and returns false.
bool ReadScenario(SimulatedDevice* device, const char* name, char* text) {
  uint32_t size = 0;
  if (!ReadTextFile(name, text, MaxScenarioBytes + 1, &size)) return false;
  ScenarioSizes sizes = {};
  const ScenarioError error = ParseScenario(text, size, nullptr, &sizes, nullptr);
  if (error.what != nullptr) {
    ReportInFile(name, error, text);
    return false;
  }
  if (StoreScenario(device, text, size, sizes)) return true;
  ReportFileFailure(name);
  return false;
}

bool LoadScenario(SimulatedDevice* device, const char* name) {
  char* text = static_cast<char*>(malloc(MaxScenarioBytes + size_t{1}));
  if (text == nullptr) ReportFileFailure(name);
  const bool loaded = text != nullptr && ReadScenario(device, name, text);
  free(text);
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
    ReportFile(traceName, "the trace would take the place of the scenario");
    return false;
  }
  const bool loaded =
      scenarioName == nullptr ? LoadBuiltinScenario(device) : LoadScenario(device, scenarioName);
  if (traceName == nullptr) return loaded;
  device->tracing = CreateTraceFile(&device->trace, traceName);
  return loaded && device->tracing;
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
  Trace* trace = simulated->tracing ? &simulated->trace.trace : nullptr;
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
