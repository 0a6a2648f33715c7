#include "app/usage.h"

#include <initializer_list>

#include "app/command_table.h"
#include "app/console/print.h"
#include "app/console/text.h"
#include "app/usage_texts.h"

namespace {

// The first text that fits the row, or null.
const UsageText* FindUsageText(const CommandEntry& command) {
  for (int i = 0; i < UsageTextCount; i++) {
    const UsageText& text = UsageTexts[i];
    if (text.Oid == command.Oid &&
        (text.Name == nullptr || EqualsIgnoreCase(text.Name, command.Name))) {
      return &text;
    }
  }
  return nullptr;
}

void PrintPieces(std::initializer_list<const char*> pieces) {
  for (const char* piece : pieces) ConsoleText(piece);
}

// Indents a line to the column of the description.
constexpr char Indent[] = "                    ";

void PrintUsageLine(const UsageLine& line, const ProgramName& program, const char* name) {
  switch (line.Layout) {
    case UsageLayout::Plain:
      PrintPieces({Indent, line.Text, "\n"});
      break;
    case UsageLayout::Command:
      PrintPieces({Indent, "    ", program.Column, "   ", name, line.Text, "\n"});
      break;
    case UsageLayout::TabbedCommand:
      PrintPieces({Indent, "\t ", program.Column, "\t", name, line.Text, "\n"});
      break;
    case UsageLayout::HalfTabbedCommand:
      PrintPieces({Indent, "\t", program.Column, "   ", name, line.Text, "\n"});
      break;
    case UsageLayout::NarrowCommand:
      PrintPieces({Indent, " ", program.Column, " ", name, line.Text, "\n"});
      break;
    case UsageLayout::Value:
      ConsolePrintf("%s    %20s\n", Indent, line.Text);
      break;
    case UsageLayout::TabbedValue:
      ConsolePrintf("%s\t %20s\n", Indent, line.Text);
      break;
    case UsageLayout::BeforeProgram:
      PrintPieces({Indent, line.Text, program.Name});
      break;
    case UsageLayout::AfterProgram:
      PrintPieces({line.Text, "\n"});
      break;
  }
}

}  // namespace

void PrintCommandUsage(const ProgramName& program, int row) {
  const CommandEntry& command = CommandTable[row];
  const UsageText* text = FindUsageText(command);
  while (text != nullptr) {
    ConsolePrintf("%-20s %s \n", command.Name, command.Description);
    for (int i = 0; i < text->LineCount; i++) {
      PrintUsageLine(text->Lines[i], program, command.Name);
    }
    if (text->Ending != UsageEnding::None) ConsoleText("\n");
    text = text->Ending == UsageEnding::NextText ? text + 1 : nullptr;
  }
}
