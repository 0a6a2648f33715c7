// The decoded words of an LMAC wireless-table entry.
#pragma once

#include <cstddef>
#include <cstdint>

#include "commands/internal/wtbl_field.h"

extern const WtblWordGroups LmacWtblGroups;

// Formats the 14-bit rate word `value`: STBC, streams, mode and rate. It does not use `words`.
void DecodeWtblRate(char* text, size_t size, const uint32_t* words, uint32_t value);
