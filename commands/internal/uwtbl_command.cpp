// `uwtbl`: what the driver knows about one entry of the UMAC wireless table.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/internal/wtbl_field.h"
#include "commands/refusals.h"

namespace {

// OidUwtblSummary.
struct UwtblSummary {
  uint32_t reserved0;
  uint32_t group;    // of the entry
  uint32_t address;  // of the entry, in the chip's register space
  uint32_t reserved12;
  uint64_t packetNumber;
  uint32_t wlanIndex;           // request; the reply puts the entry's first word here
  uint32_t commonSequenceWord;  // number in bits 27:16
  uint32_t reserved32;
  uint32_t keyWord;  // key locations in bits 10:0 and 26:16, QoS in 27, HT in 28
  uint32_t reserved40;
  uint32_t amsduWord;  // hardware A-MSDU configuration in bits 9:0
  uint32_t reserved48[2];
};
static_assert(sizeof(UwtblSummary) == 56);
static_assert(offsetof(UwtblSummary, group) == 4);
static_assert(offsetof(UwtblSummary, packetNumber) == 16);
static_assert(offsetof(UwtblSummary, wlanIndex) == 24);
static_assert(offsetof(UwtblSummary, keyWord) == 36);
static_assert(offsetof(UwtblSummary, amsduWord) == 44);

void PrintUwtblSummary(const UwtblSummary& summary) {
  const uint32_t keyLocation0 = WtblBits(summary.keyWord, 10, 0);
  const uint32_t keyLocation1 = WtblBits(summary.keyWord, 26, 16);
  ConsolePrintf("UMAC WTBL Addr: group: 0x%x=0x0 addr: 0x%x\n", summary.group, summary.address);
  ConsolePrintf("UWTBL DW 0,1\n\tpn:%llu\n\tcom_sn:%u\n",
                static_cast<unsigned long long>(summary.packetNumber),
                WtblBits(summary.commonSequenceWord, 27, 16));
  ConsolePrintf("UWTBL DW 5\n\tKey_loc0:%u\n\tKey_loc1:%u\n\tQoS:%u\n\tHT:%u\n\tHW_AMSDU_CFG:%u\n",
                keyLocation0, keyLocation1, WtblBits(summary.keyWord, 27, 27),
                WtblBits(summary.keyWord, 28, 28), WtblBits(summary.amsduWord, 9, 0));
  ConsolePrintf("\n\nkeyloc0:%u\n", keyLocation0);
  ConsolePrintf("\n\nkeyloc1:%u\n", keyLocation1);
}

}  // namespace

int HandleUwtblCommand(int argc, char** argv) {
  const char* indexText = argc > 2 ? argv[2] : "";
  ConsolePrintf("argv[0] = %s argv[1] = %s argv[2] = %s\n", argv[0], argv[1], indexText);
  int wlanIndex = 0;
  ScanArgument(indexText, "%d", &wlanIndex);
  ConsolePrintf("wlanIdx is: %d\n", wlanIndex);
  if (argc != 3) return InvalidParameters(0);
  UwtblSummary summary = {};
  summary.wlanIndex = static_cast<uint32_t>(wlanIndex);
  if (!OidRequest(OidUwtblSummary, &summary)) return RequestRefused(0);
  PrintUwtblSummary(summary);
  return 1;
}
