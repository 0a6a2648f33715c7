// The usage texts: what the listing says about a command after its name and description.
#pragma once

#include <cstdint>

// How a line is laid out after its indentation. Column: right-aligned in 20 columns, never cut.
enum class UsageLayout : uint8_t {
  Plain,              // the text
  Command,            // 4 blanks, program column, 3 blanks, command word, text
  TabbedCommand,      // tab, blank, program column, tab, command word, text
  HalfTabbedCommand,  // tab, program column, 3 blanks, command word, text
  NarrowCommand,      // blank, program column, blank, command word, text
  Value,              // 4 blanks, text column
  TabbedValue,        // tab, blank, text column
  BeforeProgram,      // the text and the program's name; the next line is AfterProgram
  AfterProgram,       // the text, on the same line
};

struct UsageLine {
  UsageLayout Layout;
  const char* Text;
};

enum class UsageEnding : uint8_t {
  EmptyLine,
  None,
  NextText,  // an empty line, then the whole text of the next row of UsageTexts
};

struct UsageText {
  uint32_t Oid;  // of the rows that show this text
  UsageEnding Ending;
  int LineCount;
  const UsageLine* Lines;  // those after the line of name and description
  const char* Name;        // only for rows of this name; null: any
};

// The first row that fits a command is its text.
extern const UsageText UsageTexts[];
extern const int UsageTextCount;
