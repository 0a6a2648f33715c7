// The driver's trace, kept in memory until it is fetched.
#pragma once

#include <cstdint>

#include "simulator/trace.h"

// Memory of the host. `allocate` returns null if there is none.
struct HostMemory {
  void* (*allocate)(uint64_t size);
  void (*release)(void* memory);
};

constexpr uint32_t TraceBlockBytes = 64 * 1024;
constexpr uint32_t MaxTraceBlocks = MaxScenarioBytes / TraceBlockBytes;

struct TraceStore {
  HostMemory memory;
  uint32_t blockBytes;           // TraceBlockBytes; less makes a smaller store
  char* blocks[MaxTraceBlocks];  // null from the first one that is not needed yet
  uint32_t used;                 // bytes of whole lines and of the line being written
  uint32_t lineStart;
};

// A sink that keeps what it gets. Without memory it has no room.
TraceSink TraceStoreSink(TraceStore* store);

// Copies what is recorded from `offset` on. Returns the number of bytes, at most `room`.
uint32_t TraceStoreRead(const TraceStore* store, uint32_t offset, void* bytes, uint32_t room);

// Forgets everything.
void TraceStoreClear(TraceStore* store);
