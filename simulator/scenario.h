// A scenario: what the simulated adapter answers to which request. The text of a scenario file is
// turned into these records by simulator/scenario_parser.h; simulator/adapter.h answers from them.
#pragma once

#include <cstdint>

// What a scenario file may hold. The bytes of one patch are limited by its line, the count of a
// fill (41*4096) by 32 bits.
constexpr uint32_t MaxScenarioBytes = 16 * 1024 * 1024;
constexpr uint32_t MaxLineBytes = 1024 * 1024;
constexpr uint32_t MaxRules = 65536;
constexpr uint32_t MaxPatches = 1024 * 1024;
constexpr uint32_t MaxRegisters = 65536;

enum class Outcome : uint8_t {
  Succeeds,
  YieldsNull,  // opening succeeds with a null handle
  Fails,
};

// How opening, closing or a request ends.
struct CallResult {
  Outcome outcome;
  uint32_t error;  // last-error code if the call fails
};

// Bytes at an offset of a request's payload, to be found there or to be written there.
struct ScenarioPatch {
  uint32_t offset;
  uint32_t count;      // bytes
  uint32_t firstByte;  // index into Scenario::bytes
  bool fill;           // one byte, `count` times over
};

struct ScenarioRule {
  uint32_t line;  // in the scenario's text
  uint32_t oid;
  uint32_t length;          // payload length asked for, if hasLength
  uint32_t firstPatch;      // index into Scenario::patches: conditions, then written patches
  uint32_t conditionCount;  // patches that must match
  uint32_t writeCount;      // patches that are written
  CallResult result;
  uint32_t times;     // requests the rule serves, if hasTimes
  uint32_t returned;  // count reported back, if hasReturned
  bool hasLength;
  bool hasTimes;
  bool hasReturned;
};

struct RegisterValue {
  uint32_t address;
  uint32_t value;
};

struct Scenario {
  CallResult open;
  CallResult close;
  const ScenarioRule* rules;  // in file order
  uint32_t ruleCount;
  const ScenarioPatch* patches;
  const uint8_t* bytes;
  const RegisterValue* registers;  // in file order; of equal addresses the last one holds
  uint32_t registerCount;
};

// How many records a scenario's text yields.
struct ScenarioSizes {
  uint32_t rules;
  uint32_t patches;
  uint32_t bytes;
  uint32_t registers;
};

// The memory that a scenario's records go into, and how many of each it holds.
struct ScenarioMemory {
  ScenarioRule* rules;
  ScenarioPatch* patches;
  uint8_t* bytes;
  RegisterValue* registers;
  ScenarioSizes capacity;
};

struct ScenarioError {
  uint32_t line;        // counted from 1; 0 if the text as a whole is at fault
  const char* what;     // null: no error
  uint32_t wordStart;   // the word at fault, as an index into the text
  uint32_t wordLength;  // 0: no word to show
};
