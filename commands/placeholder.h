// Stands in the table for a command that is not there yet.
#pragma once

// Prints nothing and returns 1.
int HandleMissingCommand(int argc, char** argv);
