#include "json/decode.h"

#include <algorithm>
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
  static constexpr uint8_t Leads[] = {0, 0xC0, 0xE0, 0xF0};
  const int more = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
  *text += static_cast<char>(Leads[more] | character >> 6 * more);
  for (int i = more - 1; i >= 0; i--) {
    *text += static_cast<char>(0x80 | (character >> 6 * i & 0x3F));
  }
}

// The length of the UTF-8 character that the bytes begin with, 0 for none.
size_t CharacterLength(std::string_view bytes) {
  static constexpr uint32_t Least[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<uint8_t>(bytes[0]);
  if (first < 0x80) return 1;
  const size_t length = first >> 5 == 6 ? 2 : first >> 4 == 14 ? 3 : first >> 3 == 30 ? 4 : 0;
  if (length == 0 || length > bytes.size()) return 0;
  uint32_t character = first & 0x7FU >> length;
  for (const char byte : bytes.substr(1, length - 1)) {
    const auto next = static_cast<uint8_t>(byte);
    if (next >> 6 != 2) return 0;
    character = character << 6 | (next & 0x3FU);
  }
  const bool isHalf = character >= 0xD800 && character < 0xE000;
  return character >= Least[length] && character < 0x110000 && !isHalf ? length : 0;
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
  // The tool's output and its reports begin with ASCII, so a zero is the high byte.
  const size_t zero = bytes.substr(0, 2).find('\0');
  const bool lowFirst = bytes.starts_with("\xFF\xFE") || zero == 1;
  const bool highFirst = bytes.starts_with("\xFE\xFF") || zero == 0;
  if (!lowFirst && !highFirst) return std::string(bytes);
  std::u16string text;
  for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto first = static_cast<uint8_t>(bytes[i]);
    const auto second = static_cast<uint8_t>(bytes[i + 1]);
    text += static_cast<char16_t>(lowFirst ? first | second << 8 : second | first << 8);
  }
  if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
  return Utf8FromUtf16(text);
}

std::string Utf8(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const size_t length = CharacterLength(bytes);
    if (length == 0) AppendUtf8(static_cast<uint8_t>(bytes[0]), &text);
    text += bytes.substr(0, length);
    bytes.remove_prefix(std::max<size_t>(length, 1));
  }
  return text;
}
