#include "commands/internal/wtbl_field.h"

#include <cstring>

#include "app/console/print.h"

namespace {

constexpr size_t LineSize = 256;
constexpr size_t HeaderWidth = 45;      // the header ends in this column, the value follows
constexpr size_t HeaderMaxLength = 44;  // longer ones are cut

// Where the text in `line` ends, from `position` on.
size_t EndOfText(const char* line, size_t position) {
  return position + strlen(line + position);
}

}  // namespace

void FormatWtblValueText(char* text, size_t size, WtblValueTexts texts, uint32_t value) {
  text[0] = 0;
  for (const WtblValueText& row : texts) {
    if (value < row.from || value > row.to) continue;
    BoundedPrintf(text, size, row.format, static_cast<int>(value) + row.offset);
    return;
  }
}

void WtblFieldLine(const WtblField& field, const uint32_t* words) {
  char line[LineSize];
  memset(line, ' ', HeaderWidth);
  size_t headerLength = strlen(field.header);
  if (headerLength > HeaderMaxLength) headerLength = HeaderMaxLength;
  memcpy(line + HeaderWidth - headerLength, field.header, headerLength);

  const uint32_t value = WtblBits(words[field.bits.word], field.bits.high, field.bits.low);
  size_t end = HeaderWidth;
  BoundedPrintf(line + end, LineSize - end, field.number, value);
  end = EndOfText(line, end);
  FormatWtblValueText(line + end, LineSize - end, field.texts, value);
  end = EndOfText(line, end);
  if (field.formatter != nullptr) field.formatter(line + end, LineSize - end, words, value);

  if (field.explanation != nullptr) {
    ConsolePrintf("%s    -- %s\n", line, field.explanation);
  } else {
    ConsolePrintf("%s\n", line);
  }
}

void PrintWtblGroups(WtblWordGroups groups, const uint32_t* words) {
  for (const WtblWordGroup& group : groups) {
    ConsolePrintf("============= DW %s parsing =============\n", group.words);
    for (const WtblField& field : group.fields) WtblFieldLine(field, words);
  }
}
