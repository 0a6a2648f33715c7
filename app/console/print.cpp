#include "app/console/print.h"

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

size_t BoundedPrintf(char* text, size_t size, const char* format, ...) {
  va_list values;
  va_start(values, format);
  const size_t length = BoundedVprintf(text, size, format, values);
  va_end(values);
  return length;
}

size_t BoundedVprintf(char* text, size_t size, const char* format, va_list values) {
  // Runtimes differ in what they return for a text that is cut, and in whether they end it.
  const int length = vsnprintf(text, size, format, values);
  text[size - 1] = 0;
  return length < 0 || static_cast<size_t>(length) >= size ? size : static_cast<size_t>(length);
}

void ConsoleFlush() {
  (void)fflush(stdout);
}
