// The rate words of a wireless-table entry.
#pragma once

#include <cstddef>
#include <cstdint>

// Formats what the 14-bit rate word `value` says: STBC, streams, mode and rate. The words of the
// entry are not looked at.
void DecodeWtblRate(char* text, size_t size, const uint32_t* words, uint32_t value);
