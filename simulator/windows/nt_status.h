// Kernel status codes that reach a program as a wanted last-error code.
#pragma once

#include <cstdint>

// A code of more than 16 bits passes if its bits 31 and 29 are set and it is not 0xFFFFFFFF. All
// other such codes arrive as 31. A failing request reports its count only with a warning, which
// `reportsCount` asks for. A code with bit 30 set passes as an error, without its count.
uint32_t StatusOfError(uint32_t error, bool reportsCount);
