#ifdef _WIN32

#include <windows.h>

#include <cstdio>

#include "platform/host_file.h"

namespace {

constexpr DWORD LongestVariable = 32768;  // the system's limit, with the zero

HANDLE HandleOf(HostFile file) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number to its users.
  return reinterpret_cast<HANDLE>(file);
}

}  // namespace

const char* HostVariable(const char* name) {
  static wchar_t wideValue[LongestVariable];
  static char value[3 * LongestVariable];
  wchar_t wideName[32];
  if (MultiByteToWideChar(CP_UTF8, 0, name, -1, wideName, 32) == 0) return nullptr;
  const DWORD length = GetEnvironmentVariableW(wideName, wideValue, LongestVariable);
  if (length == 0 || length >= LongestVariable) return nullptr;
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wideValue, -1, value, sizeof(value), nullptr, nullptr);
  return size > 0 ? value : nullptr;
}

HostFile CreateHostFile(const char* name) {
  static wchar_t wideName[LongestVariable];
  if (MultiByteToWideChar(CP_UTF8, 0, name, -1, wideName, LongestVariable) == 0) return NoHostFile;
  HANDLE file = CreateFileW(wideName, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  return reinterpret_cast<HostFile>(file);
}

bool WriteHostFile(HostFile file, const char* bytes, uint32_t size) {
  DWORD written = 0;
  return size == 0 ||
         (WriteFile(HandleOf(file), bytes, size, &written, nullptr) && written == size);
}

bool SeekHostFile(HostFile file, uint32_t position) {
  LARGE_INTEGER distance = {};
  distance.QuadPart = position;
  return SetFilePointerEx(HandleOf(file), distance, nullptr, FILE_BEGIN) != 0;
}

void CutHostFile(HostFile file, uint32_t size) {
  if (SeekHostFile(file, size)) SetEndOfFile(HandleOf(file));
}

void SaveHostFile(HostFile file) {
  FlushFileBuffers(HandleOf(file));
}

void EndHostFile(HostFile file, uint32_t size) {
  CutHostFile(file, size);
  CloseHandle(HandleOf(file));
}

void LastFileError(char (&reason)[FileErrorSize]) {
  snprintf(reason, sizeof(reason), "error %lu", GetLastError());
}

#endif
