// The engineering commands whose arguments or answers are records. Each has its record, its helpers
// and its handler here.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "app/console/digit.h"
#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/internal/value_names.h"
#include "commands/status/firmware_version.h"

// `efuse`: reads and writes single e-fuse bytes and counts the free blocks.
namespace {

enum EfuseOpMode : uint8_t { EfuseRead = 0, EfuseWrite = 1, EfuseFree = 2 };

// OidEfuse.
struct EfuseAccessParam {
  uint8_t ucOpMode;  // EfuseOpMode
  uint8_t unused1[3];
  uint32_t Efuse_addr;
  uint8_t unused8[4];
  uint8_t aucData[16];       // the block that holds the address; the byte at address & 15 counts
  uint8_t ucFreeBlockCount;  // replies to EfuseFree
  uint8_t ucTotalBlockCount;
  uint8_t unused30[2];
};
static_assert(sizeof(EfuseAccessParam) == 32);
static_assert(offsetof(EfuseAccessParam, Efuse_addr) == 4);
static_assert(offsetof(EfuseAccessParam, aucData) == 12);
static_assert(offsetof(EfuseAccessParam, ucFreeBlockCount) == 28);
static_assert(offsetof(EfuseAccessParam, ucTotalBlockCount) == 29);

int PrintEfuseMenu() {
  ConsolePrintf("\nHelp menu\n");
  ConsolePrintf("\tRead:\t\"nicctl efuse read addr_hex\"\n");
  ConsolePrintf("\tWrite:\t\"nicctl efuse write addr_hex val_hex\"\n");
  ConsolePrintf("\tFree Blocks:\t\"nicctl efuse free\"\n");
  return 0;
}

}  // namespace

int HandleEfuseCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  if (argc < 3 || argc > 5) return PrintInvalidParameters(0);

  EfuseAccessParam param = {};
  uint32_t address = 0;
  uint32_t value = 0;
  // The first letter decides.
  char operation = argv[2][0];
  if (argc == 4 && (operation == 'r' || operation == 'R')) {
    param.ucOpMode = EfuseRead;
    ScanArgument(argv[3], "0x%x", &address);
  } else if (argc == 5 && (operation == 'w' || operation == 'W')) {
    param.ucOpMode = EfuseWrite;
    ScanArgument(argv[3], "0x%x", &address);
    ScanArgument(argv[4], "0x%x", &value);
  } else if (operation == 'f' || operation == 'F') {
    param.ucOpMode = EfuseFree;
  } else {
    return PrintEfuseMenu();
  }
  uint8_t mode = param.ucOpMode;
  uint32_t index = address & 15;
  param.Efuse_addr = address;
  param.aucData[index] = static_cast<uint8_t>(value);
  ConsolePrintf("ucOpMode = %d, Efuse_addr = 0x%x, Efuse_value = 0x%x, aucData[%d] = 0x%x\n", mode,
                address, value, index, param.aucData[index]);
  if (!OidRequest(OidEfuse, &param)) return PrintRequestError(0);
  if (mode == EfuseRead) {
    ConsolePrintf("Read success 0x%x = 0x%x\n", address, param.aucData[index]);
  } else if (mode == EfuseWrite) {
    ConsolePrintf("Write success 0x%x = 0x%x\n", address, value);
  } else {
    ConsolePrintf("Free block size %d, Total block %d\n", param.ucFreeBlockCount,
                  param.ucTotalBlockCount);
  }
  return 1;
}

