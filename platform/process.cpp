#include "platform/process.h"

#include <cstdio>

#ifndef _WIN32
#include <fcntl.h>

#include <csignal>
#endif

void PrepareStandardOutput() {
#ifndef _WIN32
  // The next file opened would get the number of a closed standard descriptor, and what is printed
  // would go into that file.
  for (int descriptor = 0; descriptor <= 2; descriptor++) {
    if (fcntl(descriptor, F_GETFD) == -1) open("/dev/null", O_RDWR);
  }
  (void)signal(SIGPIPE, SIG_IGN);
#endif
  static char collected[1 << 16];
  (void)setvbuf(stdout, collected, _IOFBF, sizeof(collected));
}
