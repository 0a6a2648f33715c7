// The usage text of one row of the command table.
#pragma once

// Prints the text of row `row` (0 to CommandCount - 1), chosen by the row's Oid; a row whose Oid
// has no text prints nothing. `programName` is the program's display name.
void PrintCommandUsage(const char* programName, int row);
