#ifdef _WIN32

#include <cstdio>
#include <cstdlib>

#include "platform/process.h"

void PrepareStandardOutput() {
  static char storage[1 << 16];
  setvbuf(stdout, storage, _IOFBF, sizeof(storage));
}

void EndProcess(int status) {
  _exit(status);
}

#endif
