// The usage text of one row of the command table.
#pragma once

#include "app/console/text.h"

// The program's display name, as it is and right-aligned in the 20 columns that a usage line has
// for it.
struct ProgramName {
  char Name[ProgramNameSize];
  char Column[ProgramNameSize];
};

// Prints the text of row `row` (0 to CommandCount - 1), which the row's Oid selects. If the Oid has
// no text, nothing is printed.
void PrintCommandUsage(const ProgramName& program, int row);
