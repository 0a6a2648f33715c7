// Digits, for the tool and the scenario parser alike.
#pragma once

// The value of a hexadecimal digit; 16 for any other character.
constexpr unsigned DigitValue(char character) {
  if (character >= '0' && character <= '9') return static_cast<unsigned>(character - '0');
  if (character >= 'a' && character <= 'f') return static_cast<unsigned>(character - 'a' + 10);
  if (character >= 'A' && character <= 'F') return static_cast<unsigned>(character - 'A' + 10);
  return 16;
}
