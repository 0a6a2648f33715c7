#include "simulator/redact/redact.h"

#include <cstdlib>
#include <cstring>

#include "simulator/redact/payload_rows.h"
#include "simulator/scenario_parser.h"
#include "simulator/trace.h"

namespace {

struct Redactor {
  Redaction* redaction;
  bool keepTexts;
  bool replacing;  // the second of two passes
  bool leftOut;    // the last request was left out
  Trace trace;     // the report's
  uint32_t room;   // of the report
  uint32_t lineStart;
  char* line;  // a copy of a comment
  // A statement is parsed into these.
  ScenarioRule rules[1];
  ScenarioPatch patches[2];
  ScenarioMemory memory;
};

bool Fail(const Redactor* redactor, const char* what) {
  redactor->redaction->error.what = what;
  return false;
}

const PayloadRow* FindRow(uint32_t oid, uint32_t length) {
  for (const PayloadRow& row : PayloadRows) {
    if (row.oid == oid && (row.length == length || row.length == AnyLength)) return &row;
  }
  return nullptr;
}

// What stands for a byte of a text: its layout stays.
uint8_t Masked(uint8_t byte) {
  if (byte >= '0' && byte <= '9') return '0';
  const bool isLetter = (byte | 32) >= 'a' && (byte | 32) <= 'z';
  const bool stays = (byte >= ' ' && byte <= '~' && !isLetter) || byte == '\n' || byte == '\r' ||
                     byte == '\t' || byte == 0;
  return stays ? byte : 'x';
}

// Masks bytes that have no known meaning.
void MaskRest(uint8_t* bytes, uint32_t size) {
  for (uint32_t i = 0; i < size; i++) bytes[i] = bytes[i] == 0 ? 0 : 'x';
}

void MaskText(uint8_t* text, uint32_t size) {
  for (uint32_t i = 0; i < size; i++) text[i] = Masked(text[i]);
}

// Bytes that are all 0 or all 0xFF tell nothing.
bool IsTelling(const uint8_t* value, uint32_t length) {
  for (uint32_t i = 1; i < length; i++) {
    if (value[i] != value[0]) return true;
  }
  return value[0] != 0 && value[0] != 0xFF;
}

// Learns a value in the first pass and replaces it in the second one.
void TakeValue(const Redactor* redactor, ValueKind kind, uint8_t* value, uint32_t length) {
  KnownValue* known = Remember(&redactor->redaction->known, kind, value, length);
  if (!redactor->replacing) return;
  WriteStandIn(known, value);
  known->places++;
}

void TakeNumbers(const Redactor* redactor, ValueKind kind, uint8_t* bytes, uint32_t size,
                 uint32_t each) {
  for (uint32_t i = 0; i < size; i += each) {
    if (IsTelling(bytes + i, each)) TakeValue(redactor, kind, bytes + i, each);
  }
}

void TakeRegisters(const Redactor* redactor, const uint8_t* question, uint8_t* bytes,
                   uint32_t size) {
  uint32_t address = 0;
  memcpy(&address, question, sizeof(address));
  for (const uint32_t kept : KeptRegisters) {
    if (address == kept) return;
  }
  TakeNumbers(redactor, ValueKind::Register, bytes, size, sizeof(address));
}

// The stand-in of a byte of the efuse is the last byte of its address. Zeros of a question are the
// tool's and stay.
void TakeEfuse(const Redactor* redactor, const uint8_t* question, bool answered, uint8_t* bytes,
               uint32_t size) {
  for (uint32_t i = 0; i < size && redactor->replacing; i++) {
    if (!answered && bytes[i] == 0) continue;
    bytes[i] = static_cast<uint8_t>((question[4] & 0xF0U) | i);
    redactor->redaction->efuseBytes++;
  }
}

// A text that stays. Only known values are replaced in it.
void TakeText(const Redactor* redactor, uint8_t* text, uint32_t size) {
  KnownValues* known = &redactor->redaction->known;
  while (size > 0 && text[size - 1] == 0) size--;
  if (size == 0 || !redactor->replacing) return;
  ReplaceKnown(known, text, size);
  Remember(known, ValueKind::StayingText, text, size)->places++;
}

// The length of a text up to its first zero of `width` bytes; the rest is masked.
uint32_t EndText(uint8_t* text, uint32_t size, uint32_t width) {
  uint32_t end = 0;
  while (end + width <= size && (text[end] != 0 || text[end + width - 1] != 0)) end += width;
  MaskText(text + end, size - end);
  return end;
}

// Redacts a stretch of a question or an answer. `question` is the question's payload. Its codes and
// register addresses never change.
void TakeStretch(const Redactor* redactor, Content content, const uint8_t* question, bool answered,
                 uint8_t* bytes, uint32_t size) {
  if (content == Content::Keyword) {
    content = answered || redactor->keepTexts ? Content::Text : Content::Label;
  }
  if (content == Content::Index) content = answered ? Content::Register : Content::Keep;
  switch (content) {
    case Content::Address:
      TakeNumbers(redactor, ValueKind::Address, bytes, size, size);
      break;
    case Content::Peer:
      if (*question == PeerPreference) {
        MaskRest(bytes + 4, size - 4);
      } else {
        TakeNumbers(redactor, ValueKind::Address, bytes, size, size);
      }
      break;
    case Content::Name:
      size = EndText(bytes, size, 1);
      if (size > 0) TakeValue(redactor, ValueKind::Name, bytes, size);
      break;
    case Content::Register:
      TakeRegisters(redactor, question, bytes, size);
      break;
    case Content::Efuse:
      TakeEfuse(redactor, question, answered, bytes, size);
      break;
    case Content::Label:
      TakeText(redactor, bytes, EndText(bytes, size, 1));
      break;
    case Content::WideLabel:
      TakeText(redactor, bytes, EndText(bytes, size, 2));
      break;
    case Content::Text:
      if (redactor->keepTexts) {
        TakeText(redactor, bytes, size);
      } else {
        if (redactor->replacing && *bytes != 0) redactor->redaction->maskedTexts++;
        MaskText(bytes, size);
      }
      break;
    default:
      break;
  }
}

void TakePayload(const Redactor* redactor, const PayloadRow* row, const uint8_t* question,
                 bool answered, uint8_t* payload, uint32_t length) {
  uint32_t end = 0;
  for (const Stretch& stretch : row->stretches) {
    if (stretch.size == 0) break;
    MaskRest(payload + end, stretch.offset - end);
    end = uint32_t{stretch.offset} + stretch.size;
    TakeStretch(redactor, stretch.content, question, answered, payload + stretch.offset,
                stretch.size);
  }
  MaskRest(payload + end, length - end);
}

// Whether a rule has the form of a trace's line. `sent`: the request was on its way, so it may lack
// its payload and has no answer.
bool IsTraceRule(const Redactor* redactor, bool sent) {
  const ScenarioRule* rule = redactor->rules;
  const uint32_t expected = rule->length > 0 ? 1 : 0;
  for (uint32_t i = 0; i < rule->conditionCount + rule->writeCount; i++) {
    const ScenarioPatch* patch = &redactor->patches[i];
    if (patch->offset != 0 || patch->fill || patch->count != rule->length) return false;
  }
  return rule->hasLength && rule->hasTimes && rule->times == 1 &&
         (rule->conditionCount == expected || (sent && rule->conditionCount == 0)) &&
         rule->writeCount == (sent ? 0 : expected);
}

// The payload in a rule's patch; null if the rule has none.
uint8_t* PayloadOf(const Redactor* redactor, uint32_t count, uint32_t index) {
  return count > 0 ? redactor->memory.bytes + redactor->patches[index].firstByte : nullptr;
}

void TakeRequest(Redactor* redactor, bool sent) {
  const ScenarioRule* rule = redactor->rules;
  const uint32_t length = rule->length;
  const PayloadRow* row = FindRow(rule->oid, length);
  redactor->leftOut = row == nullptr;
  if (row == nullptr) {
    if (redactor->replacing) redactor->redaction->requestsLeftOut++;
    return;
  }
  uint8_t* question = PayloadOf(redactor, rule->conditionCount, 0);
  uint8_t* answer = PayloadOf(redactor, rule->writeCount, 1);
  // If a refusal left the payload unchanged, it still holds the question.
  const bool answered = rule->result.outcome != Outcome::Fails || answer == nullptr ||
                        memcmp(question, answer, length) != 0;
  if (question != nullptr) TakePayload(redactor, row, question, false, question, length);
  if (answer != nullptr) TakePayload(redactor, row, question, answered, answer, length);
  if (!redactor->replacing) return;
  if (sent) {
    TraceSent(&redactor->trace, rule->oid, question, length);
    return;
  }
  const RequestResult result = {rule->result, rule->hasReturned ? rule->returned : length, false};
  TraceRequest(&redactor->trace, rule->oid, question, length);
  TraceAnswer(&redactor->trace, &result, answer, length);
}

// Parses a line into the redactor's records. Refuses what no trace has.
ScenarioError Parse(Redactor* redactor, const char* line, uint32_t size, ScenarioSizes* sizes,
                    Scenario* scenario) {
  const ScenarioError error = ParseScenario(line, size, nullptr, sizes, nullptr);
  if (error.what != nullptr) return error;
  if (sizes->patches > 2 || sizes->registers > 0) return {0, "not a line of a trace", 0, 0};
  return ParseScenario(line, size, &redactor->memory, sizes, scenario);
}

// Whether a line is this comment of the simulator. A byte's value in it is crossed out.
bool IsComment(const char* comment, char* line, uint32_t size) {
  const char* end = line + size;
  for (; *comment != 0; comment++) {
    if (*comment == '%') {
      const char* start = line;
      while (line < end && *line >= '0' && *line <= '9') line++;
      if (line == start || line - start > 10) return false;
    } else if (*comment == '$') {
      if (end - line < 2) return false;
      memset(line, 'x', 2);
      line += 2;
    } else if (line == end || *line++ != *comment) {
      return false;
    }
  }
  return line == end;
}

// Takes a comment of the simulator. Returns false for any other.
bool TakeComment(Redactor* redactor, const char* comment, uint32_t size) {
  constexpr uint32_t HeadBytes = sizeof(TraceSentHead) - 1;
  constexpr char Answer[] = " ok times=1";
  char* line = redactor->line;
  if (StartsWith(comment, size, TraceSentHead)) {
    memcpy(line, comment + HeadBytes, size - HeadBytes);
    memcpy(line + size - HeadBytes, Answer, sizeof(Answer) - 1);
    size = size - HeadBytes + static_cast<uint32_t>(sizeof(Answer)) - 1;
    ScenarioSizes sizes = {};
    Scenario scenario = {};
    if (Parse(redactor, line, size, &sizes, &scenario).what != nullptr || sizes.rules == 0 ||
        !IsTraceRule(redactor, true)) {
      return false;
    }
    TakeRequest(redactor, true);
    return true;
  }
  memcpy(line, comment, size);
  for (const char* known : TraceComments) {
    if (!IsComment(known, line, size)) continue;
    // The comment on a request that is left out is left out, too.
    const bool stays = !redactor->leftOut || known == TraceComments[LeftOutComment];
    if (redactor->replacing && stays) TraceComment(&redactor->trace, line, size);
    return true;
  }
  return false;
}

bool TakeLine(Redactor* redactor, const char* line, uint32_t size) {
  Redaction* redaction = redactor->redaction;
  // The parser gets the line with its carriage return, and removes it.
  const uint32_t ending = size > 0 && line[size - 1] == '\r' ? 1 : 0;
  size -= ending;
  for (; size > 0 && IsBlank(*line); size--) line++;
  if (size == 0) return true;
  if (size > MaxLineBytes) return Fail(redactor, "line is longer than 1 MiB");
  if (*line == '#' && TakeComment(redactor, line, size)) return true;
  if (redactor->replacing && memchr(line, '#', size) != nullptr) redaction->commentsLeftOut++;
  ScenarioSizes sizes = {};
  Scenario scenario = {};
  const uint32_t number = redaction->error.line;
  redaction->error = Parse(redactor, line, size + ending, &sizes, &scenario);
  redaction->error.line = number;
  if (redaction->error.what != nullptr) return false;
  if (sizes.rules > 0) {
    if (!IsTraceRule(redactor, false)) return Fail(redactor, "not a line of a trace");
    TakeRequest(redactor, false);
  } else if (*line == 'o' && redactor->replacing) {
    TraceOpen(&redactor->trace, scenario.open);
  } else if (*line == 'c' && redactor->replacing) {
    TraceClose(&redactor->trace, scenario.close);
  }
  return true;
}

bool TakeTrace(Redactor* redactor, const TextView* text) {
  ScenarioError* error = &redactor->redaction->error;
  constexpr char Mark[] = "\xEF\xBB\xBF";
  *error = {};
  for (uint32_t start = StartsWith(text->bytes, text->size, Mark) ? 3 : 0; start < text->size;) {
    error->line++;
    const char* line = text->bytes + start;
    const auto* end = static_cast<const char*>(memchr(line, '\n', text->size - start));
    const uint32_t size = end != nullptr ? static_cast<uint32_t>(end - line) : text->size - start;
    if (!TakeLine(redactor, line, size)) {
      error->wordStart += start;
      return false;
    }
    start += size + 1;
  }
  return true;
}

bool TakeTraces(Redactor* redactor, const TextView* texts, uint32_t count) {
  for (uint32_t i = 0; i < count; i++) {
    redactor->redaction->errorText = i;
    if (!TakeTrace(redactor, &texts[i])) return false;
  }
  return true;
}

bool AddPiece(void* context, const char* bytes, uint32_t size) {
  const auto* redactor = static_cast<const Redactor*>(context);
  Redaction* redaction = redactor->redaction;
  if (size > redactor->room - redaction->size) return false;
  memcpy(redaction->report + redaction->size, bytes, size);
  redaction->size += size;
  return true;
}

void EndLine(void* context, LineEnd end) {
  auto* redactor = static_cast<Redactor*>(context);
  if (end == LineEnd::Dropped) redactor->redaction->size = redactor->lineStart;
  redactor->lineStart = redactor->redaction->size;
}

// Learns the private values, then replaces them.
void TakeAll(Redactor* redactor, const TextView* texts, uint32_t count, const TextView* words,
             uint32_t wordCount) {
  Redaction* redaction = redactor->redaction;
  for (uint32_t i = 0; i < wordCount; i++) {
    const auto* word = reinterpret_cast<const uint8_t*>(words[i].bytes);
    Remember(&redaction->known, ValueKind::Name, word, words[i].size);
  }
  if (!TakeTraces(redactor, texts, count)) return;
  redactor->replacing = true;
  redactor->leftOut = false;
  TraceStart(&redactor->trace, {AddPiece, EndLine, redactor});
  if (!TakeTraces(redactor, texts, count)) return;
  redaction->error = {};
  if (redactor->trace.leftOut > 0 || redactor->trace.stopped) {
    Fail(redactor, "the report would be larger than a trace may be");
  }
  if (redaction->known.full) Fail(redactor, "too many different values");
}

}  // namespace

