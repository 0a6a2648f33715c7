// Commands that read statistics, counters, addresses and firmware versions.
// `stat`, `get_wfd` and `get_fw_ver` return 1 on success and 0 on a failed request; the others
// return 0 on success and 1 on failure.
#pragma once

#include "commands/command.h"

CommandHandler HandleStatCommand;
CommandHandler HandleGetWfdCommand;
CommandHandler HandleGetUmacCommand;
CommandHandler HandleTxHangCounterCommand;
CommandHandler HandleGetLpCommand;
CommandHandler HandleGetMacAddCommand;
CommandHandler HandleGetFwVerCommand;
