// The report about Wi-Fi and Bluetooth sharing the air.
#pragma once

#include <cstddef>
#include <cstdint>

// Question and answer of OidCoexInfo in the same bytes.
struct CoexInfo {
  uint32_t selector;    // what is asked for
  uint16_t listLength;  // reply: bytes of the item list
  uint8_t items[458];   // reply: items of id, length and `length` value bytes
};
static_assert(sizeof(CoexInfo) == 464);
static_assert(offsetof(CoexInfo, listLength) == 4);
static_assert(offsetof(CoexInfo, items) == 6);

// Prints the report, or nothing when the list holds an unknown item.
void FormatCoexInfo(const CoexInfo& info);
