// The simulated adapter: answers requests from a scenario. It runs in the tool's own process and in
// a kernel-mode driver, and allocates no memory.
#pragma once

#include <cstdint>

#include "simulator/scenario.h"

// The error codes of the calls that no scenario answers.
constexpr uint32_t ErrorNotEnoughMemory = 8;
constexpr uint32_t ErrorNotSupported = 50;

// How many different registers can be written; a write beyond them fails with 8.
constexpr uint32_t MaxWrittenRegisters = 1024;

struct Adapter {
  const Scenario* scenario;
  uint32_t* served;         // requests answered so far, one counter for each rule of the scenario
  bool registersHaveRules;  // some rule serves reading or writing a register
  uint32_t writtenCount;
  RegisterValue written[MaxWrittenRegisters];
};

struct RequestResult {
  CallResult call;
  uint32_t returned;  // the count to report, also for failures
  bool unserved;      // neither a rule nor a register served it
};

// Why a rule did not serve a request. A later one means that more of the rule fits.
enum class Misfit : uint8_t {
  Oid,     // no rule has the request's
  Length,  // the rule asks for another
  End,     // it looks at an offset past the payload's end
  Byte,    // it asks for another one at an offset
  UsedUp,
};

// The rule that comes nearest to a request.
struct NearestRule {
  Misfit misfit;
  uint32_t line;    // the rule's, in the scenario
  uint32_t number;  // the length that it asks for, or the offset
  uint8_t byte;     // that it asks for at that offset
};

// Puts the adapter into its first state. `served` has room for one counter for each rule.
void AdapterStart(Adapter* adapter, const Scenario* scenario, uint32_t* served);

CallResult AdapterOpen(const Adapter* adapter);
CallResult AdapterClose(const Adapter* adapter);

// Answers one request in its payload.
RequestResult AdapterRequest(Adapter* adapter, uint32_t oid, uint8_t* payload, uint32_t length);

// Finds the rule that came nearest to a request that no rule served. If several fit equally far, it
// is the first one.
NearestRule FindNearestRule(const Adapter* adapter, uint32_t oid, const uint8_t* payload,
                            uint32_t length);
