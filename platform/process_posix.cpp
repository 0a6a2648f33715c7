#ifndef _WIN32

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "platform/process.h"

void PrepareStandardOutput() {
  // A standard descriptor that came closed would be handed to the next file opened, and what is
  // printed would end up in it.
  for (int descriptor = 0; descriptor <= 2; descriptor++) {
    if (fcntl(descriptor, F_GETFD) == -1) open("/dev/null", O_RDWR);
  }
  (void)signal(SIGPIPE, SIG_IGN);
}

void WriteStandardOutput(const char* text, size_t size) {
  while (size > 0) {
    const ssize_t written = write(STDOUT_FILENO, text, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text += written;
    size -= static_cast<size_t>(written);
  }
}

void EndProcess(int status) {
  _exit(status);
}

#endif
