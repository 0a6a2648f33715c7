#include "simulator/trace.h"

#include <charconv>
#include <cstring>
#include <string_view>

namespace {

constexpr uint32_t MostDigits = 10;  // of a 32-bit number

void Flush(Trace* trace) {
  if (trace->chunkBytes == 0) return;
  if (!trace->sink.write(trace->sink.context, trace->chunk, trace->chunkBytes)) {
    trace->stopped = true;
    trace->dropping = true;
  }
  trace->chunkBytes = 0;
}

void AddCharacter(Trace* trace, char character) {
  trace->lineBytes++;
  if (trace->dropping) return;
  if (trace->chunkBytes == TraceChunkBytes) Flush(trace);
  trace->chunk[trace->chunkBytes++] = character;
}

void AddText(Trace* trace, const char* text) {
  for (; *text != 0; text++) AddCharacter(trace, *text);
}

void AddDecimal(Trace* trace, uint32_t value) {
  char digits[MostDigits] = {};
  const char* end = std::to_chars(digits, digits + sizeof(digits), value).ptr;
  for (const char* digit = digits; digit < end; digit++) AddCharacter(trace, *digit);
}

void AddByte(Trace* trace, uint8_t byte) {
  AddCharacter(trace, "0123456789abcdef"[byte >> 4]);
  AddCharacter(trace, "0123456789abcdef"[byte & 15]);
}

bool FitsLine(const Trace* trace) {
  return trace->lineBytes <= MaxLineBytes;
}

bool FitsTrace(const Trace* trace) {
  return trace->lineBytes <= MaxTraceBytes - trace->bytes;
}

// Bytes that are not kept are counted, but neither read nor passed on.
void AddPayload(Trace* trace, const char* before, const uint8_t* payload, uint32_t length) {
  if (length == 0) return;
  AddText(trace, before);
  const uint64_t start = trace->lineBytes;
  trace->lineBytes += uint64_t{2} * length;
  trace->dropping = trace->dropping || !FitsLine(trace) || !FitsTrace(trace);
  if (trace->dropping) return;
  trace->lineBytes = start;
  for (uint32_t i = 0; i < length; i++) AddByte(trace, payload[i]);
}

void AddResult(Trace* trace, CallResult result) {
  switch (result.outcome) {
    case Outcome::Succeeds:
      AddText(trace, " ok");
      break;
    case Outcome::YieldsNull:
      AddText(trace, " null");
      break;
    case Outcome::Fails:
      AddText(trace, " error=");
      AddDecimal(trace, result.error);
      break;
  }
}

void BeginLine(Trace* trace) {
  trace->lineBytes = 0;
  trace->chunkBytes = 0;
  trace->dropping = trace->stopped;
}

enum class Line : uint8_t {
  Comment,
  Call,
  Request,
};

// Ends a line. If the line is too long, only that line is lost. If it would make the whole trace
// too large, the recording ends.
void EndLine(Trace* trace, Line kind) {
  const uint32_t rules = kind == Line::Request ? 1 : 0;
  const bool fitsLine = FitsLine(trace);
  AddCharacter(trace, '\n');
  if (fitsLine && (!FitsTrace(trace) || trace->rules + rules > MaxRules)) trace->stopped = true;
  trace->dropping = trace->dropping || !fitsLine || trace->stopped;
  if (!trace->dropping) Flush(trace);
  const bool kept = !trace->dropping;
  if (!kept && kind != Line::Comment && trace->leftOut < UINT32_MAX) trace->leftOut++;
  trace->sink.endLine(trace->sink.context, kept ? LineEnd::Kept : LineEnd::Dropped);
  if (!kept) return;
  trace->bytes += static_cast<uint32_t>(trace->lineBytes);
  trace->rules += rules;
}

void AddRequest(Trace* trace, uint32_t oid, uint32_t length) {
  AddText(trace, "0x");
  for (int shift = 28; shift >= 0; shift -= 4) {
    AddCharacter(trace, "0123456789ABCDEF"[(oid >> shift) & 15]);
  }
  AddText(trace, " len=");
  AddDecimal(trace, length);
}

void TraceCall(Trace* trace, const char* call, CallResult result) {
  BeginLine(trace);
  AddText(trace, call);
  AddResult(trace, result);
  EndLine(trace, Line::Call);
}

}  // namespace

void TraceStart(Trace* trace, const TraceSink& sink) {
  memset(trace, 0, sizeof(*trace));
  trace->sink = sink;
}

void TraceOpen(Trace* trace, CallResult result) {
  TraceCall(trace, "open", result);
}

void TraceClose(Trace* trace, CallResult result) {
  TraceCall(trace, "close", result);
}

void TraceSent(Trace* trace, uint32_t oid, const uint8_t* payload, uint32_t length) {
  BeginLine(trace);
  trace->dropping = false;  // this comment has room even if no line has
  AddText(trace, TraceSentHead);
  AddRequest(trace, oid, length);
  const uint64_t size = trace->lineBytes + sizeof(" if 0:") + uint64_t{2} * length;
  if (payload != nullptr && size <= MaxLineBytes && size <= MaxTraceBytes - trace->bytes) {
    AddPayload(trace, " if 0:", payload, length);
  }
  AddCharacter(trace, '\n');
  Flush(trace);
  trace->sink.endLine(trace->sink.context, LineEnd::Replaced);
}

void TraceRequest(Trace* trace, uint32_t oid, const uint8_t* payload, uint32_t length) {
  BeginLine(trace);
  AddRequest(trace, oid, length);
  AddPayload(trace, " if 0:", payload, length);
}

void TraceAnswer(Trace* trace, const RequestResult* result, const uint8_t* payload,
                 uint32_t length) {
  AddResult(trace, result->call);
  AddPayload(trace, " 0:", payload, length);
  AddText(trace, " times=1");
  if (result->returned != length) {
    AddText(trace, " returned=");
    AddDecimal(trace, result->returned);
  }
  EndLine(trace, Line::Request);
}

void TraceUnserved(Trace* trace, const NearestRule* nearest) {
  if (trace->dropping) return;
  BeginLine(trace);
  uint32_t number = nearest->line;
  for (const char* text = TraceComments[static_cast<uint32_t>(nearest->misfit)]; *text != 0;
       text++) {
    if (*text == '%') {
      AddDecimal(trace, number);
      number = nearest->number;
    } else if (*text == '$') {
      AddByte(trace, nearest->byte);
    } else {
      AddCharacter(trace, *text);
    }
  }
  EndLine(trace, Line::Comment);
}

void TraceComment(Trace* trace, const char* comment, uint32_t size) {
  BeginLine(trace);
  for (uint32_t i = 0; i < size; i++) AddCharacter(trace, comment[i]);
  EndLine(trace, Line::Comment);
}

uint32_t FormatLeftOut(uint32_t leftOut, char* line) {
  constexpr std::string_view Comment = TraceComments[LeftOutComment];
  constexpr size_t Start = Comment.find('%');
  memcpy(line, Comment.data(), Start);
  char* end = std::to_chars(line + Start, line + Start + MostDigits, leftOut).ptr;
  *end++ = '\n';
  return static_cast<uint32_t>(end - line);
}
