// `sniffer`: receives every frame of a channel and counts them.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/radio/radio_commands.h"

namespace {

constexpr uint32_t SubcommandOn = 0;
constexpr uint32_t SubcommandOff = 1;
constexpr uint32_t SubcommandStatistics = 2;

constexpr uint32_t ErrorAdapterInUse = 31;  // connected, or a mobile hotspot is running

struct SnifferRequest {
  uint32_t u4Subcommand;
  uint8_t ucReserved;
  uint8_t ucBand;  // 0 2.4 GHz, 1 5 GHz, 2 6 GHz
  uint8_t aucReserved1[2];
  int32_t i4Channel;
  uint8_t ucBandwidth;  // 0 20 MHz, 1 40 MHz, 2 80 MHz, 3 160 MHz
  uint8_t aucReserved2[3];
  uint32_t u4DataFrames;  // the three counts are the reply to SubcommandStatistics
  uint32_t u4ManagementFrames;
  uint32_t u4ControlFrames;
};
static_assert(sizeof(SnifferRequest) == 28);
static_assert(offsetof(SnifferRequest, ucBand) == 5);
static_assert(offsetof(SnifferRequest, i4Channel) == 8);
static_assert(offsetof(SnifferRequest, ucBandwidth) == 12);
static_assert(offsetof(SnifferRequest, u4DataFrames) == 16);

// The code of a choice is its index in the list.
struct Choice {
  const char* keyword;
  const char* shown;
};

constexpr Choice Bands[] = {{"2.4g", "2.4g"}, {"5g", "5g"}, {"6g", "6g"}};
constexpr Choice Bandwidths[] = {
    {"bw20", "20 MHz"}, {"bw40", "40 MHz"}, {"bw80", "80 MHz"}, {"bw160", "160 MHz"}};

template <size_t Count>
bool ReadChoice(const Choice (&choices)[Count], const char* keyword, uint8_t* code) {
  for (size_t i = 0; i < Count; i++) {
    if (EqualsIgnoreCase(keyword, choices[i].keyword)) {
      *code = static_cast<uint8_t>(i);
      return true;
    }
  }
  return false;
}

// If the list has no such code, its last choice is shown.
template <size_t Count>
const char* ShownChoice(const Choice (&choices)[Count], uint8_t code) {
  return choices[code < Count ? code : Count - 1].shown;
}

// The channels of each band, as runs with one step. They depend neither on the country nor on the
// bandwidth.
struct ChannelRun {
  uint8_t band;
  uint32_t first;
  uint32_t last;
  uint32_t step;
};

constexpr ChannelRun ChannelRuns[] = {
    {0, 1, 14, 1}, {1, 36, 64, 4}, {1, 100, 144, 4}, {1, 149, 165, 4}, {2, 1, 233, 4}};

bool SnifferChannelIsValid(uint8_t band, uint32_t channel) {
  for (const ChannelRun& run : ChannelRuns) {
    if (run.band == band && channel >= run.first && channel <= run.last &&
        (channel - run.first) % run.step == 0) {
      return true;
    }
  }
  return false;
}

int SwitchOn(char** argv) {
  SnifferRequest request = {};
  if (!EqualsIgnoreCase(argv[2], "on") || !ReadChoice(Bands, argv[3], &request.ucBand)) {
    return PrintIncorrectParameters();
  }
  ScanArgument(argv[4], "%d", &request.i4Channel);
  if (!SnifferChannelIsValid(request.ucBand, static_cast<uint32_t>(request.i4Channel))) {
    ConsolePrintf("Unavailable Channel %d\n", request.i4Channel);
    return 1;
  }
  if (!ReadChoice(Bandwidths, argv[5], &request.ucBandwidth)) return PrintIncorrectParameters();

  request.u4Subcommand = SubcommandOn;
  if (!OidRequest(OidSniffer, &request)) {
    if (DeviceError() == ErrorAdapterInUse) {
      ConsolePrintf("Network is activated\n");
      ConsolePrintf("Please disconnect network or disable mobile hotspot\n");
    } else {
      PrintRequestError();
    }
    return 1;
  }
  ConsolePrintf("Sniffer mode ON\n");
  ConsolePrintf("Band : %s\n", ShownChoice(Bands, request.ucBand));
  ConsolePrintf("Channel : %d\n", request.i4Channel);
  ConsolePrintf("Bandwidth : %s\n", ShownChoice(Bandwidths, request.ucBandwidth));
  return 0;
}

int SwitchOff() {
  SnifferRequest request = {};
  request.u4Subcommand = SubcommandOff;
  if (!OidRequest(OidSniffer, &request)) return PrintRequestError(1);
  ConsolePrintf("Sniffer mode OFF\n");
  return 0;
}

int ShowStatistics() {
  SnifferRequest request = {};
  request.u4Subcommand = SubcommandStatistics;
  if (!OidRequest(OidSniffer, &request)) return PrintRequestError(1);
  ConsolePrintf("Sniffer mode STATISTICS\n");
  ConsolePrintf("DATA : %d\n", request.u4DataFrames);
  ConsolePrintf("MGNT : %d\n", request.u4ManagementFrames);
  ConsolePrintf("CTRL : %d\n", request.u4ControlFrames);
  ConsolePrintf("TOTAL: %d\n",
                request.u4DataFrames + request.u4ManagementFrames + request.u4ControlFrames);
  return 0;
}

}  // namespace

int HandleSnifferCommand(int argc, char** argv) {
  if (argc == 6) return SwitchOn(argv);
  if (argc == 3 && EqualsIgnoreCase(argv[2], "off")) return SwitchOff();
  if (argc == 3 && EqualsIgnoreCase(argv[2], "stast")) return ShowStatistics();
  return PrintIncorrectParameters();
}
