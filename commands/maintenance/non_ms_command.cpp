// `NonMS`: the driver's low-power support on non-MS platforms.
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/maintenance/maintenance_commands.h"

namespace {

int ReportFailure() {
  ConsolePrintf("LP Support NonMS Fail : %d", static_cast<int>(DeviceError()));
  return 1;
}

}  // namespace

int HandleNonMsCommand(int argc, char** argv) {
  if (argc != 3) {
    PrintIncorrectParameters();
    ConsolePrintf("Error: argc:%d!!\n", argc);
    return 1;
  }
  if (!EqualsIgnoreCase(argv[1], "NonMS")) return ReportFailure();
  auto enable = static_cast<uint32_t>(ParseInteger(argv[2]));  // 1 on, 0 off
  if (enable > 1) {
    PrintIncorrectParameters();
    ConsolePrintf("Error: argv[2] should be 1 or 0 ! Now Value: %d\n", static_cast<int>(enable));
    return 1;
  }
  if (!OidRequest(OidNonMsLowPower, &enable)) return ReportFailure();
  ConsolePrintf("LP Support NonMS Success");
  return 0;
}
