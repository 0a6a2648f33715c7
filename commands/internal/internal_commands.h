// The handlers of the engineering edition's commands that are no plain rows (internal_row.h).
// They return 1 for a request that the driver took and 0 for one that it refused.
#pragma once

#include "commands/command.h"
#include "commands/internal/internal_row.h"

CommandHandler HandleSetCoexTpCommand;
CommandHandler HandleGetCsCommand;
CommandHandler HandleSetCsCommand;
CommandHandler HandleGetSrCapCommand;
CommandHandler HandleGetSrIndCommand;
CommandHandler Handle6gListenCommand;
CommandHandler HandleAxBasizeCommand;
CommandHandler HandleFwLogCommand;
CommandHandler HandlePwrsaveModeCommand;
CommandHandler HandlePwrsaveCommand;
CommandHandler HandleSetUsbSpeedCommand;
CommandHandler HandleGetDfsStateCommand;
CommandHandler HandleOidLenTestCommand;

CommandHandler HandleEfuseCommand;
CommandHandler HandleTxbfCommand;
CommandHandler HandleGetN9VerCommand;
CommandHandler HandleStaStatCommand;
CommandHandler HandleSetBssidCommand;
CommandHandler HandleSetBssid2Command;
CommandHandler HandleSetCmdStrCommand;
CommandHandler HandleGetCmdStrCommand;
CommandHandler HandleChanPrefCfgCommand;
CommandHandler HandleTwtSetupCommand;
CommandHandler HandleSetApsdCommand;

CommandHandler HandleCoexInfoCommand;
CommandHandler HandleWtblCommand;
CommandHandler HandleUwtblCommand;
