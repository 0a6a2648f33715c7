// The tool's only link to the adapter's driver: one device handle and one form of request. All that
// was printed is written out before each call into the driver, because the driver may hang or
// crash.
#pragma once

#include <cstdint>

#include "device/device.h"

// The open device; null while closed or after a failed open. Only the program entry writes it.
extern void* DeviceHandle;

// Opens \\.\A8000. On failure it prints the error code and what to do, and returns null. It also
// returns null when the device opens with a null handle.
void* OpenDevice();

// Closes DeviceHandle. Returns false when closing fails.
bool CloseDevice();

// Sends one OID with its payload and waits for the answer. The payload carries the question to the
// driver and the answer back in the same bytes.
// Returns false when the driver refuses; DeviceError() then holds the code.
// If `bytesReturned` is given, it receives the count that the platform reports, on refusal, too.
bool OidRequest(uint32_t oid, void* payload, uint32_t length, uint32_t* bytesReturned = nullptr);

// The same for a record of fixed size.
template <typename Record>
bool OidRequest(uint32_t oid, Record* record) {
  return OidRequest(oid, record, sizeof(Record));
}
