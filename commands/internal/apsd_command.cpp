// `set_apsd`: the U-APSD parameters.
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/refusals.h"

namespace {

// The arguments in their order. The flags take bits 0 to 4 of the byte that is sent, MaxSPLength
// bits 5 and 6.
constexpr const char* ParameterLines[] = {
    "bAPSDCapable : %d \n", "bAPSDAC_BE : %d \n", "bAPSDAC_BK : %d \n",
    "bAPSDAC_VI : %d \n",   "bAPSDAC_VO : %d \n", "MaxSPLength : %d \n",
};
constexpr int ParameterCount = sizeof(ParameterLines) / sizeof(ParameterLines[0]);
constexpr int MaxSpLengthBit = 5;
constexpr int MaxSpLengthIndex = ParameterCount - 1;

}  // namespace

int HandleSetApsdCommand(int argc, char** argv) {
  if (argc != 2 + ParameterCount) return InvalidParameters(0);
  uint8_t values[ParameterCount] = {};
  for (int i = 0; i < ParameterCount; i++) {
    ScanArgument(argv[2 + i], "%2hhd", &values[i]);
  }
  unsigned packed = 0;
  for (int i = 0; i < ParameterCount; i++) {
    ConsolePrintf(ParameterLines[i], values[i]);
    if (i < MaxSpLengthIndex && values[i] != 0) packed |= 1U << i;
  }
  unsigned maxSpLength = values[MaxSpLengthIndex];
  if (maxSpLength < 4) packed |= maxSpLength << MaxSpLengthBit;
  auto apsdParam = static_cast<uint8_t>(packed);
  ConsolePrintf("ApsdParam : %d \n", apsdParam);
  return OidRequest(OidSetApsd, &apsdParam) ? 1 : RequestRefused(0);
}
