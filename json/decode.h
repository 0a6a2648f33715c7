// The encodings in which a shell saves what a program printed.
#pragma once

#include <string>
#include <string_view>

// UTF-16 becomes UTF-8. Its mark tells the order of the bytes; without a mark the first character
// does. A mark is left out. Other text stays as it is.
std::string DecodeSavedText(std::string_view bytes);

// UTF-16 as UTF-8. Half a pair becomes U+FFFD.
std::string Utf8FromUtf16(std::u16string_view text);

// Bytes as UTF-8: a byte that is not part of a character becomes the character of its value (0xE9
// becomes U+00E9).
std::string Utf8(std::string_view bytes);
