// Commands that read statistics, counters, addresses and firmware versions.
// `stat`, `get_wfd` and `get_fw_ver` return 1 on success and 0 on a failed request; the others
// return 0 on success and 1 on failure.
#pragma once

int HandleStatCommand(int argc, char** argv);
int HandleGetWfdCommand(int argc, char** argv);
int HandleGetUmacCommand(int argc, char** argv);
int HandleTxHangCounterCommand(int argc, char** argv);
int HandleGetLpCommand(int argc, char** argv);
int HandleGetMacAddCommand(int argc, char** argv);
int HandleGetFwVerCommand(int argc, char** argv);