// `txbf`: reads transmit-beamforming profiles.
namespace {

enum TxBfSubCommand : uint8_t { TxBfTagRead = 5, TxBfDataRead = 7 };

// OidTxBfProfile.
struct TxBfProfileReadParam {
  uint8_t ucSubCmd;  // TxBfSubCommand; the driver confirms it in the reply
  uint8_t ucProfileIdx;
  uint8_t fgBFer;  // beamformer side
  uint8_t unused3[3];
  uint16_t u2SubcarrierIdx;  // data read only
  uint8_t unused8[60];
};
static_assert(sizeof(TxBfProfileReadParam) == 68);
static_assert(offsetof(TxBfProfileReadParam, fgBFer) == 2);
static_assert(offsetof(TxBfProfileReadParam, u2SubcarrierIdx) == 6);

constexpr uint32_t TxBfTextSize = 4096;

// Fills the request from the two arguments and prints it. Returns false for an unknown word.
bool FillTxBfRequest(const char* word, const char* values, TxBfProfileReadParam* param) {
  if (EqualsIgnoreCase(word, "TxBfProfileDataRead")) {
    uint8_t msb = 0;
    uint8_t lsb = 0;
    ScanArgument(values, "%2hhd-%2hhd-%2hhd-%2hhd", &param->ucProfileIdx, &param->fgBFer, &msb,
                 &lsb);
    param->ucSubCmd = TxBfDataRead;
    param->u2SubcarrierIdx = static_cast<uint16_t>(msb << 8 | lsb);
    ConsolePrintf(
        "Set_TxBfProfileDataRead, profileIdx = %d, fgBFer = %d, subcarrierIdxMsb: 0x%08x, "
        "subcarrierIdxLsb: 0x%08x\n",
        param->ucProfileIdx, param->fgBFer, msb, lsb);
    return true;
  }
  if (EqualsIgnoreCase(word, "TxBfProfileTagRead")) {
    ScanArgument(values, "%2hhd-%2hhd", &param->ucProfileIdx, &param->fgBFer);
    param->ucSubCmd = TxBfTagRead;
    ConsolePrintf("Set_TxBfProfileTagRead, profileIdx = %d, fgBFer = %d\n", param->ucProfileIdx,
                  param->fgBFer);
    return true;
  }
  return false;
}

// Asks for the profile and then for its text. Each sub-command has its own OID for the text. If the
// driver confirms another sub-command, there is no text.
bool RequestTxBfText(TxBfProfileReadParam* param, char* text) {
  if (!OidRequest(OidTxBfProfile, param)) return false;
  if (param->ucSubCmd == TxBfDataRead) {
    return OidRequest(OidTxBfProfileDataText, text, TxBfTextSize);
  }
  if (param->ucSubCmd == TxBfTagRead) {
    return OidRequest(OidTxBfProfileTagText, text, TxBfTextSize);
  }
  return true;
}

int ShowTxBfProfile(int argc, char** argv, char* text) {
  TxBfProfileReadParam param = {};
  if (argc != 4 || !FillTxBfRequest(argv[2], argv[3], &param)) return PrintInvalidParameters(0);
  if (!RequestTxBfText(&param, text)) return PrintRequestError(0);
  ConsolePrintf("%.*s\n", static_cast<int>(TxBfTextSize), text);
  return 1;
}

}  // namespace

int HandleTxbfCommand(int argc, char** argv) {
  auto* text = static_cast<char*>(calloc(1, TxBfTextSize));
  if (text == nullptr) return PrintOutOfMemory(0);
  int result = ShowTxBfProfile(argc, argv, text);
  free(text);
  return result;
}

// `get_n9_ver`: every version that the firmware's record holds.
namespace {

// Prints a platform and a date. Both texts fill their fields and have no zero.
template <size_t PlatformSize, size_t DateSize>
void PrintPatch(const char (&platform)[PlatformSize], const char (&date)[DateSize]) {
  ConsolePrintf("Patch platform %.*s. Date %.*s\n", static_cast<int>(PlatformSize), platform,
                static_cast<int>(DateSize), date);
}

}  // namespace

int HandleGetN9VerCommand(int argc, char** /*argv*/) {
  if (argc != 2) return PrintInvalidParameters(1);
  N9VersionInfo info = {};
  if (!OidRequest(OidFirmwareVersion, &info)) return PrintRequestError(0);
  ConsolePrintf("N9 FW Version\n");
  ConsolePrintf("Tailer Ver[%u:%u] %.*s (%.*s) info %u:E%u\n", info.ucTailerMajor,
                info.ucTailerMinor, static_cast<int>(sizeof(info.aucPlatform)), info.aucPlatform,
                N9VersionTextLimit, N9VersionText(info), info.ucInfo, info.ucEco + 1U);
  ConsolePrintf("Release manifest:\n");
  PrintPatch(info.aucManifestPlatform, info.aucManifestDate);
  ConsolePrintf("Tundra BT patch info:\n");
  PrintPatch(info.aucPatchPlatform, info.aucPatchDate);
  return 1;
}

