#include "app/usage.h"

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

// So that a line stands under the description.
constexpr char Indent[] = "                    ";

void PrintUsageLine(const UsageLine& line, const char* programName, const char* name) {
  switch (line.Layout) {
    case UsageLayout::Plain:
      ConsolePrintf("%s%s\n", Indent, line.Text);
      break;
    case UsageLayout::Command:
      ConsolePrintf("%s    %20s   %s%s\n", Indent, programName, name, line.Text);
      break;
    case UsageLayout::TabbedCommand:
      ConsolePrintf("%s\t %20s\t%s%s\n", Indent, programName, name, line.Text);
      break;
    case UsageLayout::HalfTabbedCommand:
      ConsolePrintf("%s\t%20s   %s%s\n", Indent, programName, name, line.Text);
      break;
    case UsageLayout::NarrowCommand:
      ConsolePrintf("%s %20s %s%s\n", Indent, programName, name, line.Text);
      break;
    case UsageLayout::Value:
      ConsolePrintf("%s    %20s\n", Indent, line.Text);
      break;
    case UsageLayout::TabbedValue:
      ConsolePrintf("%s\t %20s\n", Indent, line.Text);
      break;
    case UsageLayout::BeforeProgram:
      ConsolePrintf("%s%s%s", Indent, line.Text, programName);
      break;
    case UsageLayout::AfterProgram:
      ConsolePrintf("%s\n", line.Text);
      break;
  }
}

}  // namespace

void PrintCommandUsage(const char* programName, int row) {
  const CommandEntry& command = CommandTable[row];
  const UsageText* text = FindUsageText(command);
  while (text != nullptr) {
    ConsolePrintf("%-20s %s \n", command.Name, command.Description);
    for (int i = 0; i < text->LineCount; i++) {
      PrintUsageLine(text->Lines[i], programName, command.Name);
    }
    if (text->Ending != UsageEnding::None) ConsolePrintf("\n");
    text = text->Ending == UsageEnding::NextText ? text + 1 : nullptr;
  }
}
