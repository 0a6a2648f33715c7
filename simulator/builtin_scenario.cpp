// Parses the built-in scenario while compiling, so that no run spends time on it.
#include "simulator/builtin_scenario.h"

#include "builtin_scenario_text.h"
#include "simulator/scenario_parser.h"

namespace {

constexpr uint64_t TextSize = sizeof(BuiltinScenarioText) - 1;

struct Count {
  ScenarioError error;
  ScenarioSizes sizes;
};

constexpr Count CountBuiltin() {
  Count count = {};
  count.error = ParseScenario(BuiltinScenarioText, TextSize, nullptr, &count.sizes, nullptr);
  return count;
}

constexpr Count Counted = CountBuiltin();

// Names the line of a mistake in the compiler's message.
template <uint32_t Line>
struct MistakeInLine {
  static_assert(Line == 0, "builtin.a8000 has a mistake in the line that is MistakeInLine<LINE>");
};
template struct MistakeInLine<Counted.error.line>;

struct BuiltinRecords {
  CallResult open;
  CallResult close;
  ScenarioRule rules[Counted.sizes.rules];
  ScenarioPatch patches[Counted.sizes.patches];
  uint8_t bytes[Counted.sizes.bytes];
  RegisterValue registers[Counted.sizes.registers];
};

constexpr BuiltinRecords ParseBuiltin() {
  BuiltinRecords records = {};
  ScenarioSizes sizes = {};
  Scenario scenario = {};
  const ScenarioMemory memory = {.rules = records.rules,
                                 .patches = records.patches,
                                 .bytes = records.bytes,
                                 .registers = records.registers,
                                 .capacity = Counted.sizes};
  ParseScenario(BuiltinScenarioText, TextSize, &memory, &sizes, &scenario);
  records.open = scenario.open;
  records.close = scenario.close;
  return records;
}

constexpr BuiltinRecords Records = ParseBuiltin();

}  // namespace

constexpr Scenario BuiltinScenario = {
    .open = Records.open,
    .close = Records.close,
    .rules = Records.rules,
    .ruleCount = Counted.sizes.rules,
    .patches = Records.patches,
    .bytes = Records.bytes,
    .registers = Records.registers,
    .registerCount = Counted.sizes.registers,
};
