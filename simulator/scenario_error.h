// How a mistake in a scenario is shown.
#pragma once

#include <cstdint>

constexpr uint32_t MostShown = 60;

// Copies the word at fault, or as much of it as fits, and a zero. Characters that may not be
// printable become '?'.
inline void CopyWord(const char* word, uint32_t length, char (&shown)[MostShown + 1]) {
  uint32_t size = 0;
  for (; size < length && size < MostShown; size++) {
    shown[size] = word[size] < ' ' || word[size] > '~' ? '?' : word[size];
  }
  shown[size] = 0;
}