// `sta_stat`: the link to the access point that the adapter is connected to.
namespace {

// OidStaStat.
struct StaLinkStat {
  uint8_t connected;  // 1 while connected
  uint8_t txPer;      // packet error rates
  uint8_t rxPer;
  uint8_t nss;         // spatial streams
  int32_t rssi[2];     // dBm of each antenna
  uint16_t linkSpeed;  // 500 kbit/s units
  uint16_t rxRate;     // Mbps or MCS, by the phy mode
  uint8_t txRate;      // the same
  uint8_t unused17[11];
  uint32_t phyMode;  // see PhyModeName
  uint32_t txCount;
  uint32_t rxSuccessCount;
  uint32_t txBytes;
  uint32_t rxSuccessBytes;
  uint32_t txFailCount;
  uint32_t rxFailCount;
  uint32_t rxTotalCount;
  uint32_t rtsTxCount;
  uint32_t rtsRetryCount;
};
static_assert(sizeof(StaLinkStat) == 68);
static_assert(offsetof(StaLinkStat, rssi) == 4);
static_assert(offsetof(StaLinkStat, linkSpeed) == 12);
static_assert(offsetof(StaLinkStat, txRate) == 16);
static_assert(offsetof(StaLinkStat, phyMode) == 28);
static_assert(offsetof(StaLinkStat, rtsRetryCount) == 64);

// The unit of both rates.
const char* RateUnit(uint32_t phyMode) {
  constexpr const char* Units[] = {"Mbps", "Mbps", "MCS", "MCS", "MCS"};
  return phyMode < sizeof(Units) / sizeof(Units[0]) ? Units[phyMode] : "";
}

void PrintLinkReport(const StaLinkStat& stat) {
  const char* unit = RateUnit(stat.phyMode);
  ConsolePrintf("Tx PER\t\t\t\t\t\t\t\t  = %u\n", stat.txPer);
  ConsolePrintf("Rx PER\t\t\t\t\t\t\t\t  = %u\n", stat.rxPer);
  ConsolePrintf("Nss\t\t\t\t\t\t\t          = %u\n", stat.nss);
  ConsolePrintf("RX Rssi Ant0\t\t\t\t\t        \t  = %d\n", stat.rssi[0]);
  ConsolePrintf("RX Rssi Ant1\t\t        \t\t\t\t  = %d\n", stat.rssi[1]);
  ConsolePrintf("Link Speed\t\t\t\t\t\t\t  = %u Mbps\n", stat.linkSpeed >> 1);
  ConsolePrintf("Tx Rate\t\t\t\t\t\t\t\t  = %u %s\n", stat.txRate, unit);
  ConsolePrintf("Rx Rate\t\t\t\t\t\t\t\t  = %u %s\n", stat.rxRate, unit);
  ConsolePrintf("Phy mode\t\t\t\t\t\t\t  = %s(%u)\n", PhyModeName(stat.phyMode), stat.phyMode);
  ConsolePrintf("Tx count\t\t\t\t\t\t\t  = %u\n", stat.txCount);
  ConsolePrintf("Rx success count\t\t\t\t        \t  = %u\n", stat.rxSuccessCount);
  ConsolePrintf("Tx bytes count\t\t\t\t\t        \t  = %u\n", stat.txBytes);
  ConsolePrintf("Rx success bytes count\t\t                                 = %u\n",
                stat.rxSuccessBytes);
  ConsolePrintf("Tx fail count\t\t\t\t                          = %u\n", stat.txFailCount);
  ConsolePrintf("Rx fail count\t\t\t\t                          = %u\n", stat.rxFailCount);
  ConsolePrintf("Rx Total count\t\t\t\t                          = %u\n", stat.rxTotalCount);
  ConsolePrintf("Rts tx count\t\t\t\t\t                  = %u\n", stat.rtsTxCount);
  ConsolePrintf("Rts retry count\t\t\t\t        \t\t  = %u\n", stat.rtsRetryCount);
}

}  // namespace

int HandleStaStatCommand(int /*argc*/, char** /*argv*/) {
  StaLinkStat stat = {};
  if (!OidRequest(OidStaStat, &stat)) return PrintRequestErrorLine(0);
  if (stat.connected == 1) {
    PrintLinkReport(stat);
  } else {
    ConsolePrintf("STA is not yet connected\n");
  }
  return 1;
}

