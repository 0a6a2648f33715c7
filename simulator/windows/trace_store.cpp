#include "simulator/windows/trace_store.h"

#include <cstring>

namespace {

// The block that takes the next byte; null if there is no room.
char* CurrentBlock(TraceStore* store) {
  const uint32_t index = store->used / store->blockBytes;
  if (index == MaxTraceBlocks) return nullptr;
  if (store->blocks[index] == nullptr) {
    store->blocks[index] = static_cast<char*>(store->memory.allocate(store->blockBytes));
  }
  return store->blocks[index];
}

bool Append(void* context, const char* bytes, uint32_t size) {
  auto* store = static_cast<TraceStore*>(context);
  while (size > 0) {
    char* block = CurrentBlock(store);
    if (block == nullptr) return false;
    const uint32_t start = store->used % store->blockBytes;
    const uint32_t room = store->blockBytes - start;
    const uint32_t piece = size < room ? size : room;
    memcpy(block + start, bytes, piece);
    store->used += piece;
    bytes += piece;
    size -= piece;
  }
  return true;
}

void EndLine(void* context, LineEnd end) {
  auto* store = static_cast<TraceStore*>(context);
  if (end == LineEnd::Kept) {
    store->lineStart = store->used;
  } else {
    store->used = store->lineStart;
  }
}

}  // namespace

TraceSink TraceStoreSink(TraceStore* store) {
  return {Append, EndLine, store};
}

uint32_t TraceStoreRead(const TraceStore* store, uint32_t offset, void* bytes, uint32_t room) {
  auto* target = static_cast<char*>(bytes);
  uint32_t copied = 0;
  while (copied < room && offset < store->lineStart) {
    const uint32_t start = offset % store->blockBytes;
    uint32_t piece = store->blockBytes - start;
    if (piece > room - copied) piece = room - copied;
    if (piece > store->lineStart - offset) piece = store->lineStart - offset;
    memcpy(target + copied, store->blocks[offset / store->blockBytes] + start, piece);
    copied += piece;
    offset += piece;
  }
  return copied;
}

void TraceStoreClear(TraceStore* store) {
  for (char*& block : store->blocks) {
    if (block == nullptr) break;
    store->memory.release(block);
    block = nullptr;
  }
  store->used = 0;
  store->lineStart = 0;
}
