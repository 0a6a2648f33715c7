// `rf`: the signal check, shown on the screen.
#include "app/console/print.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/rssi_country/rssi_check.h"
#include "commands/rssi_country/rssi_country_commands.h"

namespace {

// Returns whether the antenna passes.
bool PrintAntenna(const char* name, const int8_t (&readings)[RssiReadingCount],
                  int negatedThreshold) {
  const int average = AverageRssi(readings);
  const bool passes = RssiPasses(average, negatedThreshold);
  ConsolePrintf("== %s ==\n", name);
  ConsolePrintf("Threshold: %d\n", negatedThreshold);
  ConsolePrintf("Average: %d\n", average);
  ConsolePrintf("%s\n", passes ? "PASS" : "FAIL");
  return passes;
}

}  // namespace

int HandleRfCommand(int argc, char** argv) {
  if ((argc != 5 && argc != 6) || !EqualsIgnoreCase(argv[2], "rssi")) {
    return PrintIncorrectParameters();
  }

  const char* ssid = argv[argc - 2];
  int threshold = 0;
  if (!ParseRssiThreshold(argv[argc - 1], &threshold)) {
    ConsolePrintf("RSSI threshold range: 0 ~ 127\n");
    return 1;
  }
  RssiCheckRequest request = {};
  if (argc == 6 && !RssiBandFromKeyword(argv[3], &request.ucBand)) {
    return PrintIncorrectParameters();
  }
  CopyText(request.acSsid, sizeof(request.acSsid), ssid);

  ConsolePrintf("Channel Scanning, %s......\n", ssid);
  if (!OidRequest(OidRssiCheck, &request)) {
    if (DeviceError() == ErrorNetworkNotFound) {
      ConsolePrintf("Cannot find SSID, %s", ssid);
    } else {
      PrintRequestError();
    }
    return 1;
  }
  const uint8_t* bssid = request.aucBssid;
  ConsolePrintf("SSID: %.*s\n", static_cast<int>(sizeof(request.acSsid)), request.acSsid);
  ConsolePrintf("BSSID: %.2X-%.2X-%.2X-%.2X-%.2X-%.2X\n", bssid[0], bssid[1], bssid[2], bssid[3],
                bssid[4], bssid[5]);
  ConsolePrintf("Channel: %d\n\n", request.ucChannel);

  const bool subPasses = PrintAntenna("ANT1 (sub)", request.acSubRssi, -threshold);
  const bool mainPasses = PrintAntenna("ANT2 (main)", request.acMainRssi, -threshold);
  return subPasses && mainPasses ? 0 : 1;
}
