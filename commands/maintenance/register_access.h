// Access to single chip registers through the driver.
#pragma once

#include <cstddef>
#include <cstdint>

// OidReadRegister and OidWriteRegister.
struct RegAccessParam {
  uint32_t address;  // in the chip's register space
  uint32_t value;    // read: filled by the driver; write: the value to write
};
static_assert(sizeof(RegAccessParam) == 8);
static_assert(offsetof(RegAccessParam, value) == 4);

// Reads the register at param->address into param->value. The driver gets the whole record,
// `value` included. After a refusal `value` is unchanged unless the driver wrote it.
bool ReadRegister(RegAccessParam* param);

// Writes param->value to the register at param->address.
bool WriteRegister(RegAccessParam* param);
