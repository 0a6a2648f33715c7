#include "simulator/windows/driver_front.h"

#include <cstring>

#include "simulator/builtin_scenario.h"
#include "simulator/scenario_memory.h"
#include "simulator/scenario_parser.h"
#include "simulator/windows/control_protocol.h"

namespace {

constexpr uint32_t ErrorInvalidFunction = 1;
constexpr uint32_t ErrorInvalidParameter = 87;
constexpr uint32_t ErrorInsufficientBuffer = 122;

constexpr FrontReply Refusal(uint32_t error) {
  return {error, 0, true};
}

constexpr FrontReply Reply(CallResult result, uint32_t returned) {
  const bool failed = result.outcome == Outcome::Fails;
  return {failed ? result.error : 0, returned, failed};
}

// Whether a program opens the device as the tool does: for reading and writing and nothing else,
// unshared, creating always, without flags, with normal attributes. A host that keeps the
// disposition and the attributes to itself reports both as 0, which no CreateFile call yields.
bool AreChannelTerms(OpenTerms terms) {
  constexpr uint32_t GenericReadAndWrite = 0xC0000000;
  constexpr uint32_t ReadData = 0x80000001;  // by either name
  constexpr uint32_t WriteData = 0x40000002;
  constexpr uint32_t Plain = 0x60;  // synchronous, no folder: what CreateFile makes of no flags
  constexpr uint32_t OverwriteIf = 5U << 24;
  constexpr uint32_t Normal = 0x80;
  return (terms.access & ReadData) != 0 && (terms.access & WriteData) != 0 &&
         (terms.access & ~(GenericReadAndWrite | ReadAndWriteRights)) == 0 && terms.sharing == 0 &&
         ((terms.options == (OverwriteIf | Plain) && terms.attributes == Normal) ||
          (terms.options == Plain && terms.attributes == 0));
}

// The head of the stretch of memory that a scenario is kept in, before its parts.
struct StoredScenario {
  Scenario scenario;
  ScenarioMemory parts;
  uint32_t* served;
};

// Returns null if there is no memory.
StoredScenario* AllocateScenario(HostMemory memory, const ScenarioSizes& sizes) {
  void* block = memory.allocate(sizeof(StoredScenario) + uint64_t{ScenarioMemoryBytes(&sizes)});
  if (block == nullptr) return nullptr;
  auto* stored = static_cast<StoredScenario*>(block);
  memset(stored, 0, sizeof(*stored));
  stored->served = DivideScenarioMemory(stored + 1, &sizes, &stored->parts);
  return stored;
}

// Puts a scenario in force: counters, written registers and the trace start anew.
void UseScenario(DriverFront* front, StoredScenario* stored, const Scenario* scenario) {
  if (front->scenarioMemory != nullptr) front->memory.release(front->scenarioMemory);
  front->scenarioMemory = stored;
  front->builtin = scenario == &BuiltinScenario;
  front->requests = 0;
  front->loads++;
  front->name[0] = 0;
  AdapterStart(&front->adapter, scenario, stored->served);
  TraceStoreClear(&front->traceStore);
  TraceStart(&front->trace, TraceStoreSink(&front->traceStore));
}

// Returns false if there is no memory.
bool UseBuiltin(DriverFront* front) {
  // Only its counters need memory.
  StoredScenario* stored = AllocateScenario(front->memory, {BuiltinScenario.ruleCount, 0, 0, 0});
  if (stored == nullptr) return false;
  UseScenario(front, stored, &BuiltinScenario);
  return true;
}

void Describe(const ScenarioError* error, LoadReply* reply) {
  *reply = {};
  if (error->what == nullptr) return;
  reply->line = error->line;
  reply->wordStart = error->wordStart;
  reply->wordLength = error->wordLength;
  for (uint32_t i = 0; i + 1 < sizeof(reply->what) && error->what[i] != 0; i++) {
    reply->what[i] = error->what[i];
  }
}

FrontReply LoadScenario(DriverFront* front, void* buffer, uint32_t inputLength,
                        uint32_t outputLength) {
  LoadReply reply = {};
  if (outputLength < sizeof(reply)) return Refusal(ErrorInsufficientBuffer);

  const char* text = static_cast<const char*>(buffer);
  ScenarioSizes sizes = {};
  const ScenarioError error = ParseScenario(text, inputLength, nullptr, &sizes, nullptr);
  if (error.what == nullptr) {
    StoredScenario* stored = AllocateScenario(front->memory, sizes);
    if (stored == nullptr) return Refusal(ErrorNotEnoughMemory);
    ParseScenario(text, inputLength, &stored->parts, &sizes, &stored->scenario);
    UseScenario(front, stored, &stored->scenario);
  }
  Describe(&error, &reply);
  memcpy(buffer, &reply, sizeof(reply));
  return {0, sizeof(reply), false};
}

FrontReply LoadBuiltin(DriverFront* front, uint32_t inputLength) {
  if (inputLength != 0) return Refusal(ErrorInvalidParameter);
  return UseBuiltin(front) ? FrontReply{} : Refusal(ErrorNotEnoughMemory);
}

FrontReply Fetch(const DriverFront* front, void* buffer, uint32_t inputLength,
                 uint32_t outputLength) {
  FetchTrace fetch = {};
  if (inputLength != sizeof(fetch)) return Refusal(ErrorInvalidParameter);
  memcpy(&fetch, buffer, sizeof(fetch));
  return {0, TraceStoreRead(&front->traceStore, fetch.offset, buffer, outputLength), false};
}

FrontReply QueryStatus(const DriverFront* front, void* buffer, uint32_t outputLength) {
  if (outputLength < sizeof(SimulatorStatus)) return Refusal(ErrorInsufficientBuffer);
  const Scenario* scenario = front->adapter.scenario;
  SimulatorStatus status = {.builtin = front->builtin ? 1U : 0U,
                            .rules = scenario->ruleCount,
                            .registers = scenario->registerCount,
                            .requests = front->requests,
                            .opened = front->opened,
                            .traceBytes = front->trace.bytes,
                            .leftOut = front->trace.leftOut,
                            .loads = front->loads,
                            .name = {}};
  memcpy(status.name, front->name, sizeof(status.name));
  memcpy(buffer, &status, sizeof(status));
  return {0, sizeof(status), false};
}

FrontReply NameScenario(DriverFront* front, const void* buffer, uint32_t inputLength) {
  if (inputLength >= sizeof(front->name)) return Refusal(ErrorInvalidParameter);
  memcpy(front->name, buffer, inputLength);
  front->name[inputLength] = 0;
  return {};
}

}  // namespace

