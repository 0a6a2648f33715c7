// The tool's only link to the adapter's driver: one device handle, one request convention. All that
// was printed is written out before each call into the driver, which may hang or crash.
#pragma once

#include <cstdint>

#include "device/device.h"

// The open device; null while closed or after a failed open. Only the program entry writes it.
extern void* DeviceHandle;

// Opens \\.\A8000. On failure prints the error code and what to do, and returns null. A device
// that opens may yield a null handle too.
void* OpenDevice();

// Closes DeviceHandle. Returns false when closing fails.
bool CloseDevice();

// Sends one OID with its payload and waits for the answer. The payload carries the question to the
// driver and the answer back in the same bytes.
// Returns false when the driver refuses; DeviceError() then holds the code.
// `bytesReturned`, where given, receives the count that the platform reports, on refusal too.
bool OidRequest(uint32_t oid, void* payload, uint32_t length, uint32_t* bytesReturned = nullptr);

// The same for a record of fixed size.
template <typename Record>
bool OidRequest(uint32_t oid, Record* record) {
  return OidRequest(oid, record, sizeof(Record));
}
