// Parses any text as a scenario. Parsing keeps within its memory, and its two passes agree. The
// trace of a scenario's answers is itself a scenario that answers the same.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "simulator/adapter.h"
#include "simulator/redact/redact.h"
#include "simulator/scenario_memory.h"
#include "simulator/scenario_parser.h"
#include "simulator/trace.h"

namespace {

constexpr uint32_t MostRequests = 8;
constexpr uint32_t LongestPayload = 512;
constexpr uint32_t TraceSize = 1 << 16;

struct Exchange {
  uint32_t oid;
  uint32_t length;
  RequestResult result;
  uint8_t sent[LongestPayload];
  uint8_t answered[LongestPayload];
};

struct TraceText {
  uint32_t used;
  char bytes[TraceSize];
};

void Require(bool holds) {
  if (!holds) abort();
}

bool TakePiece(void* context, const char* bytes, uint32_t size) {
  auto* trace = static_cast<TraceText*>(context);
  Require(size > 0 && size <= TraceChunkBytes && size <= TraceSize - trace->used);
  memcpy(trace->bytes + trace->used, bytes, size);
  trace->used += size;
  return true;
}

void EndLine(void* /*context*/, LineEnd end) {
  Require(end == LineEnd::Kept);
}

// Parses the text into a block of exactly the size that it needs. Returns null if it is refused.
void* Load(const char* text, size_t size, Scenario* scenario, uint32_t** served) {
  ScenarioSizes sizes = {};
  const ScenarioError error = ParseScenario(text, size, nullptr, &sizes, nullptr);
  if (error.what != nullptr) {
    Require(error.wordStart <= size && error.wordLength <= size - error.wordStart);
    return nullptr;
  }
  void* block = malloc(ScenarioMemoryBytes(&sizes) + size_t{1});
  ScenarioMemory memory = {};
  *served = DivideScenarioMemory(block, &sizes, &memory);
  ScenarioSizes stored = {};
  const ScenarioError again = ParseScenario(text, size, &memory, &stored, scenario);
  Require(again.what == nullptr && memcmp(&sizes, &stored, sizeof(sizes)) == 0);
  return block;
}

// Sends the requests that the rules wait for, with the bytes of their conditions that fit. Returns
// the count.
uint32_t Ask(Adapter* adapter, const Scenario* scenario, Exchange* exchanges) {
  uint32_t count = scenario->ruleCount < MostRequests ? scenario->ruleCount : MostRequests;
  for (uint32_t i = 0; i < count; i++) {
    const ScenarioRule* rule = &scenario->rules[i];
    Exchange* exchange = &exchanges[i];
    exchange->oid = rule->oid;
    exchange->length = rule->hasLength && rule->length <= LongestPayload ? rule->length : 8 + i;
    for (uint32_t j = 0; j < rule->conditionCount; j++) {
      const ScenarioPatch* patch = &scenario->patches[rule->firstPatch + j];
      for (uint32_t k = 0; k < patch->count; k++) {
        if (patch->offset >= exchange->length || k >= exchange->length - patch->offset) break;
        const uint32_t source = patch->fill ? 0 : k;
        exchange->sent[patch->offset + k] = scenario->bytes[patch->firstByte + source];
      }
    }
    memcpy(exchange->answered, exchange->sent, sizeof(exchange->sent));
    exchange->result = AdapterRequest(adapter, exchange->oid, exchange->answered, exchange->length);
  }
  return count;
}

void WriteTrace(const Adapter* adapter, const Exchange* exchanges, uint32_t count,
                TraceText* text) {
  Trace trace;
  TraceStart(&trace, {TakePiece, EndLine, text});
  TraceOpen(&trace, AdapterOpen(adapter));
  for (uint32_t i = 0; i < count; i++) {
    const Exchange* exchange = &exchanges[i];
    TraceRequest(&trace, exchange->oid, exchange->sent, exchange->length);
    TraceAnswer(&trace, &exchange->result, exchange->answered, exchange->length);
    if (!exchange->result.unserved) continue;
    const NearestRule nearest =
        FindNearestRule(adapter, exchange->oid, exchange->sent, exchange->length);
    Require(nearest.misfit != Misfit::Oid);
    TraceUnserved(&trace, &nearest);
  }
  TraceClose(&trace, AdapterClose(adapter));
  Require(trace.leftOut == 0 && trace.bytes == text->used && trace.rules == count);
}

bool Equal(CallResult left, CallResult right) {
  return left.outcome == right.outcome && left.error == right.error;
}

// Sends the same requests once more, in the same order, to the scenario that the trace is.
void Replay(const Adapter* adapter, const Exchange* exchanges, uint32_t count,
            const TraceText* trace) {
  static Adapter replayed;
  Scenario scenario = {};
  uint32_t* served = nullptr;
  void* block = Load(trace->bytes, trace->used, &scenario, &served);
  Require(block != nullptr && scenario.ruleCount == count);
  AdapterStart(&replayed, &scenario, served);
  Require(Equal(AdapterOpen(&replayed), AdapterOpen(adapter)));
  Require(Equal(AdapterClose(&replayed), AdapterClose(adapter)));
  for (uint32_t i = 0; i < count; i++) {
    const Exchange* exchange = &exchanges[i];
    uint8_t payload[LongestPayload];
    memcpy(payload, exchange->sent, sizeof(payload));
    const RequestResult result =
        AdapterRequest(&replayed, exchange->oid, payload, exchange->length);
    Require(Equal(result.call, exchange->result.call));
    Require(result.returned == exchange->result.returned);
    Require(memcmp(payload, exchange->answered, sizeof(payload)) == 0);
  }
  free(block);
}

// Redacts a text. Every trace is accepted. The report is a scenario with all rules that are not
// left out, and is accepted itself.
void RedactCopy(const char* text, uint32_t size, bool isTrace, bool keepTexts) {
  const TextView view = {text, size};
  const TextView word = {"wtbl", 4};
  Redaction redaction = RedactTraces(&view, 1, &word, 1, keepTexts);
  Require(redaction.error.what == nullptr || !isTrace);
  if (redaction.error.what == nullptr) {
    ScenarioSizes before = {};
    ScenarioSizes after = {};
    Require(ParseScenario(text, size, nullptr, &before, nullptr).what == nullptr);
    Require(ParseScenario(redaction.report, redaction.size, nullptr, &after, nullptr).what ==
            nullptr);
    Require(before.rules >= after.rules && before.rules - after.rules <= redaction.requestsLeftOut);
    const TextView report = {redaction.report, redaction.size};
    Redaction again = RedactTraces(&report, 1, nullptr, 0, keepTexts);
    Require(again.error.what == nullptr && again.requestsLeftOut + again.commentsLeftOut == 0);
    ReleaseRedaction(&again);
  }
  ReleaseRedaction(&redaction);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Adapter adapter;
  static TraceText trace;
  // A block of its own, so that a read past the text's end is seen.
  char* text = static_cast<char*>(malloc(size > 0 ? size : 1));
  if (size > 0) memcpy(text, data, size);
  Scenario scenario = {};
  uint32_t* served = nullptr;
  void* block = Load(text, size, &scenario, &served);
  if (block != nullptr) {
    Exchange exchanges[MostRequests] = {};
    AdapterStart(&adapter, &scenario, served);
    const uint32_t count = Ask(&adapter, &scenario, exchanges);
    trace.used = 0;
    WriteTrace(&adapter, exchanges, count, &trace);
    Replay(&adapter, exchanges, count, &trace);
    RedactCopy(trace.bytes, trace.used, true, size % 2 == 0);
  }
  RedactCopy(text, static_cast<uint32_t>(size), false, size % 2 == 0);
  free(block);
  free(text);
  return 0;
}
