// The calls that reach the device. A program is linked with one of these sources, which decides who
// answers:
//
//   driver_device.cpp     the driver, through the Windows kernel library (wlanx)
//   recorded_device.cpp   the same, each call recorded on its way (wlanx-eng)
//   simulated_device.cpp  the simulated adapter in the tool's own process (both, on other hosts)
#pragma once

#include <cstdint>

// Opens the device for reading and writing, shared with nobody. Returns false on failure. A device
// that opens may have a null handle.
bool DeviceOpen(void** device);

// Sends one OID. The payload carries the question to the driver and the answer back in the same
// bytes. `returned` receives the count that the host reports, on refusal too. Returns false when
// the driver refuses.
bool DeviceRequest(void* device, uint32_t oid, void* payload, uint32_t length, uint32_t* returned);

// Returns false when closing fails.
bool DeviceClose(void* device);

// The host's code for the call that failed last. A call that succeeds does not change it.
uint32_t DeviceError();
