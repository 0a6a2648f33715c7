#ifdef _WIN32

#include <io.h>

#include <cstdlib>

#include "platform/process.h"

void PrepareStandardOutput() {}

void WriteStandardOutput(const char* text, size_t size) {
  // The runtime opens standard output in its text mode, which ends lines with CR LF.
  constexpr int StandardOutput = 1;
  if (size > 0) _write(StandardOutput, text, static_cast<unsigned>(size));
}

void EndProcess(int status) {
  _exit(status);
}

#endif
