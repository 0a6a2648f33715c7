// Formatted output. The conversions are those of C's printf that the tool uses:
//   %d %u %x %X %c %s with flags - 0, width, precision (also *); %lld %llu %llx; %% ;
//   %S, a text of 16-bit little-endian characters; what is not ASCII prints as a question mark.
// A number has at most 32 digits, leading zeros among them; a width by * is not negative.
#pragma once

#include <cstddef>
#include <cstdio>

// Lets the compilers that can compare formats with their values.
#if defined(__clang__)
#define PRINTF_LIKE(formatIndex, firstValue) \
  __attribute__((format(printf, formatIndex, firstValue)))
#elif defined(__GNUC__)
#define PRINTF_LIKE(formatIndex, firstValue) \
  __attribute__((format(gnu_printf, formatIndex, firstValue)))
#else
#define PRINTF_LIKE(formatIndex, firstValue)
#endif

// Prints to standard output. What is printed is collected; ConsoleFlush writes it out.
void ConsolePrintf(const char* format, ...) PRINTF_LIKE(1, 2);

// Prints into an open file.
void FilePrintf(FILE* file, const char* format, ...) PRINTF_LIKE(2, 3);

// Formats into `text`, writing at most `size` bytes including the terminating zero (nothing when
// size is 0); what of them stands behind the zero is left open. Returns the length that the whole
// text needs, without its zero.
int BoundedPrintf(char* text, size_t size, const char* format, ...) PRINTF_LIKE(3, 4);

// Writes out everything printed so far. A write that fails loses that output and nothing else.
void ConsoleFlush();
