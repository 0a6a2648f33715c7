// Puts all that a loaded scenario needs into one block of memory, which the host allocates.
#pragma once

#include <cstdint>

#include "simulator/scenario.h"

static_assert(alignof(ScenarioRule) == alignof(uint32_t) &&
              alignof(ScenarioPatch) == alignof(uint32_t) &&
              alignof(RegisterValue) == alignof(uint32_t));

// The size of the block, counters included. Within the scenario's limits this is below 64 MiB.
inline uint32_t ScenarioMemoryBytes(const ScenarioSizes* sizes) {
  return sizes->rules * static_cast<uint32_t>(sizeof(ScenarioRule) + sizeof(uint32_t)) +
         sizes->patches * static_cast<uint32_t>(sizeof(ScenarioPatch)) +
         sizes->registers * static_cast<uint32_t>(sizeof(RegisterValue)) + sizes->bytes;
}

// Divides a block of that size, aligned for 32-bit numbers. Returns the adapter's counters.
inline uint32_t* DivideScenarioMemory(void* block, const ScenarioSizes* sizes,
                                      ScenarioMemory* memory) {
  memory->rules = static_cast<ScenarioRule*>(block);
  memory->patches = reinterpret_cast<ScenarioPatch*>(memory->rules + sizes->rules);
  memory->registers = reinterpret_cast<RegisterValue*>(memory->patches + sizes->patches);
  auto* served = reinterpret_cast<uint32_t*>(memory->registers + sizes->registers);
  memory->bytes = reinterpret_cast<uint8_t*>(served + sizes->rules);
  memory->capacity = *sizes;
  return served;
}
