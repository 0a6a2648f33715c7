// a8000redact IN OUT: what a8000ctl.exe redact does, where there is no Windows.
#include <cstdio>

#include "simulator/redact/redact.h"

int main(int argc, char** argv) {
  if (argc == 3) return RedactFile(argv[1], argv[2]);
  (void)fputs(
      "a8000redact IN OUT: copies a trace without MAC addresses, SSIDs and register contents\n",
      stderr);
  return 1;
}
