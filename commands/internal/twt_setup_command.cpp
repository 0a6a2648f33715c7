// `twt_setup`: the parameters of a target-wake-time agreement.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "commands/internal/handler_helpers.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"

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

}  // namespace

int HandleTwtSetupCommand(int argc, char** argv) {
  if (argc != 12) return InvalidParameters(0);
  TwtSetupParam param = {};
  ScanArgument(argv[2], "%2hhd", &param.ucNumOfPara);
  ScanArgument(argv[3], "%2hhd", &param.ucCtrlAction);
  ScanArgument(argv[4], "%2hhd", &param.ucTWTFlowId);
  ScanArgument(argv[5], "%2hhd", &param.ucSetupCmd);
  ScanArgument(argv[6], "%2hhd", &param.fgTrigger);
  ScanArgument(argv[7], "%2hhd", &param.fgUnannounced);
  ScanArgument(argv[8], "%2hhd", &param.ucWakeIntvalExponent);
  ScanArgument(argv[9], "%2hhd", &param.fgProtect);
  ScanArgument(argv[10], "%hhu", &param.ucMinWakeDur);
  ScanArgument(argv[11], "%hd", &param.u2WakeIntvalMantiss);
  ConsolePrintf("ucNumOfPara : %d \n", param.ucNumOfPara);
  ConsolePrintf("ucCtrlAction : %d \n", param.ucCtrlAction);
  ConsolePrintf("ucTWTFlowId : %d \n", param.ucTWTFlowId);
  ConsolePrintf("ucSetupCmd : %d \n", param.ucSetupCmd);
  ConsolePrintf("fgTrigger : %d \n", param.fgTrigger);
  ConsolePrintf("fgUnannounced : %d \n", param.fgUnannounced);
  ConsolePrintf("ucWakeIntvalExponent : %d \n", param.ucWakeIntvalExponent);
  ConsolePrintf("fgProtect : %d \n", param.fgProtect);
  ConsolePrintf("ucMinWakeDur : %d \n", param.ucMinWakeDur);
  ConsolePrintf("u2WakeIntvalMantiss : %d \n", param.u2WakeIntvalMantiss);
  return OidRequest(OidTwtSetup, &param) ? 1 : RequestRefused();
}
