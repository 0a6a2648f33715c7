// The usage listing of all commands.
#pragma once

#include "commands/command.h"

// Prints the usage of every row of the command table, headed by the program's display name,
// which is derived from its path.
void PrintUsageListing(const char* programPath);

// `help`: the listing. It needs an open device and ignores further arguments.
CommandHandler HandleHelpCommand;