// MAC addresses on the command line of `set_bssid`, `set_bssid2` and `chan_pref_cfg`.
namespace {

constexpr size_t MacTextLength = 17;

// Turns 2 * `count` digits into `count` bytes. The caller has checked that they are digits.
void HexStringToBytes(const char* text, uint8_t* bytes, size_t count) {
  for (size_t i = 0; i < count; i++) {
    bytes[i] = static_cast<uint8_t>(DigitValue(text[2 * i]) * 16 + DigitValue(text[2 * i + 1]));
  }
}

// Reads "00:11:22:aa:bb:CC" into six bytes. Returns false for any other text of that length. A text
// of another length is not read: the bytes stay as they are, and the result is true.
bool ParseMacAddress(const char* text, uint8_t (&address)[6]) {
  if (strlen(text) != MacTextLength) return true;
  // With six pairs of digits the other five characters must be the colons.
  for (size_t i = 0; i < MacTextLength; i++) {
    bool isColonPlace = i % 3 == 2;
    if (isColonPlace ? text[i] != ':' : DigitValue(text[i]) >= 16) return false;
  }
  for (size_t i = 0; i < sizeof(address); i++) HexStringToBytes(text + 3 * i, address + i, 1);
  return true;
}

// Calls ParseMacAddress and prints "NAME = 00:11:22:AA:BB:CC" with its line end.
bool TakeMacAddress(const char* text, const char* name, uint8_t (&address)[6]) {
  if (!ParseMacAddress(text, address)) return false;
  ConsolePrintf("%s = %02X:%02X:%02X:%02X:%02X:%02X\n", name, address[0], address[1], address[2],
                address[3], address[4], address[5]);
  return true;
}

}  // namespace

// `set_bssid`, `set_bssid2`: the BSSID and a second one.
namespace {

int SetBssid(uint32_t oid, int argc, char** argv) {
  if (argc != 4 || !EqualsIgnoreCase(argv[2], "bssid")) return PrintInvalidParameters(0);
  uint8_t bssid[6] = {};
  if (!TakeMacAddress(argv[3], "bssid", bssid)) return PrintInvalidParameters(0);
  return OidRequest(oid, bssid, sizeof(bssid)) ? 1 : PrintRequestError(0);
}

}  // namespace

int HandleSetBssidCommand(int argc, char** argv) {
  return SetBssid(OidSetBssid, argc, argv);
}

int HandleSetBssid2Command(int argc, char** argv) {
  return SetBssid(OidSetBssid2, argc, argv);
}

// `set_cmd_str`, `get_cmd_str`: the arguments as one free text for the driver.
namespace {

constexpr uint8_t CmdStringQuery = 3;
constexpr unsigned CmdStringSize = 320;

// OidSetCmdStr and OidGetCmdStr.
struct CmdStringParam {
  uint8_t unused[2];
  uint8_t requestType;   // CmdStringQuery for the query, else 0
  uint8_t responseType;  // CmdStringQuery when the text is an answer to print
  uint16_t textLength;
  uint8_t unused6[2];
  char text[CmdStringSize];  // sent with a zero in the last byte; a reply may lack it
};
static_assert(sizeof(CmdStringParam) == 328);
static_assert(offsetof(CmdStringParam, requestType) == 2);
static_assert(offsetof(CmdStringParam, textLength) == 4);
static_assert(offsetof(CmdStringParam, text) == 8);

// Adds one character to the text. Every character is printed, but only those that fit are sent.
void AddCmdCharacter(char character, unsigned* length, CmdStringParam* param) {
  ConsolePrintf("aucCmd[%d] = %c \n", *length, character);
  if (*length < CmdStringSize - 1) param->text[*length] = character;
  (*length)++;
}

// Prints the arguments, then the text that they make, with a space after each. That text without
// its last space is sent, cut to the record.
void FillCmdString(int argc, char** argv, CmdStringParam* param) {
  for (int i = 2; i < argc; i++) ConsolePrintf("argv[%d] = %s \n", i, argv[i]);
  unsigned length = 0;
  for (int i = 2; i < argc; i++) {
    for (const char* next = argv[i]; *next != 0; next++) AddCmdCharacter(*next, &length, param);
    AddCmdCharacter(' ', &length, param);
  }
  unsigned sent = length - 1 < CmdStringSize - 1 ? length - 1 : CmdStringSize - 1;
  param->text[sent] = 0;
  param->textLength = static_cast<uint16_t>(sent);
  ConsolePrintf("%d \n", sent);
}

bool SendCmdString(uint32_t oid, int argc, char** argv, CmdStringParam* param) {
  ConsolePrintf("argc = %d \n", argc);
  FillCmdString(argc, argv, param);
  return OidRequest(oid, param);
}

}  // namespace

