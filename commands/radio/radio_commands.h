// The commands that put the radio into a test configuration.
#pragma once

#include <cstdint>

#include "commands/command.h"

CommandHandler HandleFixedRateCommand;
CommandHandler HandleIcsCommand;
CommandHandler HandleTRxCommand;
CommandHandler HandleSnifferCommand;

// Whether `fixedrate` sets the rate of one station (1) or of all (0). It is 0 again in each run.
extern uint8_t fgIsUseWCID;
