#include "simulator/trace.h"

namespace {

struct TraceChunk {
  const TraceSink* sink;
  uint32_t used;
  char bytes[TraceChunkBytes];
};

void Flush(TraceChunk* chunk) {
  if (chunk->used > 0) chunk->sink->write(chunk->sink->context, chunk->bytes, chunk->used);
  chunk->used = 0;
}

void AddCharacter(TraceChunk* chunk, char character) {
  if (chunk->used == TraceChunkBytes) Flush(chunk);
  chunk->bytes[chunk->used++] = character;
}

void AddText(TraceChunk* chunk, const char* text) {
  for (; *text != 0; text++) AddCharacter(chunk, *text);
}

void AddDecimal(TraceChunk* chunk, uint32_t value) {
  char digits[10];
  uint32_t count = 0;
  do {
    digits[count++] = static_cast<char>('0' + value % 10);
    value /= 10;
  } while (value > 0);
  while (count > 0) AddCharacter(chunk, digits[--count]);
}

void AddPayload(TraceChunk* chunk, const char* before, const uint8_t* payload, uint32_t length) {
  if (length == 0) return;
  AddText(chunk, before);
  for (uint32_t i = 0; i < length; i++) {
    AddCharacter(chunk, "0123456789abcdef"[payload[i] >> 4]);
    AddCharacter(chunk, "0123456789abcdef"[payload[i] & 15]);
  }
}

void AddResult(TraceChunk* chunk, CallResult result) {
  switch (result.outcome) {
    case Outcome::Succeeds:
      AddText(chunk, " ok");
      break;
    case Outcome::YieldsNull:
      AddText(chunk, " null");
      break;
    case Outcome::Fails:
      AddText(chunk, " error=");
      AddDecimal(chunk, result.error);
      break;
  }
}

void TraceCall(const TraceSink* sink, const char* call, CallResult result) {
  TraceChunk chunk = {sink, 0, {}};
  AddText(&chunk, call);
  AddResult(&chunk, result);
  AddCharacter(&chunk, '\n');
  Flush(&chunk);
}

}  // namespace

void TraceOpen(const TraceSink* sink, CallResult result) {
  TraceCall(sink, "open", result);
}

void TraceClose(const TraceSink* sink, CallResult result) {
  TraceCall(sink, "close", result);
}

void TraceRequest(const TraceSink* sink, uint32_t oid, const uint8_t* payload, uint32_t length) {
  TraceChunk chunk = {sink, 0, {}};
  AddText(&chunk, "0x");
  for (int shift = 28; shift >= 0; shift -= 4) {
    AddCharacter(&chunk, "0123456789ABCDEF"[(oid >> shift) & 15]);
  }
  AddText(&chunk, " len=");
  AddDecimal(&chunk, length);
  AddPayload(&chunk, " if 0:", payload, length);
  Flush(&chunk);
}

void TraceAnswer(const TraceSink* sink, const RequestResult* result, const uint8_t* payload,
                 uint32_t length) {
  TraceChunk chunk = {sink, 0, {}};
  AddResult(&chunk, result->call);
  AddPayload(&chunk, " 0:", payload, length);
  AddText(&chunk, " times=1");
  if (result->returned != length) {
    AddText(&chunk, " returned=");
    AddDecimal(&chunk, result->returned);
  }
  AddCharacter(&chunk, '\n');
  Flush(&chunk);
}
