#include "device/device.h"
#include "device/kernel_calls.h"

bool DeviceOpen(void** device) {
  return KernelOpen(device);
}

bool DeviceRequest(void* device, uint32_t oid, void* payload, uint32_t length, uint32_t* returned) {
  return KernelRequest(device, oid, payload, length, returned);
}

bool DeviceClose(void* device) {
  return KernelClose(device);
}

uint32_t DeviceError() {
  return GetLastError();
}
