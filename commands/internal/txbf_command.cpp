// `txbf`: reads transmit-beamforming profiles.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/refusals.h"

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

constexpr uint32_t TextAreaSize = 4096;

// Fills the request from the two arguments and prints it; false for another word.
bool FillRequest(const char* word, const char* values, TxBfProfileReadParam* param) {
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

// Asks for the profile and then for its text, which the driver keeps under a code of its own for
// each sub-command; another confirmed sub-command has no text.
bool RequestProfileText(TxBfProfileReadParam* param, char* text) {
  if (!OidRequest(OidTxBfProfile, param)) return false;
  if (param->ucSubCmd == TxBfDataRead) {
    return OidRequest(OidTxBfProfileDataText, text, TextAreaSize);
  }
  if (param->ucSubCmd == TxBfTagRead) {
    return OidRequest(OidTxBfProfileTagText, text, TextAreaSize);
  }
  return true;
}

int ShowProfile(int argc, char** argv, char* text) {
  TxBfProfileReadParam param = {};
  if (argc != 4 || !FillRequest(argv[2], argv[3], &param)) return InvalidParameters(0);
  if (!RequestProfileText(&param, text)) return RequestRefused(0);
  ConsolePrintf("%.*s\n", static_cast<int>(TextAreaSize), text);
  return 1;
}

}  // namespace

int HandleTxbfCommand(int argc, char** argv) {
  auto* text = static_cast<char*>(calloc(1, TextAreaSize));
  if (text == nullptr) return OutOfMemory(0);
  int result = ShowProfile(argc, argv, text);
  free(text);
  return result;
}
