#include "commands/internal/mac_argument.h"

#include <cstddef>
#include <cstring>

#include "app/console/print.h"
#include "app/console/scan.h"

namespace {

constexpr size_t MacTextLength = 17;

bool IsHexDigit(char character) {
  return DigitValue(character) < 16;
}

}  // namespace

bool ParseMacAddress(const char* text, uint8_t (&address)[6]) {
  if (strlen(text) != MacTextLength) return true;
  // Six pairs of digits leave room for just the five colons between them.
  for (size_t i = 0; i < MacTextLength; i++) {
    bool isColonPlace = i % 3 == 2;
    if (isColonPlace ? text[i] != ':' : !IsHexDigit(text[i])) return false;
  }
  for (size_t i = 0; i < sizeof(address); i++) {
    const char* pair = text + 3 * i;
    address[i] = static_cast<uint8_t>(DigitValue(pair[0]) * 16 + DigitValue(pair[1]));
  }
  return true;
}

void PrintMacAddress(const char* name, const uint8_t (&address)[6]) {
  ConsolePrintf("%s = %02X:%02X:%02X:%02X:%02X:%02X\n", name, address[0], address[1], address[2],
                address[3], address[4], address[5]);
}
