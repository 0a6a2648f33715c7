// The four calls of the Windows kernel library that reach the driver, under their own names.
// On Windows they are the kernel library's; elsewhere platform/simulated_device.cpp answers them
// from the simulated adapter.
#pragma once

#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#ifdef WLANX_ENGINEERING
// The engineering edition records them on their way.
#include "platform/recorded_device.h"
#define CreateFileA RecordedCreateFileA
#define DeviceIoControl RecordedDeviceIoControl
#define CloseHandle RecordedCloseHandle
#endif

#else

#include <cstdint>

using HANDLE = void*;
using BOOL = int;
using DWORD = uint32_t;

// NOLINTBEGIN(readability-identifier-naming): the names of the Windows headers.
constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
// NOLINTEND(readability-identifier-naming)

// The handle of a failed CreateFileA: all bits set.
inline HANDLE InvalidHandle() {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the value is defined as a number.
  return reinterpret_cast<HANDLE>(~uintptr_t{0});
}
#define INVALID_HANDLE_VALUE InvalidHandle()

// Opens the device. Returns INVALID_HANDLE_VALUE and sets the last-error code on failure.
HANDLE CreateFileA(const char* path, DWORD access, DWORD sharing, void* security, DWORD disposition,
                   DWORD attributes, HANDLE templateFile);

// Sends one request: `input` holds the OID, `output` the payload in both directions.
// Returns 0 and sets the last-error code on failure.
BOOL DeviceIoControl(HANDLE device, DWORD controlCode, void* input, DWORD inputLength, void* output,
                     DWORD outputLength, DWORD* bytesReturned, void* overlapped);

// Returns 0 and sets the last-error code on failure.
BOOL CloseHandle(HANDLE device);

// The code of the last call that failed; a call that succeeds leaves it alone.
DWORD GetLastError();

#endif
