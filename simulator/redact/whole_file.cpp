#include "simulator/redact/whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "simulator/host_program.h"

#ifdef _WIN32

#include <windows.h>

namespace {

constexpr int NewFile = O_WRONLY | O_CREAT | O_EXCL | O_BINARY;
constexpr int Signals[] = {SIGINT, SIGTERM};

bool Rename(const char* from, const char* to) {
  if (MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING)) return true;
  errno = EACCES;
  return false;
}

// What tells a file from any other.
bool Identify(const char* name, BY_HANDLE_FILE_INFORMATION* identity) {
  HANDLE file = CreateFileA(name, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  const bool identified = GetFileInformationByHandle(file, identity) != 0;
  CloseHandle(file);
  return identified;
}

}  // namespace

bool IsSameFile(const char* name, const char* other) {
  BY_HANDLE_FILE_INFORMATION one = {};
  BY_HANDLE_FILE_INFORMATION two = {};
  return Identify(name, &one) && Identify(other, &two) &&
         one.dwVolumeSerialNumber == two.dwVolumeSerialNumber &&
         one.nFileIndexHigh == two.nFileIndexHigh && one.nFileIndexLow == two.nFileIndexLow;
}

#else

namespace {

constexpr int NewFile = O_WRONLY | O_CREAT | O_EXCL;
constexpr int Signals[] = {SIGINT, SIGTERM, SIGHUP, SIGXFSZ};

bool Rename(const char* from, const char* to) {
  return rename(from, to) == 0;
}

}  // namespace

bool IsSameFile(const char* name, const char* other) {
  struct stat one = {};
  struct stat two = {};
  return stat(name, &one) == 0 && stat(other, &two) == 0 && one.st_dev == two.st_dev &&
         one.st_ino == two.st_ino;
}

#endif

namespace {

constexpr size_t MostPathBytes = 4096;
constexpr size_t SignalCount = sizeof(Signals) / sizeof(Signals[0]);

bool Fill(int file, const char* bytes, size_t size) {
  FILE* stream = fdopen(file, "wb");
  if (stream == nullptr) return false;
  const bool written = fwrite(bytes, 1, size, stream) == size;
  return fclose(stream) == 0 && written;
}

bool WriteAndRename(const char* name, const char* bytes, size_t size) {
  struct stat present = {};
  // A pipe, a device or a folder stays what it is.
  if (stat(name, &present) == 0 && !S_ISREG(present.st_mode)) {
    errno = S_ISDIR(present.st_mode) ? EISDIR : EINVAL;
    return false;
  }
  char part[MostPathBytes];
  const int length = snprintf(part, sizeof(part), "%s.%d.part", name, static_cast<int>(getpid()));
  if (length < 0 || length >= static_cast<int>(sizeof(part))) {
    errno = ENAMETOOLONG;
    return false;
  }
  const int file = open(part, NewFile, 0666);
  if (file < 0) return false;
  if (Fill(file, bytes, size) && Rename(part, name)) return true;
  const int error = errno;
  (void)remove(part);
  errno = error;
  return false;
}

}  // namespace

bool WriteWholeFile(const char* name, const char* bytes, size_t size) {
  void (*handlers[SignalCount])(int) = {};
  for (size_t i = 0; i < SignalCount; i++) handlers[i] = signal(Signals[i], SIG_IGN);
  const bool written = WriteAndRename(name, bytes, size);
  if (!written) ReportFileFailure(name);
  for (size_t i = 0; i < SignalCount; i++) {
    if (handlers[i] != SIG_ERR) (void)signal(Signals[i], handlers[i]);
  }
  return written;
}
