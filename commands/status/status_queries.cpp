// `stat`, `get_wfd`, `get_umac`, `txhang_counter`, `get_lp` and `get_mac_Add`.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "app/console/print.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/status/status_commands.h"

namespace {

constexpr uint32_t StatisticsTextSize = 4096;
constexpr uint32_t WfdTextSize = 4096;
constexpr uint32_t UmacTextSize = 8192;

struct TxHangCounters {
  int32_t rTxHangCounter;  // transmit hangs seen
  int32_t L1SerCounter;    // times that L1 SER was triggered
};
static_assert(sizeof(TxHangCounters) == 8);
static_assert(offsetof(TxHangCounters, L1SerCounter) == 4);

struct MacAddressReply {
  uint8_t address[6];  // in transmission order
  uint8_t unused[2];
};
static_assert(sizeof(MacAddressReply) == 8);

// Allocates a zeroed buffer for a text reply. Returns null if there is no memory.
char* AllocateText(uint32_t size) {
  return static_cast<char*>(calloc(size, 1));
}

// Asks for a text and prints it. If the driver refuses, it reports that and returns false.
bool PrintTextReply(uint32_t oid, char* text, uint32_t size) {
  if (!OidRequest(oid, text, size)) {
    PrintRequestError();
    return false;
  }
  ConsolePrintf("%.*s\n", static_cast<int>(size), text);
  return true;
}

bool SendResetFlag(uint8_t reset) {
  if (OidRequest(OidResetStatistics, &reset)) return true;
  PrintRequestError();
  return false;
}

// Sends a request of four bytes that have no meaning.
bool SendEmptyRequest(uint32_t oid) {
  uint32_t nothing = 0;
  if (OidRequest(oid, &nothing)) return true;
  PrintRequestError();
  return false;
}

}  // namespace

int HandleStatCommand(int argc, char** argv) {
  bool reset = argc == 3 && EqualsIgnoreCase(argv[2], "resetcounter");
  if (argc != 2 && !reset) return PrintInvalidParameters(1);
  char* text = AllocateText(StatisticsTextSize);
  if (text == nullptr) return PrintOutOfMemory(0);
  bool done =
      SendResetFlag(reset ? 1 : 0) && PrintTextReply(OidStatisticsText, text, StatisticsTextSize);
  free(text);
  return done ? 1 : 0;
}

int HandleGetWfdCommand(int argc, char** /*argv*/) {
  if (argc != 2) return PrintInvalidParameters(1);
  char* text = AllocateText(WfdTextSize);
  if (text == nullptr) return PrintOutOfMemory(0);
  bool done = PrintTextReply(OidWfdText, text, WfdTextSize);
  free(text);
  return done ? 1 : 0;
}

int HandleGetUmacCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  char* text = AllocateText(UmacTextSize);
  if (text == nullptr) return PrintOutOfMemory(1);
  int result = 1;
  if (argc != 2) {
    result = PrintInvalidParameters(1);
  } else if (SendEmptyRequest(OidUmacDump) && PrintTextReply(OidUmacText, text, UmacTextSize)) {
    result = 0;
  }
  free(text);
  return result;
}

int HandleTxHangCounterCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  if (argc != 2) return PrintInvalidParameters(1);
  TxHangCounters counters = {};
  if (!OidRequest(OidTxHangCounters, &counters)) return PrintRequestError(1);
  ConsolePrintf("L1SerCounter = %d, rTxHangCounter = %d\n", counters.L1SerCounter,
                counters.rTxHangCounter);
  return 0;
}

int HandleGetLpCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  ConsolePrintf("The infomation will dump with kernel logs in Debugview.\n");
  if (argc != 2) return PrintInvalidParameters(1);
  return SendEmptyRequest(OidLowPowerInfo) ? 0 : 1;
}

int HandleGetMacAddCommand(int /*argc*/, char** /*argv*/) {
  MacAddressReply reply = {};
  if (!OidRequest(OidMacAddress, &reply)) return PrintRequestError(1);
  const uint8_t* mac = reply.address;
  ConsolePrintf("MAC Address: %.2X-%.2X-%.2X-%.2X-%.2X-%.2X\n", mac[0], mac[1], mac[2], mac[3],
                mac[4], mac[5]);
  return 0;
}
