// Trace lines: every call that reached the simulated adapter, written as a scenario statement, so
// that a trace replays as a scenario. A trace never grows past what a scenario may hold.
#pragma once

#include <cstdint>

#include "simulator/adapter.h"

constexpr uint32_t TraceChunkBytes = 512;
constexpr uint32_t LeftOutLineBytes = 64;
// After its lines a trace has room for two comments: on what was left out, and on the request that
// is on its way, without its payload.
constexpr uint32_t MaxTraceBytes = MaxScenarioBytes - 2 * LeftOutLineBytes;

// The comments of a trace, in the order of Misfit, then the one on calls left out. `%` stands for a
// number, `$` for a byte.
constexpr const char* TraceComments[] = {
    "# no rule and no register served this request; no rule has its OID",
    "# no rule and no register served this request; nearest is line %, which asks for len=%",
    "# no rule and no register served this request; nearest is line %, which asks for a byte at "
    "offset %, past the end",
    "# no rule and no register served this request; nearest is line %, which asks for $ at offset "
    "%",
    "# no rule and no register served this request; nearest is line %, which is used up",
    "# calls left out, for which there was no room: %",
};
constexpr uint32_t LeftOutComment = static_cast<uint32_t>(Misfit::UsedUp) + 1;
// The beginning of the comment on a request that is on its way.
constexpr char TraceSentHead[] = "# sent: ";

enum class LineEnd : uint8_t {
  Kept,
  Dropped,
  Replaced,  // the next line takes its place
};

// Where the lines go. `write` takes the next piece of a line, of at most TraceChunkBytes, and
// returns false if it has no room. `endLine` ends a line.
struct TraceSink {
  bool (*write)(void* context, const char* bytes, uint32_t size);
  void (*endLine)(void* context, LineEnd end);
  void* context;
};

struct Trace {
  TraceSink sink;
  uint32_t bytes;      // of the lines that are kept
  uint32_t rules;      // among them
  uint32_t leftOut;    // calls without a line
  bool stopped;        // a line found no room: nothing more is kept
  bool dropping;       // nor is the rest of the line being written
  uint64_t lineBytes;  // of that line, also those that were not passed on
  uint32_t chunkBytes;
  char chunk[TraceChunkBytes];
};

void TraceStart(Trace* trace, const TraceSink& sink);
void TraceOpen(Trace* trace, CallResult result);
void TraceClose(Trace* trace, CallResult result);

// The comment on a request that is on its way. The request's line overwrites it. It has no payload
// if `payload` is null or does not fit.
void TraceSent(Trace* trace, uint32_t oid, const uint8_t* payload, uint32_t length);

// A request's line in two halves: the payload as sent, then the payload as the answer left it.
void TraceRequest(Trace* trace, uint32_t oid, const uint8_t* payload, uint32_t length);
void TraceAnswer(Trace* trace, const RequestResult* result, const uint8_t* payload,
                 uint32_t length);

// Adds a comment to the line of a request that was not served.
void TraceUnserved(Trace* trace, const NearestRule* nearest);

// Adds a comment of `size` bytes unchanged.
void TraceComment(Trace* trace, const char* comment, uint32_t size);

// Lets the adapter answer a request and records it; a null trace records nothing.
inline RequestResult TracedRequest(Adapter* adapter, Trace* trace, uint32_t oid, uint8_t* payload,
                                   uint32_t length) {
  if (trace == nullptr) return AdapterRequest(adapter, oid, payload, length);
  TraceRequest(trace, oid, payload, length);
  const RequestResult result = AdapterRequest(adapter, oid, payload, length);
  TraceAnswer(trace, &result, payload, length);
  if (result.unserved) {
    const NearestRule nearest = FindNearestRule(adapter, oid, payload, length);
    TraceUnserved(trace, &nearest);
  }
  return result;
}

// Writes the comment that stands at the end of a trace with calls left out; `line` takes
// LeftOutLineBytes. Returns its length.
uint32_t FormatLeftOut(uint32_t leftOut, char* line);
