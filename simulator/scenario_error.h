// How a mistake in a scenario is shown.
#pragma once

#include <cstdint>

constexpr uint32_t MostShown = 60;

// Copies the word at fault, or its beginning, with a zero behind it. What may not be printable
// shows as '?'.
inline void CopyWord(const char* word, uint32_t length, char (&shown)[MostShown + 1]) {
  const uint32_t count = length < MostShown ? length : MostShown;
  for (uint32_t i = 0; i < count; i++) shown[i] = word[i] < ' ' || word[i] > '~' ? '?' : word[i];
  shown[count] = 0;
}
