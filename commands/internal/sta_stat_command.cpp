// `sta_stat`: the link to the access point that the adapter is connected to.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "channel/driver_channel.h"
#include "channel/request_errors.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/internal/value_names.h"

namespace {

// OidStaStat.
struct StaLinkStat {
  uint8_t connected;  // 1 while connected
  uint8_t txPer;      // packet error rates
  uint8_t rxPer;
  uint8_t nss;         // spatial streams
  int32_t rssi[2];     // dBm of each antenna
  uint16_t linkSpeed;  // 500 kbit/s units
  uint16_t rxRate;     // Mbps or MCS, by the phy mode
  uint8_t txRate;      // likewise
  uint8_t unused17[11];
  uint32_t phyMode;  // see PhyModeName
  uint32_t txCount;
  uint32_t rxSuccessCount;
  uint32_t txBytes;
  uint32_t rxSuccessBytes;
  uint32_t txFailCount;
  uint32_t rxFailCount;
  uint32_t rxTotalCount;
  uint32_t rtsTxCount;
  uint32_t rtsRetryCount;
};
static_assert(sizeof(StaLinkStat) == 68);
static_assert(offsetof(StaLinkStat, rssi) == 4);
static_assert(offsetof(StaLinkStat, linkSpeed) == 12);
static_assert(offsetof(StaLinkStat, txRate) == 16);
static_assert(offsetof(StaLinkStat, phyMode) == 28);
static_assert(offsetof(StaLinkStat, rtsRetryCount) == 64);

// The unit of both rates.
const char* RateUnit(uint32_t phyMode) {
  constexpr const char* Units[] = {"Mbps", "Mbps", "MCS", "MCS", "MCS"};
  return phyMode < sizeof(Units) / sizeof(Units[0]) ? Units[phyMode] : "";
}

void PrintLinkReport(const StaLinkStat& stat) {
  const char* unit = RateUnit(stat.phyMode);
  ConsolePrintf("Tx PER\t\t\t\t\t\t\t\t  = %u\n", stat.txPer);
  ConsolePrintf("Rx PER\t\t\t\t\t\t\t\t  = %u\n", stat.rxPer);
  ConsolePrintf("Nss\t\t\t\t\t\t\t          = %u\n", stat.nss);
  ConsolePrintf("RX Rssi Ant0\t\t\t\t\t        \t  = %d\n", stat.rssi[0]);
  ConsolePrintf("RX Rssi Ant1\t\t        \t\t\t\t  = %d\n", stat.rssi[1]);
  ConsolePrintf("Link Speed\t\t\t\t\t\t\t  = %u Mbps\n", stat.linkSpeed >> 1);
  ConsolePrintf("Tx Rate\t\t\t\t\t\t\t\t  = %u %s\n", stat.txRate, unit);
  ConsolePrintf("Rx Rate\t\t\t\t\t\t\t\t  = %u %s\n", stat.rxRate, unit);
  ConsolePrintf("Phy mode\t\t\t\t\t\t\t  = %s(%u)\n", PhyModeName(stat.phyMode), stat.phyMode);
  ConsolePrintf("Tx count\t\t\t\t\t\t\t  = %u\n", stat.txCount);
  ConsolePrintf("Rx success count\t\t\t\t        \t  = %u\n", stat.rxSuccessCount);
  ConsolePrintf("Tx bytes count\t\t\t\t\t        \t  = %u\n", stat.txBytes);
  ConsolePrintf("Rx success bytes count\t\t                                 = %u\n",
                stat.rxSuccessBytes);
  ConsolePrintf("Tx fail count\t\t\t\t                          = %u\n", stat.txFailCount);
  ConsolePrintf("Rx fail count\t\t\t\t                          = %u\n", stat.rxFailCount);
  ConsolePrintf("Rx Total count\t\t\t\t                          = %u\n", stat.rxTotalCount);
  ConsolePrintf("Rts tx count\t\t\t\t\t                  = %u\n", stat.rtsTxCount);
  ConsolePrintf("Rts retry count\t\t\t\t        \t\t  = %u\n", stat.rtsRetryCount);
}

}  // namespace

int HandleStaStatCommand(int /*argc*/, char** /*argv*/) {
  StaLinkStat stat = {};
  if (!OidRequest(OidStaStat, &stat)) {
    PrintRequestErrorLine();
    return 0;
  }
  if (stat.connected == 1) {
    PrintLinkReport(stat);
  } else {
    ConsolePrintf("STA is not yet connected\n");
  }
  return 1;
}
