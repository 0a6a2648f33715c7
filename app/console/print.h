// Formatted output by the C runtime. Formats are checked against what the host's one has.
#pragma once

#include <cstdarg>
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

// Formats into `text`, which has `size` bytes, and ends it with a zero. Returns the length of what
// stands there, or `size` if the text was cut.
size_t BoundedPrintf(char* text, size_t size, const char* format, ...) PRINTF_LIKE(3, 4);
size_t BoundedVprintf(char* text, size_t size, const char* format, va_list values);

// Writes out everything printed so far. A write that fails loses that output and nothing else.
void ConsoleFlush();
