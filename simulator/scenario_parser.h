// Parses the text of a scenario file. It also runs at compile time, for the built-in scenario, and
// in a kernel-mode driver. So it has no memory of its own, no recursion, and needs no library.
#pragma once

#include <cstdint>

#include "app/console/digit.h"
#include "simulator/scenario.h"

struct ScenarioParse {
  const char* text;
  uint32_t position;
  uint32_t lineEnd;  // index after the line's last character, without the line end
  uint32_t line;
  uint32_t wordStart;
  const ScenarioMemory* memory;  // null: records are counted only
  ScenarioSizes capacity;
  ScenarioSizes used;
  CallResult open;
  CallResult close;
  const char* what;  // null until something is wrong
};

constexpr bool FailParse(ScenarioParse* parse, const char* what) {
  parse->what = what;
  return false;
}

constexpr bool IsBlank(char character) {
  return character == ' ' || character == '\t';
}

// Whether the current word ends here: at a blank, at a comment, at the line's end.
constexpr bool AtWordEnd(const ScenarioParse* parse) {
  if (parse->position == parse->lineEnd) return true;
  const char character = parse->text[parse->position];
  return IsBlank(character) || character == '#';
}

// Goes to the line's next word. Returns false if there is none.
constexpr bool NextWord(ScenarioParse* parse) {
  while (parse->position < parse->lineEnd && IsBlank(parse->text[parse->position])) {
    parse->position++;
  }
  parse->wordStart = parse->position;
  return !AtWordEnd(parse);
}

// Takes a literal at the current position, the start of a word or a part of it.
constexpr bool TakeLiteral(ScenarioParse* parse, const char* literal) {
  uint32_t position = parse->position;
  for (; *literal != 0; literal++, position++) {
    if (position == parse->lineEnd || parse->text[position] != *literal) return false;
  }
  parse->position = position;
  return true;
}

constexpr bool TakeWord(ScenarioParse* parse, const char* word) {
  const uint32_t start = parse->position;
  if (TakeLiteral(parse, word) && AtWordEnd(parse)) return true;
  parse->position = start;
  return false;
}

// The value of the hex digit at a position of the line, 16 if there is none.
constexpr unsigned HexDigitAt(const ScenarioParse* parse, uint32_t position) {
  return position < parse->lineEnd ? DigitValue(parse->text[position]) : 16;
}

// Takes two hex digits. Returns false if they are not there.
constexpr bool TakeHexByte(ScenarioParse* parse, uint8_t* byte) {
  const unsigned high = HexDigitAt(parse, parse->position);
  const unsigned low = high < 16 ? HexDigitAt(parse, parse->position + 1) : 16;
  if (low == 16) return false;
  parse->position += 2;
  *byte = static_cast<uint8_t>(high * 16 + low);
  return true;
}

// Whether a number begins at the current position.
constexpr bool AtNumber(const ScenarioParse* parse) {
  return HexDigitAt(parse, parse->position) < 10;
}

// Takes a decimal number, or a hexadecimal one after 0x, not above `limit`.
constexpr bool TakeNumber(ScenarioParse* parse, uint64_t limit, uint64_t* number) {
  const uint64_t base = TakeLiteral(parse, "0x") ? 16 : 10;
  const uint32_t start = parse->position;
  uint64_t value = 0;
  for (;; parse->position++) {
    const unsigned digit = HexDigitAt(parse, parse->position);
    if (digit >= base) break;
    if (value > (limit - digit) / base) return FailParse(parse, "number is too large");
    value = value * base + digit;
  }
  if (parse->position == start) return FailParse(parse, "number expected");
  *number = value;
  return true;
}

constexpr bool TakeNumber32(ScenarioParse* parse, uint32_t* number) {
  uint64_t value = 0;
  if (!TakeNumber(parse, UINT32_MAX, &value)) return false;
  *number = static_cast<uint32_t>(value);
  return true;
}

// Takes a 32-bit number that is the rest of its word.
constexpr bool TakeLastNumber(ScenarioParse* parse, uint32_t* number) {
  if (!TakeNumber32(parse, number)) return false;
  return AtWordEnd(parse) || FailParse(parse, "number expected");
}

// Takes the number of an option, which a statement may hold once.
constexpr bool TakeOption(ScenarioParse* parse, bool* given, uint32_t* number) {
  if (*given) return FailParse(parse, "given twice");
  *given = true;
  return TakeLastNumber(parse, number);
}

