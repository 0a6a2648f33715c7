#include "app/console/text.h"

#include <unistd.h>

#include <cstring>

#include "app/console/print.h"

namespace {

char LowerCase(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

}  // namespace

bool EqualsIgnoreCase(const char* left, const char* right) {
  for (; LowerCase(*left) == LowerCase(*right); left++, right++) {
    if (*left == 0) return true;
  }
  return false;
}

void CopyText(char* target, size_t size, const char* text) {
  size_t length = strlen(text);
  if (length >= size) EndAfterFatalError();
  memcpy(target, text, length + 1);
}

void ProgramBaseName(const char* path, char (&name)[ProgramNameSize]) {
  const char* separator = strrchr(path, '\\');
  CopyText(name, sizeof(name), separator == nullptr ? path : separator + 1);
  for (size_t i = strlen(name); i > 1; i--) {
    if (name[i - 1] != '.') continue;
    name[i - 1] = 0;
    return;
  }
}

void EndAfterFatalError() {
  ConsoleFlush();
  _exit(3);
}
