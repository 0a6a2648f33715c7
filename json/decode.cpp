#include "json/decode.h"

#include <cstdint>

namespace {

constexpr uint32_t Replacement = 0xFFFD;

bool IsHigh(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLow(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

void AppendUtf8(uint32_t character, std::string* text) {
  const auto put = [&](uint32_t lead, int shift) {
    const uint32_t bits = lead == 0x80 ? 0x3F : 0x7F;
    *text += static_cast<char>(lead | (character >> shift & bits));
  };
  if (character < 0x80) {
    put(0, 0);
  } else if (character < 0x800) {
    put(0xC0, 6);
  } else if (character < 0x10000) {
    put(0xE0, 12);
    put(0x80, 6);
  } else {
    put(0xF0, 18);
    put(0x80, 12);
    put(0x80, 6);
  }
  if (character >= 0x80) put(0x80, 0);
}

}  // namespace

std::string Utf8FromUtf16(std::u16string_view text) {
  std::string result;
  for (size_t i = 0; i < text.size(); i++) {
    uint32_t character = text[i];
    if (IsHigh(text[i]) && i + 1 < text.size() && IsLow(text[i + 1])) {
      character = 0x10000 + ((character & 0x3FF) << 10 | (text[++i] & 0x3FFU));
    } else if (IsHigh(text[i]) || IsLow(text[i])) {
      character = Replacement;
    }
    AppendUtf8(character, &result);
  }
  return result;
}

std::string DecodeSavedText(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return std::string(bytes.substr(3));
  if (bytes.size() < 2) return std::string(bytes);
  // The tool's output and its reports begin with ASCII.
  const bool lowFirst = bytes.starts_with("\xFF\xFE") || (bytes[0] != 0 && bytes[1] == 0);
  const bool highFirst = bytes.starts_with("\xFE\xFF") || (bytes[0] == 0 && bytes[1] != 0);
  if (!lowFirst && !highFirst) return std::string(bytes);
  std::u16string text;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<uint8_t>(bytes[i]);
    const auto second = static_cast<uint8_t>(bytes[i + 1]);
    text += static_cast<char16_t>(lowFirst ? first | second << 8 : second | first << 8);
  }
  constexpr char16_t Mark = 0xFEFF;
  if (text.starts_with(Mark)) text.erase(0, 1);
  return Utf8FromUtf16(text);
}
