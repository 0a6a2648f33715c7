// The handlers of the driver settings, the PCIe link and low power.
#pragma once

#include "commands/command.h"

CommandHandler HandleSetRegCommand;
CommandHandler HandleGetRegCommand;
CommandHandler HandlePcieCommand;
CommandHandler HandleSetPcieDrivingCommand;
CommandHandler HandleNonMsCommand;
