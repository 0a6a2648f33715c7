#ifndef _WIN32

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "platform/process.h"

void PrepareStandardOutput() {
  // A standard descriptor that came closed would be handed to the next file opened, and what is
  // printed would end up in it.
  for (int descriptor = 0; descriptor <= 2; descriptor++) {
    if (fcntl(descriptor, F_GETFD) == -1) open("/dev/null", O_RDWR);
  }
  (void)signal(SIGPIPE, SIG_IGN);
  static char storage[1 << 16];
  (void)setvbuf(stdout, storage, _IOFBF, sizeof(storage));
}

void EndProcess(int status) {
  _exit(status);
}

#endif
