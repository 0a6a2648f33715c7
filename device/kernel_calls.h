// The calls of the Windows kernel library that reach the driver.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <winioctl.h>
// Needs the header before it.
#include <ntddndis.h>

#include <cstdint>

inline bool KernelOpen(void** device) {
  // With CREATE_ALWAYS a device opens as with any other disposition. The driver expects it.
  *device = CreateFileA(R"(\\.\A8000)", GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                        FILE_ATTRIBUTE_NORMAL, nullptr);
  return *device != INVALID_HANDLE_VALUE;
}

inline bool KernelRequest(void* device, uint32_t oid, void* payload, uint32_t length,
                          uint32_t* returned) {
  DWORD count = 0;
  const bool accepted = DeviceIoControl(device, IOCTL_NDIS_QUERY_GLOBAL_STATS, &oid, sizeof(oid),
                                        payload, length, &count, nullptr) != 0;
  *returned = count;
  return accepted;
}

inline bool KernelClose(void* device) {
  return CloseHandle(device) != 0;
}
