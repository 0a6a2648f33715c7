// Formatted output by the C runtime. Formats are checked against what the host's one has.
#pragma once

#include <cstddef>
#include <cstdio>

#if defined(__MINGW_PRINTF_FORMAT)
#define PRINTF_LIKE(formatIndex, firstValue) \
  __attribute__((format(__MINGW_PRINTF_FORMAT, formatIndex, firstValue)))
#elif defined(__GNUC__)
#define PRINTF_LIKE(formatIndex, firstValue) \
  __attribute__((format(printf, formatIndex, firstValue)))
#else
#define PRINTF_LIKE(formatIndex, firstValue)
#endif

// Prints to standard output. What is printed is collected; ConsoleFlush writes it out.
void ConsolePrintf(const char* format, ...) PRINTF_LIKE(1, 2);

// Prints a text as it stands.
void ConsoleText(const char* text);

// Prints into an open file.
void FilePrintf(FILE* file, const char* format, ...) PRINTF_LIKE(2, 3);

// Formats into `text`, writing at most `size` bytes including the terminating zero (nothing when
// size is 0); the bytes after the zero are not defined. Returns the length that the whole
// text needs, without its zero.
int BoundedPrintf(char* text, size_t size, const char* format, ...) PRINTF_LIKE(3, 4);

// Writes out everything printed so far. A write that fails loses that output and nothing else.
void ConsoleFlush();
