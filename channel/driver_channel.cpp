#include "channel/driver_channel.h"

#include "app/console/print.h"

void* DeviceHandle = nullptr;

void* OpenDevice() {
  ConsoleFlush();
  void* device = nullptr;
  if (!DeviceOpen(&device)) {
    ConsolePrintf("CreateFile I/O failed : %d\n", static_cast<int>(DeviceError()));
    ConsolePrintf("Driver is not ready. Please wait or reinstall driver, thanks!\n");
    return nullptr;
  }
  return device;
}

bool CloseDevice() {
  ConsoleFlush();
  return DeviceClose(DeviceHandle);
}

bool OidRequest(uint32_t oid, void* payload, uint32_t length, uint32_t* bytesReturned) {
  ConsoleFlush();
  uint32_t returned = 0;
  const bool accepted = DeviceRequest(DeviceHandle, oid, payload, length, &returned);
  if (bytesReturned != nullptr) *bytesReturned = returned;
  return accepted;
}
