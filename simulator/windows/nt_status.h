// Kernel status codes that reach a program as a wanted last-error code.
#pragma once

#include <cstdint>

// Codes of more than 16 bits pass where bits 31 and 29 are set; the others arrive as 31.
uint32_t StatusOfError(uint32_t error);
