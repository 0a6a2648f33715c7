// `set_bssid` and `set_bssid2`.
#include <cstdint>

#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/internal/mac_argument.h"
#include "commands/refusals.h"

namespace {

int SetBssid(uint32_t oid, int argc, char** argv) {
  if (argc != 4 || !EqualsIgnoreCase(argv[2], "bssid")) return InvalidParameters(0);
  uint8_t bssid[6] = {};
  if (!ParseMacAddress(argv[3], bssid)) return InvalidParameters(0);
  PrintMacAddress("bssid", bssid);
  return OidRequest(oid, bssid, sizeof(bssid)) ? 1 : RequestRefused(0);
}

}  // namespace

int HandleSetBssidCommand(int argc, char** argv) {
  return SetBssid(OidSetBssid, argc, argv);
}

int HandleSetBssid2Command(int argc, char** argv) {
  return SetBssid(OidSetBssid2, argc, argv);
}
