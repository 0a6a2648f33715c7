// Fields of a wireless-table entry, each printed as one line: header, value, text, explanation.
// The fields are rows of data; only values that no row can express have code of their own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

// What to print behind a value that lies in from..to.
struct WtblValueText {
  uint32_t from = 0;
  uint32_t to = 0;
  const char* format = nullptr;  // may print value + offset with one conversion
  int offset = 0;
};
using WtblValueTexts = std::initializer_list<WtblValueText>;

// Formats a part of the line that depends on more than the field's value into `text` of `size`
// bytes.
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
  WtblValueTexts texts;               // no two of them overlap
  const char* explanation = nullptr;  // null: the line ends behind the value
  const char* number = nullptr;       // null: the value prints as 0x%x; empty where others print it
  WtblValueFormatter* formatter = nullptr;  // prints behind number and text
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

// Formats the text whose range holds `value`, or an empty one. `size` is not 0.
void FormatWtblValueText(char* text, size_t size, WtblValueTexts texts, uint32_t value);

// Prints the line of one field of the entry whose words are given.
void WtblFieldLine(const WtblField& field, const uint32_t* words);

// Prints the banner and the fields of every group.
void PrintWtblGroups(WtblWordGroups groups, const uint32_t* words);
