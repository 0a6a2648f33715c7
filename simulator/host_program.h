// What the programs around the simulated adapter share: messages, and the reading of files. The
// adapter itself includes nothing of it.
#pragma once

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "simulator/scenario.h"

// Prints "a8000: what is wrong" on standard error.
inline void Report(const char* what) {
  (void)fprintf(stderr, "a8000: %s\n", what);
}

// Prints "a8000: NAME:LINE: what is wrong", and ": WORD" if the error has one, which is taken from
// `text`. Of a long word the start is shown; characters that may not be printable become '?'.
inline void ReportInFile(const char* name, const ScenarioError& error, const char* text) {
  constexpr uint32_t MostShown = 60;
  uint32_t length = error.wordLength < MostShown ? error.wordLength : MostShown;
  if (text == nullptr) length = 0;
  char word[MostShown + 1] = {};
  for (uint32_t i = 0; i < length; i++) {
    const char character = text[error.wordStart + i];
    word[i] = character < ' ' || character > '~' ? '?' : character;
  }
  (void)fprintf(stderr, "a8000: %s:%u: %s%s%s\n", name, error.line, error.what,
                length > 0 ? ": " : "", word);
}

// The same for a file as a whole.
inline void ReportFile(const char* name, const char* what) {
  (void)fprintf(stderr, "a8000: %s:0: %s\n", name, what);
}

// The same with the reason in errno.
inline void ReportFileFailure(const char* name) {
  ReportFile(name, strerror(errno));
}

// Reads a file to its end or until `room` bytes are read. On failure prints a message and returns
// false.
inline bool ReadTextFile(const char* name, char* bytes, uint32_t room, uint32_t* size) {
  FILE* file = fopen(name, "rb");
  *size = file == nullptr ? 0 : static_cast<uint32_t>(fread(bytes, 1, room, file));
  const bool isRead = file != nullptr && ferror(file) == 0;
  if (!isRead) ReportFileFailure(name);
  if (file != nullptr) (void)fclose(file);
  return isRead;
}
