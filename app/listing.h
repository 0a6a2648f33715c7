// The usage listing of all commands.
#pragma once

// Prints the usage of every row of the command table, headed by the program's display name,
// which is derived from its path.
void PrintUsageListing(const char* programPath);

// `help`: the listing, once the driver could be opened. Takes no notice of further arguments.
int HandleHelpCommand(int argc, char** argv);
