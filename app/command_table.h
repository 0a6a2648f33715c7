// The table of all commands, in the order in which they are listed and matched.
#pragma once

#include <cstdint>

#include "commands/command.h"

// Keys of commands whose handlers send other codes.
constexpr uint32_t KeyOfSetPcieDriving = 0xFFFCF115;
constexpr uint32_t KeyOfExportRssiReport = 0x0FFFC20E;

struct CommandEntry {
  uint32_t Oid;   // key of the usage text; what a handler sends is in the handler
  char Name[36];  // the command word
  CommandHandler* Handler;
  char Description[256];  // one line, printed beside the name
};

extern const CommandEntry CommandTable[];
extern const int CommandCount;
