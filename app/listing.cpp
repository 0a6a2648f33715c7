#include "app/listing.h"

#include "app/command_table.h"
#include "app/console/print.h"
#include "app/console/text.h"
#include "app/usage.h"

void PrintUsageListing(const char* programPath) {
  ProgramName program = {};
  ProgramBaseName(programPath, program.Name);
  BoundedPrintf(program.Column, sizeof(program.Column), "%20s", program.Name);
  ConsolePrintf("%s [parameters...]\n", program.Name);
  ConsolePrintf("\n");
  ConsolePrintf("Available parameters\n");
  for (int row = 0; row < CommandCount; row++) PrintCommandUsage(program, row);
}

int HandleHelpCommand(int /*argc*/, char** argv) {
  PrintUsageListing(argv[0]);
  return 0;
}
