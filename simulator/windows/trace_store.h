// The driver's trace, kept in memory until it is fetched: whole lines up to a limit, behind which
// nothing more is recorded.
#pragma once

#include <cstdint>

// Memory of the host. `allocate` returns null where there is none.
struct HostMemory {
  void* (*allocate)(uint64_t size);
  void (*release)(void* memory);
};

constexpr uint32_t TraceBlockBytes = 64 * 1024;
constexpr uint32_t MaxTraceBlocks = 1024;  // 64 MiB

struct TraceStore {
  HostMemory memory;
  char* blocks[MaxTraceBlocks];  // null from the first one that is not needed yet
  uint32_t used;                 // bytes of whole lines and of the line being written
  uint32_t lineStart;
  uint32_t lostLines;
  bool full;  // a line found no room; all later ones are lost too
};

// Takes a piece of a line; it fits a TraceSink whose context is a TraceStore.
void TraceStoreWrite(void* context, const char* bytes, uint32_t size);

// Copies what is recorded from `offset` on. Returns the number of bytes, at most `room`.
uint32_t TraceStoreRead(const TraceStore* store, uint32_t offset, void* bytes, uint32_t room);

// Forgets everything.
void TraceStoreClear(TraceStore* store);