int HandleSetCmdStrCommand(int argc, char** argv) {
  if (argc <= 2) return PrintInvalidParameters(0);
  CmdStringParam param = {};
  return SendCmdString(OidSetCmdStr, argc, argv, &param) ? 1 : PrintRequestError(0);
}

int HandleGetCmdStrCommand(int argc, char** argv) {
  if (argc <= 2) return PrintInvalidParameters(0);
  CmdStringParam param = {};
  param.requestType = CmdStringQuery;
  if (!SendCmdString(OidGetCmdStr, argc, argv, &param)) return PrintRequestError(0);
  if (param.responseType == CmdStringQuery) {
    ConsolePrintf("%.*s", static_cast<int>(CmdStringSize), param.text);
  }
  return 1;
}

// `chan_pref_cfg`: channel preferences and peers.
namespace {

// OidChanPref. What follows CmdId depends on it.
struct ChanPrefParam {
  uint8_t CmdId;
  union {
    struct {  // CmdId 2
      uint8_t Channel;
      uint8_t Preference;
      uint8_t OpClass;
      uint8_t ReasonCode;
    } preference;
    uint8_t address[6];  // CmdId 3: the associated BSSID; CmdId 4: the peer
  };
};
static_assert(sizeof(ChanPrefParam) == 7);
static_assert(offsetof(ChanPrefParam, preference.ReasonCode) == 4);
static_assert(offsetof(ChanPrefParam, address) == 1);

bool FillPreference(char** argv, ChanPrefParam* param) {
  auto& preference = param->preference;
  ScanArgument(argv[3], "%2hhd", &preference.Channel);
  ScanArgument(argv[4], "%2hhd", &preference.Preference);
  ScanArgument(argv[5], "%3hhd", &preference.OpClass);
  ScanArgument(argv[6], "%2hhd", &preference.ReasonCode);
  ConsolePrintf("Channel : %d\n", preference.Channel);
  ConsolePrintf("Preference : %d\n", preference.Preference);
  ConsolePrintf("OpClass : %d\n", preference.OpClass);
  ConsolePrintf("ReasonCode : %d\n", preference.ReasonCode);
  return true;
}

// Fills the fields of this CmdId. Returns false if the number of arguments or an address is wrong.
bool FillChanPref(int argc, char** argv, ChanPrefParam* param) {
  switch (param->CmdId) {
    case 1:
      return argc == 3;
    case 2:
      return argc == 7 && FillPreference(argv, param);
    case 3:
      return argc == 4 && TakeMacAddress(argv[3], "AssocBssid", param->address);
    case 4:
      return argc == 4 && TakeMacAddress(argv[3], "PeerAddr", param->address);
    default:
      return false;
  }
}

}  // namespace

int HandleChanPrefCfgCommand(int argc, char** argv) {
  if (argc < 3 || argc > 7) return PrintInvalidParameters(0);
  ChanPrefParam param = {};
  ScanArgument(argv[2], "%2hhd", &param.CmdId);
  ConsolePrintf("CmdId : %d \n", param.CmdId);
  if (!FillChanPref(argc, argv, &param)) return PrintInvalidParameters(0);
  return OidRequest(OidChanPref, &param) ? 1 : PrintRequestError(0);
}