Redaction RedactTraces(const TextView* texts, uint32_t count, const TextView* words,
                       uint32_t wordCount, bool keepTexts) {
  Redaction redaction = {};
  Redactor redactor = {};
  redactor.redaction = &redaction;
  redactor.keepTexts = keepTexts;
  uint32_t size = wordCount * 8 * MostNameBytes;
  for (uint32_t i = 0; i < count; i++) size += texts[i].size;
  // A character of a trace makes at most two bytes of a payload and eight characters of a report.
  const uint32_t longest = size < MaxLineBytes ? size : MaxLineBytes;
  redactor.room = size < MaxScenarioBytes / 16 ? 8 * size + TraceChunkBytes : MaxScenarioBytes;
  redactor.line = static_cast<char*>(malloc(longest + 16));
  auto* bytes = static_cast<uint8_t*>(malloc(size_t{2} * longest + 1));
  redactor.memory = {.rules = redactor.rules,
                     .patches = redactor.patches,
                     .bytes = bytes,
                     .registers = nullptr,
                     .capacity = {1, 2, 2 * longest, 0}};
  redaction.report = static_cast<char*>(malloc(redactor.room));
  if (StartKnownValues(&redaction.known, size) && bytes != nullptr && redactor.line != nullptr &&
      redaction.report != nullptr) {
    TakeAll(&redactor, texts, count, words, wordCount);
  } else {
    Fail(&redactor, "not enough memory");
  }
  free(redactor.line);
  free(bytes);
  return redaction;
}

void ReleaseRedaction(Redaction* redaction) {
  free(redaction->report);
  ReleaseKnownValues(&redaction->known);
}
