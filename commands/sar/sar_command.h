// `sar`: the regulatory and power tables that the platform firmware hands to the driver.
#pragma once

#include "commands/command.h"
#include "commands/sar/sar_query.h"

CommandHandler HandleSarCommand;

// Finds out which generation of the record the driver takes. Prints nothing.
const SarLayout& DetectSarLayout();

// Checks the arguments and runs the view that they name.
int RunSarSubcommand(const SarLayout& layout, int argc, char** argv);
