// `TRx`: one antenna path, or both again.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/radio/radio_commands.h"

namespace {

struct TRxModeRequest {
  uint8_t aucSingleChain[3];  // all 1: one transmit and one receive chain; all 0: automatic
  uint8_t ucRfPath;           // the path of the single chain: 0 WF0, 1 WF1
};
static_assert(sizeof(TRxModeRequest) == 4);
static_assert(offsetof(TRxModeRequest, ucRfPath) == 3);

bool ReadMode(int argc, char** argv, TRxModeRequest* request) {
  if (argc == 3) return EqualsIgnoreCase(argv[2], "Auto");
  if (argc != 4 || !EqualsIgnoreCase(argv[2], "1T1R")) return false;
  if (EqualsIgnoreCase(argv[3], "WF0")) {
    *request = {{1, 1, 1}, 0};
  } else if (EqualsIgnoreCase(argv[3], "WF1")) {
    *request = {{1, 1, 1}, 1};
  } else {
    return false;
  }
  return true;
}

}  // namespace

int HandleTRxCommand(int argc, char** argv) {
  TRxModeRequest request = {};
  if (!ReadMode(argc, argv, &request)) return PrintIncorrectParameters();
  if (!OidRequest(OidTRxMode, &request)) {
    PrintDriverErrorAdvice(DeviceError());
    return 1;
  }
  ConsolePrintf("Apply successfully.\n");
  return 0;
}
