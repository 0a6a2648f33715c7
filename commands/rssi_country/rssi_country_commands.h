// The commands that check a network's signal strength, and the country's power tables.
#pragma once

#include "commands/command.h"

CommandHandler HandleRfCommand;
CommandHandler HandleExportRssiReportCommand;
CommandHandler HandleCountryCommand;
