// Comparing and copying argument texts.
#pragma once

#include <cstddef>

// True when both texts are equal, ASCII letters compared without regard to case.
bool EqualsIgnoreCase(const char* left, const char* right);

// Copies `text` with its zero into `target` of `size` bytes. A text that does not fit is a fatal
// runtime error.
void CopyText(char* target, size_t size, const char* text);

// The display name is shorter than this.
constexpr size_t ProgramNameSize = 260;

// Derives the program's display name from argv[0]: what follows the last '\', without the last
// '.' and what follows it; a '.' in first place does not count. A file part of 260 characters or
// more is a fatal runtime error.
void ProgramBaseName(const char* path, char (&name)[ProgramNameSize]);

// Ends the process with status 3 after writing out what was printed: the answer to a bounded copy
// that does not fit. Prints nothing of its own.
[[noreturn]] void EndAfterFatalError();
