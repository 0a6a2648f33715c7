// The device of wlanx-failing. A8000_OPEN and A8000_CLOSE in the environment tell how opening and
// closing it end: "ok", "null" or an error code. A driver cannot bring about all of these.
#include <windows.h>

#include <cstdlib>
#include <cstring>

namespace {

// Returns whether the call is to be made. If not, its error code is set, which is 0 for "null".
bool IsMade(const char* variable) {
  const char* outcome = getenv(variable);
  SetLastError(strtoul(outcome, nullptr, 10));
  return strcmp(outcome, "ok") == 0;
}

HANDLE OpenOrFail(const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                  DWORD disposition, DWORD flags, HANDLE model) {
  if (IsMade("A8000_OPEN")) {
    return CreateFileA(path, access, share, security, disposition, flags, model);
  }
  return GetLastError() == 0 ? nullptr : INVALID_HANDLE_VALUE;
}

BOOL CloseOrFail(HANDLE device) {
  return IsMade("A8000_CLOSE") && CloseHandle(device);
}

}  // namespace

#define CreateFileA OpenOrFail
#define CloseHandle CloseOrFail
#include "device/driver_device.cpp"
