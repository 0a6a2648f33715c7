#include "app/console/print.h"

#include <cstdarg>

void ConsolePrintf(const char* format, ...) {
  va_list values;
  va_start(values, format);
  (void)vprintf(format, values);
  va_end(values);
}

void ConsoleText(const char* text) {
  (void)fputs(text, stdout);
}

void FilePrintf(FILE* file, const char* format, ...) {
  va_list values;
  va_start(values, format);
  (void)vfprintf(file, format, values);
  va_end(values);
}

int BoundedPrintf(char* text, size_t size, const char* format, ...) {
  va_list values;
  va_start(values, format);
  const int length = vsnprintf(text, size, format, values);
  va_end(values);
  return length;
}

void ConsoleFlush() {
  (void)fflush(stdout);
}
