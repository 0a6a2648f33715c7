// `get_n9_ver`: every version that the firmware's record holds.
#include "app/console/print.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "commands/internal/internal_commands.h"
#include "commands/refusals.h"
#include "commands/status/firmware_version.h"

namespace {

// Prints a platform and a date, texts that fill their fields without a zero.
template <size_t PlatformSize, size_t DateSize>
void PrintPatch(const char (&platform)[PlatformSize], const char (&date)[DateSize]) {
  ConsolePrintf("Patch platform %.*s. Date %.*s\n", static_cast<int>(PlatformSize), platform,
                static_cast<int>(DateSize), date);
}

}  // namespace

int HandleGetN9VerCommand(int argc, char** /*argv*/) {
  if (argc != 2) return InvalidParameters(1);
  N9VersionInfo info = {};
  if (!OidRequest(OidFirmwareVersion, &info)) return RequestRefused(0);
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
