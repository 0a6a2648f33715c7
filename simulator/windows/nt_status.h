// Kernel status codes that reach a program as a wanted last-error code.
#pragma once

#include <cstdint>

// Codes of more than 16 bits pass where bits 31 and 29 are set, but for 0xFFFFFFFF; the others
// arrive as 31. A failing request reports its count back only under a warning; `reportsCount` asks
// for one. A code that has bit 30 set passes as an error, without its count.
uint32_t StatusOfError(uint32_t error, bool reportsCount);
