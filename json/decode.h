// The encodings in which a shell saves what a program printed.
#pragma once

#include <string>
#include <string_view>

// Characters of 16 bits, in the order of the bytes that their mark or their first character tells,
// become UTF-8, with U+FFFD for half a pair; a mark is left out. Other text stays as it is.
std::string DecodeSavedText(std::string_view bytes);

// UTF-16 as UTF-8.
std::string Utf8FromUtf16(std::u16string_view text);