// `twt_setup`: the parameters of a target-wake-time agreement.
namespace {

// OidTwtSetup.
struct TwtSetupParam {
  uint8_t ucNumOfPara;
  uint8_t ucCtrlAction;
  uint8_t ucTWTFlowId;
  uint8_t unused3;
  uint8_t fgTrigger;
  uint8_t fgProtect;
  uint8_t fgUnannounced;
  uint8_t ucSetupCmd;
  uint8_t ucMinWakeDur;
  uint8_t ucWakeIntvalExponent;
  uint16_t u2WakeIntvalMantiss;
};
static_assert(sizeof(TwtSetupParam) == 12);
static_assert(offsetof(TwtSetupParam, fgTrigger) == 4);
static_assert(offsetof(TwtSetupParam, u2WakeIntvalMantiss) == 10);

// How an argument is converted, where it is stored and how it is printed.
struct TwtArgument {
  const char* format;
  size_t offset;
  const char* line;
};

// In the order of the arguments. The record has another order.
constexpr TwtArgument TwtArguments[] = {
    {"%2hhd", offsetof(TwtSetupParam, ucNumOfPara), "ucNumOfPara : %d \n"},
    {"%2hhd", offsetof(TwtSetupParam, ucCtrlAction), "ucCtrlAction : %d \n"},
    {"%2hhd", offsetof(TwtSetupParam, ucTWTFlowId), "ucTWTFlowId : %d \n"},
    {"%2hhd", offsetof(TwtSetupParam, ucSetupCmd), "ucSetupCmd : %d \n"},
    {"%2hhd", offsetof(TwtSetupParam, fgTrigger), "fgTrigger : %d \n"},
    {"%2hhd", offsetof(TwtSetupParam, fgUnannounced), "fgUnannounced : %d \n"},
    {"%2hhd", offsetof(TwtSetupParam, ucWakeIntvalExponent), "ucWakeIntvalExponent : %d \n"},
    {"%2hhd", offsetof(TwtSetupParam, fgProtect), "fgProtect : %d \n"},
    {"%hhu", offsetof(TwtSetupParam, ucMinWakeDur), "ucMinWakeDur : %d \n"},
};
constexpr int TwtArgumentCount = sizeof(TwtArguments) / sizeof(TwtArguments[0]);

}  // namespace

int HandleTwtSetupCommand(int argc, char** argv) {
  // The last argument is the record's only field of 16 bits.
  if (argc != 2 + TwtArgumentCount + 1) return PrintInvalidParameters(0);
  TwtSetupParam param = {};
  auto* bytes = reinterpret_cast<uint8_t*>(&param);
  for (int i = 0; i < TwtArgumentCount; i++) {
    ScanArgument(argv[2 + i], TwtArguments[i].format, bytes + TwtArguments[i].offset);
    ConsolePrintf(TwtArguments[i].line, bytes[TwtArguments[i].offset]);
  }
  ScanArgument(argv[2 + TwtArgumentCount], "%hd", &param.u2WakeIntvalMantiss);
  ConsolePrintf("u2WakeIntvalMantiss : %d \n", param.u2WakeIntvalMantiss);
  return OidRequest(OidTwtSetup, &param) ? 1 : PrintRequestError(0);
}

// `set_apsd`: the U-APSD parameters.
namespace {

// OidSetApsd.
struct ApsdParam {
  uint8_t bits;  // 0 to 4: the flags in the order of the arguments; 5 and 6: MaxSPLength
};
static_assert(sizeof(ApsdParam) == 1);

// In the order of the arguments.
constexpr const char* ApsdLines[] = {
    "bAPSDCapable : %d \n", "bAPSDAC_BE : %d \n", "bAPSDAC_BK : %d \n",
    "bAPSDAC_VI : %d \n",   "bAPSDAC_VO : %d \n", "MaxSPLength : %d \n",
};
constexpr int ApsdArgumentCount = sizeof(ApsdLines) / sizeof(ApsdLines[0]);
constexpr int MaxSpLengthBit = 5;
constexpr int MaxSpLengthIndex = ApsdArgumentCount - 1;

}  // namespace

int HandleSetApsdCommand(int argc, char** argv) {
  if (argc != 2 + ApsdArgumentCount) return PrintInvalidParameters(0);
  uint8_t values[ApsdArgumentCount] = {};
  for (int i = 0; i < ApsdArgumentCount; i++) {
    ScanArgument(argv[2 + i], "%2hhd", &values[i]);
  }
  unsigned packed = 0;
  for (int i = 0; i < ApsdArgumentCount; i++) {
    ConsolePrintf(ApsdLines[i], values[i]);
    if (i < MaxSpLengthIndex && values[i] != 0) packed |= 1U << i;
  }
  unsigned maxSpLength = values[MaxSpLengthIndex];
  if (maxSpLength < 4) packed |= maxSpLength << MaxSpLengthBit;
  ApsdParam param = {static_cast<uint8_t>(packed)};
  ConsolePrintf("ApsdParam : %d \n", param.bits);
  return OidRequest(OidSetApsd, &param) ? 1 : PrintRequestError(0);
}
