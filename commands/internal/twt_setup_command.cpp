// `twt_setup`: the parameters of a target-wake-time agreement.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/refusals.h"

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

// An argument's conversion, where it goes and how it is shown.
struct TwtArgument {
  const char* format;
  size_t offset;
  const char* line;
};

// In the order of the arguments, which is not that of the record.
constexpr TwtArgument Arguments[] = {
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
constexpr int ArgumentCount = sizeof(Arguments) / sizeof(Arguments[0]);

}  // namespace

int HandleTwtSetupCommand(int argc, char** argv) {
  // The last argument is the record's only field of 16 bits.
  if (argc != 2 + ArgumentCount + 1) return InvalidParameters(0);
  TwtSetupParam param = {};
  auto* bytes = reinterpret_cast<uint8_t*>(&param);
  for (int i = 0; i < ArgumentCount; i++) {
    ScanArgument(argv[2 + i], Arguments[i].format, bytes + Arguments[i].offset);
    ConsolePrintf(Arguments[i].line, bytes[Arguments[i].offset]);
  }
  ScanArgument(argv[2 + ArgumentCount], "%hd", &param.u2WakeIntvalMantiss);
  ConsolePrintf("u2WakeIntvalMantiss : %d \n", param.u2WakeIntvalMantiss);
  return OidRequest(OidTwtSetup, &param) ? 1 : RequestRefused(0);
}
