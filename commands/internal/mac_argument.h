// MAC addresses on the command line.
#pragma once

#include <cstdint>

// Reads "00:11:22:aa:bb:CC" into six bytes. Returns false for any other text of that length; a
// text of another length is no address at all and leaves the bytes alone, with result true.
bool ParseMacAddress(const char* text, uint8_t (&address)[6]);

// Prints "NAME = 00:11:22:AA:BB:CC" with its line end.
void PrintMacAddress(const char* name, const uint8_t (&address)[6]);