// All bytes together need no limit: none is written in less than a byte of the text.
constexpr void AddByte(ScenarioParse* parse, uint8_t byte) {
  if (parse->memory != nullptr) parse->memory->bytes[parse->used.bytes] = byte;
  parse->used.bytes++;
}

// Takes a number and adds its lowest `size` bytes. Negative numbers down to the smallest of that
// size are taken too.
constexpr bool TakeNumberBytes(ScenarioParse* parse, uint32_t size) {
  const uint64_t greatest = UINT64_MAX >> (64 - 8 * size);
  const bool negative = TakeLiteral(parse, "-");
  uint64_t value = 0;
  if (!TakeNumber(parse, negative ? greatest / 2 + 1 : greatest, &value)) return false;
  if (negative) value = ~value + 1;
  for (uint32_t i = 0; i < size; i++) AddByte(parse, static_cast<uint8_t>(value >> (8 * i)));
  return true;
}

// Takes what follows a backslash.
constexpr bool TakeEscape(ScenarioParse* parse, char* character) {
  if (parse->position == parse->lineEnd) return FailParse(parse, "text is not ended");
  const char letter = parse->text[parse->position++];
  switch (letter) {
    case 'n':
      *character = '\n';
      return true;
    case 'r':
      *character = '\r';
      return true;
    case 't':
      *character = '\t';
      return true;
    case '\\':
    case '"':
      *character = letter;
      return true;
    case 'x':
      break;
    default:
      return FailParse(parse, "unknown escape");
  }
  uint8_t byte = 0;
  if (!TakeHexByte(parse, &byte)) return FailParse(parse, "unknown escape");
  *character = static_cast<char>(byte);
  return true;
}

// Takes a text up to its closing quote; `wide` texts have two bytes a character.
constexpr bool TakeText(ScenarioParse* parse, bool wide) {
  for (;;) {
    if (parse->position == parse->lineEnd) return FailParse(parse, "text is not ended");
    char character = parse->text[parse->position++];
    if (character == '"') return true;
    if (character == '\\' && !TakeEscape(parse, &character)) return false;
    AddByte(parse, static_cast<uint8_t>(character));
    if (wide) AddByte(parse, 0);
  }
}

// Takes hex digits in pairs, or one pair and a count.
constexpr bool TakeHexBytes(ScenarioParse* parse, ScenarioPatch* patch) {
  uint32_t pairs = 0;
  for (uint8_t byte = 0; TakeHexByte(parse, &byte); pairs++) AddByte(parse, byte);
  if (HexDigitAt(parse, parse->position) < 16) return FailParse(parse, "hex digits come in pairs");
  if (pairs == 0) return FailParse(parse, "bytes expected");
  if (!TakeLiteral(parse, "*")) return true;
  if (pairs != 1) return FailParse(parse, "only one byte can be repeated");
  patch->fill = true;
  return TakeNumber32(parse, &patch->count);
}

constexpr bool TakePatchBytes(ScenarioParse* parse, ScenarioPatch* patch) {
  if (TakeLiteral(parse, "\"")) return TakeText(parse, false);
  if (TakeLiteral(parse, "L\"")) return TakeText(parse, true);
  if (TakeLiteral(parse, "u8=")) return TakeNumberBytes(parse, 1);
  if (TakeLiteral(parse, "u16=")) return TakeNumberBytes(parse, 2);
  if (TakeLiteral(parse, "u32=")) return TakeNumberBytes(parse, 4);
  if (TakeLiteral(parse, "u64=")) return TakeNumberBytes(parse, 8);
  return TakeHexBytes(parse, patch);
}

// Takes OFFSET:BYTES, a whole word.
constexpr bool TakePatch(ScenarioParse* parse) {
  if (parse->used.patches == parse->capacity.patches) return FailParse(parse, "too many patches");
  ScenarioPatch patch = {};
  patch.firstByte = parse->used.bytes;
  if (!TakeNumber32(parse, &patch.offset)) return false;
  if (!TakeLiteral(parse, ":")) return FailParse(parse, "OFFSET:BYTES expected");
  if (!TakePatchBytes(parse, &patch)) return false;
  if (!AtWordEnd(parse)) return FailParse(parse, "bytes expected");
  if (!patch.fill) patch.count = parse->used.bytes - patch.firstByte;
  if (parse->memory != nullptr) parse->memory->patches[parse->used.patches] = patch;
  parse->used.patches++;
  return true;
}

