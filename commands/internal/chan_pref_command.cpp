// `chan_pref_cfg`: channel preferences and peers.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/internal/mac_argument.h"
#include "commands/refusals.h"

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

bool FillAddress(const char* text, const char* name, ChanPrefParam* param) {
  if (!ParseMacAddress(text, param->address)) return false;
  PrintMacAddress(name, param->address);
  return true;
}

// Fills what belongs to the CmdId; false where the count or an address does not fit it.
bool FillCommand(int argc, char** argv, ChanPrefParam* param) {
  switch (param->CmdId) {
    case 1:
      return argc == 3;
    case 2:
      return argc == 7 && FillPreference(argv, param);
    case 3:
      return argc == 4 && FillAddress(argv[3], "AssocBssid", param);
    case 4:
      return argc == 4 && FillAddress(argv[3], "PeerAddr", param);
    default:
      return false;
  }
}

}  // namespace

int HandleChanPrefCfgCommand(int argc, char** argv) {
  if (argc < 3 || argc > 7) return InvalidParameters(0);
  ChanPrefParam param = {};
  ScanArgument(argv[2], "%2hhd", &param.CmdId);
  ConsolePrintf("CmdId : %d \n", param.CmdId);
  if (!FillCommand(argc, argv, &param)) return InvalidParameters(0);
  return OidRequest(OidChanPref, &param) ? 1 : RequestRefused(0);
}
