// The commands of the engineering edition. They return 1 for a request that the driver took and 0
// for one that it refused.
#pragma once

#include "commands/command.h"
#include "commands/internal/internal_row.h"

// internal_commands.cpp
extern const InternalRow BypassCacRow;
extern const InternalRow RadarDetectRow;
extern const InternalRow RddDbdcRow;
extern const InternalRow DeepSleepCntRow;
extern const InternalRow SetIdValueRow;
extern const InternalRow DynamicDtimRow;
extern const InternalRow GetCoexTpRow;
CommandHandler HandleSetCoexTpCommand;
extern const InternalRow HwReadRow;
extern const InternalRow HwWriteRow;
extern const InternalRow GetDbgLevelRow;
extern const InternalRow SetDbgLevelRow;
CommandHandler HandleGetCsCommand;
CommandHandler HandleSetCsCommand;
CommandHandler HandleGetSrCapCommand;
CommandHandler HandleGetSrIndCommand;
extern const InternalRow SetSrRow;
CommandHandler Handle6gListenCommand;
extern const InternalRow SetAxCfgRow;
CommandHandler HandleAxBasizeCommand;
extern const InternalRow SetBccRow;
CommandHandler HandleFwLogCommand;
CommandHandler HandlePwrsaveModeCommand;
CommandHandler HandlePwrsaveCommand;
extern const InternalRow SetSerRow;
CommandHandler HandleSetUsbSpeedCommand;
extern const InternalRow GetUsbSpeedRow;
extern const InternalRow GetCacTimeRow;
CommandHandler HandleGetDfsStateCommand;
CommandHandler HandleOidLenTestCommand;
extern const InternalRow TpTestModeRow;

// structured_commands.cpp
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

// coexistence_info.cpp
CommandHandler HandleCoexInfoCommand;

// lmac_wtbl.cpp, umac_wtbl.cpp
CommandHandler HandleWtblCommand;
CommandHandler HandleUwtblCommand;
