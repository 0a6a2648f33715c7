// `sar`: the regulatory and power tables that the platform firmware hands to the driver.
#pragma once

#include "commands/command.h"
#include "commands/sar/sar_query.h"

CommandHandler HandleSarCommand;

// Finds the generation of the driver's record, by what length it refuses. Prints nothing.
const SarLayout& DetectSarLayout();

// Checks the arguments and runs the view they name.
int RunSarSubcommand(const SarLayout& layout, int argc, char** argv);
