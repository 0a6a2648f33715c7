#include "channel/driver_channel.h"

#include "app/console/print.h"

namespace {

constexpr char DevicePath[] = R"(\\.\A8000)";
constexpr uint32_t IoctlNdisQueryGlobalStats = 0x00170002;  // IOCTL_NDIS_QUERY_GLOBAL_STATS

}  // namespace

HANDLE DeviceHandle = nullptr;

HANDLE OpenDevice() {
  ConsoleFlush();
  // CREATE_ALWAYS opens a device like any other disposition does; the driver expects it.
  HANDLE device = CreateFileA(DevicePath, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
  if (device == INVALID_HANDLE_VALUE) {
    ConsolePrintf("CreateFile I/O failed : %d\n", static_cast<int>(GetLastError()));
    ConsolePrintf("Driver is not ready. Please wait or reinstall driver, thanks!\n");
    return nullptr;
  }
  return device;
}

bool CloseDevice() {
  ConsoleFlush();
  return CloseHandle(DeviceHandle) != 0;
}

bool OidRequest(uint32_t oid, void* payload, uint32_t length, uint32_t* bytesReturned) {
  ConsoleFlush();
  DWORD returned = 0;
  bool accepted = DeviceIoControl(DeviceHandle, IoctlNdisQueryGlobalStats, &oid, sizeof(oid),
                                  payload, length, &returned, nullptr) != 0;
  if (bytesReturned != nullptr) *bytesReturned = returned;
  return accepted;
}
