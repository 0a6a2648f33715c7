#include "commands/internal/mac_argument.h"

#include <cstring>

namespace {

constexpr unsigned NoDigit = 255;
constexpr size_t MacTextLength = 17;

unsigned HexDigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
  if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a' + 10);
  return NoDigit;
}

// Turns 2 * count digits into count bytes; the caller has checked the digits.
void HexStringToBytes(const char* text, uint8_t* bytes, size_t count) {
  for (size_t i = 0; i < count; i++) {
    bytes[i] =
        static_cast<uint8_t>(HexDigitValue(text[2 * i]) * 16 + HexDigitValue(text[2 * i + 1]));
  }
}

}  // namespace

bool ParseMacAddress(const char* text, uint8_t (&address)[6]) {
  if (strlen(text) != MacTextLength) return true;
  // Six pairs of digits leave room for just the five colons between them.
  for (size_t i = 0; i < MacTextLength; i++) {
    bool isColonPlace = i % 3 == 2;
    if (isColonPlace ? text[i] != ':' : HexDigitValue(text[i]) == NoDigit) return false;
  }
  for (size_t i = 0; i < sizeof(address); i++) HexStringToBytes(text + 3 * i, &address[i], 1);
  return true;
}
