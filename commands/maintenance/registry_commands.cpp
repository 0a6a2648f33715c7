// `setreg` and `getreg`: one named value of the driver's settings.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/maintenance/maintenance_commands.h"

namespace {

constexpr unsigned RegistryNameSize = 50;

// OidSetRegistry and OidGetRegistry.
struct RegistryParam {
  uint32_t value;               // to set, or as read back
  char name[RegistryNameSize];  // zero-terminated; a reply may lack the zero
  uint8_t padding[2];           // zero
};
static_assert(sizeof(RegistryParam) == 56);
static_assert(offsetof(RegistryParam, name) == 4);

}  // namespace

int HandleSetRegCommand(int argc, char** argv) {
  RegistryParam param = {};
  if (argc != 4) return PrintInvalidParameters(1);
  CopyText(param.name, sizeof(param.name), argv[2]);
  // If VALUE has no 0x, the tool sends 0. The driver judges it.
  ScanArgument(argv[3], "0x%x", &param.value);
  ConsolePrintf("Set Reg name: %s and value :0x%0x\n", param.name, param.value);
  if (!OidRequest(OidSetRegistry, &param)) return PrintRequestErrorLine(1);
  ConsolePrintf("Set Registry[%.*s], Value=0x%0X\n", static_cast<int>(sizeof(param.name)),
                param.name, param.value);
  return 0;
}

int HandleGetRegCommand(int argc, char** argv) {
  RegistryParam param = {};
  if (argc != 3) return PrintInvalidParameters(1);
  // Only the first word is the name. If it does not fit, an empty name is sent.
  ScanArgument(argv[2], "%s", param.name, RegistryNameSize);
  ConsolePrintf("Get Reg name: %s\n", argv[2]);
  if (!OidRequest(OidGetRegistry, &param)) return PrintRequestErrorLine(1);
  ConsolePrintf("Get Driver Registry :0x%08x\n", param.value);
  return 0;
}
