#ifndef _WIN32

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/host_file.h"

const char* HostVariable(const char* name) {
  const char* value = getenv(name);
  return value != nullptr && *value != 0 ? value : nullptr;
}

// The number of a closed standard stream stays free, so that the tool's own output never goes into
// the file.
HostFile CreateHostFile(const char* name) {
  const int file = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0 || file > STDERR_FILENO) return file;
  const int moved = fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  close(file);
  return moved;
}

bool WriteHostFile(HostFile file, const char* bytes, uint32_t size) {
  while (size > 0) {
    const ssize_t written = write(static_cast<int>(file), bytes, size);
    if (written <= 0) return false;
    bytes += written;
    size -= static_cast<uint32_t>(written);
  }
  return true;
}

bool SeekHostFile(HostFile file, uint32_t position) {
  return lseek(static_cast<int>(file), off_t{position}, SEEK_SET) >= 0;
}

void CutHostFile(HostFile file, uint32_t size) {
  const int cut = ftruncate(static_cast<int>(file), off_t{size});
  (void)cut;
  SeekHostFile(file, size);
}

// The simulated adapter runs in the tool's own process and cannot crash the computer.
void SaveHostFile(HostFile /*file*/) {}

void EndHostFile(HostFile file, uint32_t size) {
  CutHostFile(file, size);
  close(static_cast<int>(file));
}

void LastFileError(char (&reason)[FileErrorSize]) {
  (void)snprintf(reason, sizeof(reason), "%s", strerror(errno));
}

#endif
