// a8000redact: does on other hosts what `a8000ctl.exe redact` does on Windows.
#include <cstdio>

#include "simulator/redact/redact.h"

int main(int argc, char** argv) {
  const int result = RunRedact(argc - 1, argv + 1);
  if (result >= 0) return result;
  (void)fputs(
      "a8000redact [--keep-texts] [--word WORD]... IN... OUT: makes a report of traces, in which "
      "only\n"
      "what is known to be harmless stays. A word has at most 64 bytes.\n",
      stderr);
  return 1;
}
