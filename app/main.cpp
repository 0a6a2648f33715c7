// Program entry: banner, listing or dispatch, exit status.

#include "app/command_table.h"
#include "app/console/print.h"
#include "app/console/text.h"
#include "app/listing.h"
#include "channel/driver_channel.h"
#include "platform/process.h"
#include "version.h"

namespace {

void PrintBanner() {
  ConsolePrintf("\n");
  ConsolePrintf("WLANX tool, Version %s\n", Version);
  ConsolePrintf("Copyright (c) 2026 The WLANX Authors. Licensed under the MIT License.\n");
  ConsolePrintf("\n");
}

// Runs the handler of every row whose name is the command word. That is at most one, since the
// names in the table differ. An unknown word runs nothing, prints nothing and gives 1.
int RunCommand(int argc, char** argv) {
  int result = 1;
  for (int row = 0; row < CommandCount; row++) {
    if (EqualsIgnoreCase(CommandTable[row].Name, argv[1])) {
      result = CommandTable[row].Handler(argc, argv);
    }
  }
  return result;
}

int RunTool(int argc, char** argv) {
  PrintBanner();
  if (argc == 1) {
    PrintUsageListing(argv[0]);
    return 1;
  }
  DeviceHandle = OpenDevice();
  if (DeviceHandle == nullptr) {
    ConsolePrintf("OpenDevice Failed\n");
    return 1;
  }
  int result = argc > 1 ? RunCommand(argc, argv) : 1;
  const bool closed = CloseDevice();
  DeviceHandle = nullptr;
  if (!closed) {
    ConsolePrintf("CloseDevice Failed\n");
    return 1;
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  PrepareStandardOutput();
  int result = RunTool(argc, argv);
  ConsoleFlush();
  return result;
}
