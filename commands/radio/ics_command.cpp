// `ics`: switches ICS on and off.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/radio/radio_commands.h"

namespace {

constexpr uint8_t ModuleIcs = 2;
constexpr uint8_t ModulePhyIcs = 3;
constexpr uint16_t PartitionLimit = 0x100;

struct IcsRequest {
  uint8_t ucModule;         // ModuleIcs or ModulePhyIcs
  uint8_t ucAction;         // 0 off, 1 on
  uint8_t ucFilter;         // no function
  uint8_t ucOperation;      // no function
  uint16_t ucCondition[7];  // [0]: 0 transmit, 1 receive, 2 both; [1]: guard interval;
                            // [3]: partition of PHY ICS; the others have no function
  uint8_t aucReserved[62];
};
static_assert(sizeof(IcsRequest) == 80);
static_assert(offsetof(IcsRequest, ucCondition) == 4);
static_assert(offsetof(IcsRequest, aucReserved) == 18);

int ScanRequest(const char* text, IcsRequest* request) {
  uint16_t* condition = request->ucCondition;
  return ScanArgument(text, "%2hhd-%2hhd-%2hhd-%2hhd-%hd-%hd-%hd-%hx-%hx-%hx-%hd",
                      &request->ucModule, &request->ucAction, &request->ucFilter,
                      &request->ucOperation, &condition[0], &condition[1], &condition[2],
                      &condition[3], &condition[4], &condition[5], &condition[6]);
}

void PrintRequest(const IcsRequest& request) {
  ConsolePrintf("ucModule=%d\n", request.ucModule);
  ConsolePrintf("ucAction=%d\n", request.ucAction);
  ConsolePrintf("ucFilter=%d\n", request.ucFilter);
  ConsolePrintf("ucOperation=%d\n", request.ucOperation);
  ConsolePrintf("ucCondition[0]=%d\n", request.ucCondition[0]);
  ConsolePrintf("ucCondition[1]=%d\n", request.ucCondition[1]);
  ConsolePrintf("ucCondition[2]=%d\n", request.ucCondition[2]);
  ConsolePrintf("ucCondition[3]=0x%x\n", request.ucCondition[3]);
  ConsolePrintf("ucCondition[4]=0x%x\n", request.ucCondition[4]);
  ConsolePrintf("ucCondition[5]=0x%x\n", request.ucCondition[5]);
}

}  // namespace

int HandleIcsCommand(int argc, char** argv) {
  if (argc != 3) return PrintIncorrectParameters();
  IcsRequest request = {};
  const int count = ScanRequest(argv[2], &request);
  PrintRequest(request);
  if (count == 11) {
    ConsolePrintf("ucCondition[6]=%d\n", request.ucCondition[6]);
    if (request.ucModule != ModulePhyIcs)
      return 0;  // eleven numbers and another module: not an error
    if (request.ucCondition[3] >= PartitionLimit) {
      ConsolePrintf("PHY ICS partition must less than 0xff\n");
      return 1;
    }
  } else if (count == 10) {
    if (request.ucModule != ModuleIcs) {
      ConsolePrintf("Not an ICS cmd\n");
      return 1;
    }
  } else {
    ConsolePrintf("SNIFFER CMD: Number of PARAMETERS is WRONG\n");
    return 1;
  }
  if (!OidRequest(OidIcs, &request)) return PrintRequestError(1);
  return 0;
}
