// Reads and writes numbers at any byte of a record. Records and hosts are both little-endian.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

static_assert(std::endian::native == std::endian::little);

inline uint16_t ReadU16(const uint8_t* bytes) {
  uint16_t value = 0;
  memcpy(&value, bytes, sizeof(value));
  return value;
}

inline uint32_t ReadU32(const uint8_t* bytes) {
  uint32_t value = 0;
  memcpy(&value, bytes, sizeof(value));
  return value;
}

inline uint64_t ReadU64(const uint8_t* bytes) {
  uint64_t value = 0;
  memcpy(&value, bytes, sizeof(value));
  return value;
}

inline void WriteU32(uint8_t* bytes, uint32_t value) {
  memcpy(bytes, &value, sizeof(value));
}
