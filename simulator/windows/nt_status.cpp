#include "simulator/windows/nt_status.h"

namespace {

struct StatusPair {
  uint32_t error;
  uint32_t status;
};

constexpr uint32_t StatusUnsuccessful = 0xC0000001;

// What a driver would return for these codes.
constexpr StatusPair Pairs[] = {
    {1, 0xC0000010},     // invalid device request
    {2, 0xC0000034},     // object name not found
    {3, 0xC000003A},     // object path not found
    {5, 0xC0000022},     // access denied
    {6, 0xC0000008},     // invalid handle
    {8, 0xC0000017},     // no memory
    {21, 0xC00000A3},    // device not ready
    {22, 0xC0000184},    // invalid device state
    {23, 0xC000003E},    // data error
    {24, 0xC0000004},    // info length mismatch
    {31, 0xC0000001},    // unsuccessful
    {32, 0xC0000043},    // sharing violation
    {50, 0xC00000BB},    // not supported
    {87, 0xC000000D},    // invalid parameter
    {121, 0xC00000B5},   // I/O timeout
    {122, 0xC0000023},   // buffer too small
    {170, 0x80000011},   // device busy
    {234, 0x80000005},   // buffer overflow
    {259, 0x8000001A},   // no more entries
    {487, 0xC0000018},   // conflicting addresses
    {637, 0xC00002D1},   // system image with a bad signature
    {995, 0xC0000120},   // cancelled
    {998, 0xC0000005},   // access violation
    {1117, 0xC0000185},  // I/O device error
    {1167, 0xC000009D},  // device not connected
    {1450, 0xC000009A},  // insufficient resources
    {4200, 0xC0000295},  // WMI GUID not found
};

}  // namespace

uint32_t StatusOfError(uint32_t error, bool reportsCount) {
  constexpr uint32_t ErrorSeverity = 0xC0000000;
  for (const StatusPair& pair : Pairs) {
    const bool losesCount = (pair.status & ErrorSeverity) == ErrorSeverity;
    if (pair.error == error && !(reportsCount && losesCount)) return pair.status;
  }
  // The facility whose codes are Win32's own, as a warning or as an error.
  const uint32_t facility = reportsCount ? 0x80070000 : 0xC0070000;
  if (error <= 0xFFFF) return facility | error;
  // Codes with the customer bit pass through unchanged. To the kernel a status with all bits set
  // means that there is none yet.
  constexpr uint32_t PassedThrough = 0xA0000000;
  if ((error & PassedThrough) == PassedThrough && error != UINT32_MAX) return error;
  constexpr uint32_t ErrorGenFailure = 31;
  return reportsCount ? facility | ErrorGenFailure : StatusUnsuccessful;
}
