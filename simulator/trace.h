// Trace lines: every call that reached the simulated adapter, written as a scenario statement, so
// that a trace replays as a scenario.
#pragma once

#include <cstdint>

#include "simulator/adapter.h"

// Takes the bytes of a trace in pieces of at most TraceChunkBytes. A piece that ends in a line end
// ends a line.
constexpr uint32_t TraceChunkBytes = 512;
struct TraceSink {
  void (*write)(void* context, const char* bytes, uint32_t size);
  void* context;
};

void TraceOpen(const TraceSink* sink, CallResult result);
void TraceClose(const TraceSink* sink, CallResult result);

// A request's line in two halves: the payload as sent, then the payload as the answer left it.
void TraceRequest(const TraceSink* sink, uint32_t oid, const uint8_t* payload, uint32_t length);
void TraceAnswer(const TraceSink* sink, const RequestResult* result, const uint8_t* payload,
                 uint32_t length);
