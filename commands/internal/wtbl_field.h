// The fields of a wireless-table entry. Each is printed as one line: header, value, text,
// explanation. The fields are rows of data. Only values that a row cannot express have a function.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

// The text to print after a value from `from` to `to`.
struct WtblValueText {
  uint32_t from = 0;
  uint32_t to = 0;
  const char* format = nullptr;  // may have one conversion, which prints value + offset
  int offset = 0;
};
using WtblValueTexts = std::initializer_list<WtblValueText>;

// Formats the part of a line that depends on more than the field's value. `text` has `size` bytes.
using WtblValueFormatter = void(char* text, size_t size, const uint32_t* words, uint32_t value);

// Bits high..low of one word.
struct WtblBitRange {
  uint8_t word;
  uint8_t high;
  uint8_t low;
};

struct WtblField {
  const char* header = nullptr;
  WtblBitRange bits = {};
  WtblValueTexts texts = {};          // no two of them overlap
  const char* explanation = nullptr;  // null: the line ends after the value
  const char* number = nullptr;  // null: the value is printed as 0x%x; empty if others print it
  WtblValueFormatter* formatter = nullptr;  // prints after number and text
};

// Words that are decoded together, under one banner.
struct WtblWordGroup {
  const char* words = nullptr;  // as the banner names them
  std::initializer_list<WtblField> fields;
};
using WtblWordGroups = std::initializer_list<WtblWordGroup>;

// Bits high..low of `word`, shifted down to bit 0.
constexpr uint32_t WtblBits(uint32_t word, unsigned high, unsigned low) {
  return (word >> low) & (0xFFFFFFFF >> (31 - (high - low)));
}

// Formats the text whose range contains `value`, or an empty text. `size` is not 0.
void FormatWtblValueText(char* text, size_t size, WtblValueTexts texts, uint32_t value);

// Prints the line of one field of the entry whose words are given.
void WtblFieldLine(const WtblField& field, const uint32_t* words);

// Prints the banner and the fields of every group.
void PrintWtblGroups(WtblWordGroups groups, const uint32_t* words);