bool FrontStart(DriverFront* front, HostMemory memory) {
  memset(front, 0, sizeof(*front));
  front->memory = memory;
  front->traceStore.memory = memory;
  front->traceStore.blockBytes = TraceBlockBytes;
  return UseBuiltin(front);
}

void FrontStop(DriverFront* front) {
  TraceStoreClear(&front->traceStore);
  front->memory.release(front->scenarioMemory);
  front->scenarioMemory = nullptr;
}

FrontReply FrontOpen(DriverFront* front, OpenTerms terms) {
  if (!AreChannelTerms(terms)) return Refusal(ErrorInvalidParameter);
  const CallResult result = AdapterOpen(&front->adapter);
  TraceOpen(&front->trace, result);
  if (result.outcome != Outcome::Fails) front->opened++;
  return Reply(result, 0);
}

FrontReply FrontClose(DriverFront* front) {
  const CallResult result = AdapterClose(&front->adapter);
  TraceClose(&front->trace, result);
  if (front->opened > 0) front->opened--;
  return Reply(result, 0);
}

FrontReply FrontRequest(DriverFront* front, uint32_t code, const void* input, uint32_t inputLength,
                        void* payload, uint32_t length) {
  uint32_t oid = 0;
  if (code != IOCTL_NDIS_QUERY_GLOBAL_STATS) return Refusal(ErrorInvalidFunction);
  if (inputLength != sizeof(oid)) return Refusal(ErrorInvalidParameter);
  if (length > MaxPayloadBytes) return Refusal(ErrorInvalidParameter);
  memcpy(&oid, input, sizeof(oid));

  auto* bytes = static_cast<uint8_t*>(payload);
  const RequestResult result = TracedRequest(&front->adapter, &front->trace, oid, bytes, length);
  front->requests++;
  return Reply(result.call, result.returned);
}

FrontReply FrontControl(DriverFront* front, uint32_t code, void* buffer, uint32_t inputLength,
                        uint32_t outputLength) {
  switch (code) {
    case ControlLoadScenario:
      return LoadScenario(front, buffer, inputLength, outputLength);
    case ControlLoadBuiltin:
      return LoadBuiltin(front, inputLength);
    case ControlFetchTrace:
      return Fetch(front, buffer, inputLength, outputLength);
    case ControlNameScenario:
      return NameScenario(front, buffer, inputLength);
    case ControlQueryStatus:
      return QueryStatus(front, buffer, outputLength);
    default:
      return Refusal(ErrorInvalidFunction);
  }
}
