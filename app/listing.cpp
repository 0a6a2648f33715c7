#include "app/listing.h"

#include "app/command_table.h"
#include "app/console/print.h"
#include "app/console/text.h"
#include "app/usage.h"

void PrintUsageListing(const char* programPath) {
  char name[ProgramNameSize];
  ProgramBaseName(programPath, name);
  ConsolePrintf("%s [parameters...]\n", name);
  ConsolePrintf("\n");
  ConsolePrintf("Available parameters\n");
  for (int row = 0; row < CommandCount; row++) PrintCommandUsage(name, row);
}

int HandleHelpCommand(int /*argc*/, char** argv) {
  PrintUsageListing(argv[0]);
  return 0;
}
