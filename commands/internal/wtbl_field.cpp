#include "commands/internal/wtbl_field.h"

#include <cstring>

#include "app/console/print.h"

namespace {

// The row whose range holds `value`, or null.
const WtblValueText* FindValueText(WtblValueTexts texts, uint32_t value) {
  for (const WtblValueText& row : texts) {
    if (value >= row.from && value <= row.to) return &row;
  }
  return nullptr;
}

}  // namespace

void FormatWtblValueText(char* text, size_t size, WtblValueTexts texts, uint32_t value) {
  const WtblValueText* row = FindValueText(texts, value);
  text[0] = 0;
  if (row != nullptr) BoundedPrintf(text, size, row->format, static_cast<int>(value) + row->offset);
}

void WtblFieldLine(const WtblField& field, const uint32_t* words) {
  const uint32_t value = WtblBits(words[field.bits.word], field.bits.high, field.bits.low);
  if (field.number == nullptr) {
    ConsolePrintf("%45s0x%x", field.header, value);
  } else {
    ConsolePrintf("%45s", field.header);
    ConsolePrintf(field.number, value);
  }
  const WtblValueText* row = FindValueText(field.texts, value);
  if (row != nullptr && strchr(row->format, '%') == nullptr) {
    ConsolePrintf("%s", row->format);
  } else if (row != nullptr) {
    ConsolePrintf(row->format, static_cast<int>(value) + row->offset);
  }
  if (field.formatter != nullptr) {
    char text[128];
    field.formatter(text, sizeof(text), words, value);
    ConsolePrintf("%s", text);
  }
  if (field.explanation != nullptr) {
    ConsolePrintf("    -- %s\n", field.explanation);
  } else {
    ConsolePrintf("\n");
  }
}

void PrintWtblGroups(WtblWordGroups groups, const uint32_t* words) {
  for (const WtblWordGroup& group : groups) {
    ConsolePrintf("============= DW %s parsing =============\n", group.words);
    for (const WtblField& field : group.fields) WtblFieldLine(field, words);
  }
}