// Takes "ok" or "error=N". Returns false, without an error, if the word is neither.
constexpr bool TakeOutcome(ScenarioParse* parse, CallResult* result) {
  if (TakeWord(parse, "ok")) {
    *result = {Outcome::Succeeds, 0};
    return true;
  }
  if (!TakeLiteral(parse, "error=")) return false;
  result->outcome = Outcome::Fails;
  return TakeLastNumber(parse, &result->error);
}

constexpr bool EndStatement(ScenarioParse* parse) {
  return NextWord(parse) ? FailParse(parse, "unexpected word") : true;
}

// The rest of an "open" or a "close" statement.
constexpr bool TakeCallStatement(ScenarioParse* parse, CallResult* result, bool mayYieldNull) {
  if (!NextWord(parse)) return FailParse(parse, "outcome expected");
  if (mayYieldNull && TakeWord(parse, "null")) {
    *result = {Outcome::YieldsNull, 0};
  } else if (!TakeOutcome(parse, result)) {
    if (parse->what != nullptr) return false;
    return FailParse(parse, TakeWord(parse, "null") ? "null belongs to open" : "unknown outcome");
  }
  return EndStatement(parse);
}

constexpr bool TakeRegisterStatement(ScenarioParse* parse) {
  if (parse->used.registers == parse->capacity.registers) {
    return FailParse(parse, "too many registers");
  }
  RegisterValue entry = {};
  if (!NextWord(parse)) return FailParse(parse, "address expected");
  if (!TakeLastNumber(parse, &entry.address)) return false;
  if (!NextWord(parse)) return FailParse(parse, "value expected");
  if (!TakeLastNumber(parse, &entry.value)) return false;
  if (parse->memory != nullptr) parse->memory->registers[parse->used.registers] = entry;
  parse->used.registers++;
  return EndStatement(parse);
}

// A word of a rule, and what is wrong with it before and after the outcome. Null: it belongs there.
struct RuleWord {
  const char* word;
  const char* before;
  const char* after;
};

constexpr RuleWord RuleWords[] = {
    {"len=", nullptr, "len belongs before the outcome"},
    {"if", nullptr, "if belongs before the outcome"},
    {"ok", nullptr, "the outcome is given twice"},
    {"error=", nullptr, "the outcome is given twice"},
    {"null", "null belongs to open", "null belongs to open"},
    {"times=", "times belongs after the outcome", nullptr},
    {"returned=", "returned belongs after the outcome", nullptr},
};

// Returns null if the current word is none of them.
constexpr const RuleWord* FindRuleWord(ScenarioParse* parse) {
  for (const RuleWord& row : RuleWords) {
    if (!TakeLiteral(parse, row.word)) continue;
    const bool whole = parse->text[parse->position - 1] == '=' || AtWordEnd(parse);
    parse->position = parse->wordStart;
    if (whole) return &row;
  }
  return nullptr;
}

// Whether the current word looks like a patch.
constexpr bool AtPatch(const ScenarioParse* parse) {
  if (!AtNumber(parse)) return false;
  for (uint32_t i = parse->position; i < parse->lineEnd && !IsBlank(parse->text[i]); i++) {
    if (parse->text[i] == ':') return true;
  }
  return false;
}

// Takes one word that stands before a rule's outcome.
constexpr bool TakeCondition(ScenarioParse* parse, ScenarioRule* rule) {
  if (TakeLiteral(parse, "len=")) return TakeOption(parse, &rule->hasLength, &rule->length);
  if (AtPatch(parse)) return FailParse(parse, "bytes to write belong after the outcome");
  if (!TakeWord(parse, "if")) {
    const RuleWord* word = FindRuleWord(parse);
    return FailParse(parse, word != nullptr ? word->before : "unknown word");
  }
  if (!NextWord(parse)) return FailParse(parse, "OFFSET:BYTES expected");
  rule->conditionCount++;
  return TakePatch(parse);
}

