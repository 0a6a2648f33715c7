// The rate words of a wireless-table entry.
#pragma once

#include <cstddef>
#include <cstdint>

// Formats the 14-bit rate word `value`: STBC, streams, mode and rate.
void DecodeWtblRate(char* text, size_t size, const uint32_t* words, uint32_t value);