// Takes one word that stands after a rule's outcome.
constexpr bool TakeAnswer(ScenarioParse* parse, ScenarioRule* rule) {
  if (TakeLiteral(parse, "times=")) return TakeOption(parse, &rule->hasTimes, &rule->times);
  if (TakeLiteral(parse, "returned=")) {
    return TakeOption(parse, &rule->hasReturned, &rule->returned);
  }
  if (!AtNumber(parse)) {
    const RuleWord* word = FindRuleWord(parse);
    return FailParse(parse, word != nullptr ? word->after : "unknown word");
  }
  rule->writeCount++;
  return TakePatch(parse);
}

constexpr bool TakeRule(ScenarioParse* parse) {
  if (parse->used.rules == parse->capacity.rules) return FailParse(parse, "too many rules");
  if (!AtNumber(parse)) {
    return FailParse(parse,
                     FindRuleWord(parse) != nullptr ? "the OID comes first" : "unknown statement");
  }
  ScenarioRule rule = {};
  rule.line = parse->line;
  rule.firstPatch = parse->used.patches;
  if (!TakeLastNumber(parse, &rule.oid)) return false;
  for (;;) {
    if (!NextWord(parse)) return FailParse(parse, "outcome expected");
    if (TakeOutcome(parse, &rule.result)) break;
    if (parse->what != nullptr || !TakeCondition(parse, &rule)) return false;
  }
  while (NextWord(parse)) {
    if (!TakeAnswer(parse, &rule)) return false;
  }
  if (parse->memory != nullptr) parse->memory->rules[parse->used.rules] = rule;
  parse->used.rules++;
  return true;
}

constexpr bool TakeStatement(ScenarioParse* parse) {
  if (!NextWord(parse)) return true;
  if (TakeWord(parse, "open")) return TakeCallStatement(parse, &parse->open, true);
  if (TakeWord(parse, "close")) return TakeCallStatement(parse, &parse->close, false);
  if (TakeWord(parse, "register")) return TakeRegisterStatement(parse);
  return TakeRule(parse);
}

// The error in the current line, with the word in which it was met.
constexpr ScenarioError ErrorInLine(const ScenarioParse* parse) {
  uint32_t end = parse->wordStart;
  while (end < parse->lineEnd && !IsBlank(parse->text[end])) end++;
  return {parse->line, parse->what, parse->wordStart, end - parse->wordStart};
}

constexpr bool StartsWith(const char* text, uint32_t size, const char* start) {
  for (; *start != 0; start++, text++, size--) {
    if (size == 0 || *text != *start) return false;
  }
  return true;
}

// Parses a scenario's text. A byte order mark before it is skipped. Without memory it checks the
// text and counts the records into `sizes`. With memory of those sizes it also stores the records
// and fills in `scenario`.
constexpr ScenarioError ParseScenario(const char* text, uint64_t size, const ScenarioMemory* memory,
                                      ScenarioSizes* sizes, Scenario* scenario) {
  if (size > MaxScenarioBytes) return {0, "scenario is larger than 16 MiB", 0, 0};
  ScenarioParse parse = {};
  parse.text = text;
  parse.memory = memory;
  parse.capacity = {MaxRules, MaxPatches, 0, MaxRegisters};
  if (memory != nullptr) parse.capacity = memory->capacity;

  const auto end = static_cast<uint32_t>(size);
  if (StartsWith(text, end, "\xFF\xFE") || StartsWith(text, end, "\xFE\xFF")) {
    return {1, "text is UTF-16; save it as UTF-8", 0, 0};
  }
  for (uint32_t start = StartsWith(text, end, "\xEF\xBB\xBF") ? 3 : 0; start < end;) {
    parse.line++;
    uint32_t next = start;
    while (next < end && text[next] != '\n') next++;
    parse.position = start;
    parse.wordStart = next;
    parse.lineEnd = next > start && text[next - 1] == '\r' ? next - 1 : next;
    if (next - start > MaxLineBytes) return {parse.line, "line is longer than 1 MiB", 0, 0};
    if (!TakeStatement(&parse)) return ErrorInLine(&parse);
    start = next + 1;
  }

  *sizes = parse.used;
  if (memory != nullptr) {
    *scenario = {.open = parse.open,
                 .close = parse.close,
                 .rules = memory->rules,
                 .ruleCount = parse.used.rules,
                 .patches = memory->patches,
                 .bytes = memory->bytes,
                 .registers = memory->registers,
                 .registerCount = parse.used.registers};
  }
  return {};
}
