// The engineering commands with a small payload that are too irregular for a row.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/request_errors.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/refusals.h"

namespace {

// The number that an argument reads as by "%d", 0 where it is none.
int ArgumentNumber(const char* text) {
  int number = 0;
  ScanArgument(text, "%d", &number);
  return number;
}

// Coexistence test traffic, OidSetCoexTp.
struct CoexTpParam {
  uint8_t state;  // 0 idle, 1 sending, 2 receiving
  uint8_t unused[3];
};
static_assert(sizeof(CoexTpParam) == 4);

constexpr const char* CoexTpLines[] = {
    "!!! NICCTL set COEX TP wifi idle !!!\n",
    "!!! NICCTL set COEX TP wifi TX busy !!!\n",
    "!!! NICCTL set COEX TP wifi RX busy !!!\n",
};

// The adapter's PCIe configuration space, OidReadConfigSpace and OidWriteConfigSpace.
struct ConfigSpaceParam {
  uint32_t offset;
  uint32_t value;
};
static_assert(sizeof(ConfigSpaceParam) == 8);
static_assert(offsetof(ConfigSpaceParam, value) == 4);

// OidSpatialReuseCap; all fields are flags of the reply.
struct SpatialReuseCap {
  uint8_t unused[8];
  uint8_t fgSrEn;
  uint8_t fgSrgEn;
  uint8_t fgNonSrgEn;
  uint8_t fgSingleMdpuRtsctsEn;
  uint8_t fgHdrDurEn;
  uint8_t fgTxopDurEn;
  uint8_t fgNonSrgInterPpduPresv;
  uint8_t fgSrgInterPpduPresv;
  uint8_t fgSrRemTimeEn;
  uint8_t fgProtInSrWinDis;
  uint8_t fgTxCmdDlRateSelEn;
  uint8_t fgAmpduTxCntEn;
};
static_assert(sizeof(SpatialReuseCap) == 20);
static_assert(offsetof(SpatialReuseCap, fgSrEn) == 8);

// OidSpatialReuseInd; signal levels and counters of the reply.
struct SpatialReuseInd {
  uint8_t unused[8];
  uint8_t NonSrgInterPpduRcpi;
  uint8_t SrgInterPpduRcpi;
  uint16_t NonSrgVldCnt;
  uint16_t SrgVldCnt;
  uint16_t IntraBssPpduCnt;
  uint16_t InterBssPpduCnt;
  uint16_t NonSrgPpduVldCnt;
  uint16_t SrgPpduVldCnt;
  uint16_t unused22;
  uint32_t SrAmpduMpduCnt;
  uint32_t SrAmpduMpduAckedCnt;
};
static_assert(sizeof(SpatialReuseInd) == 32);
static_assert(offsetof(SpatialReuseInd, NonSrgInterPpduRcpi) == 8);
static_assert(offsetof(SpatialReuseInd, NonSrgVldCnt) == 10);
static_assert(offsetof(SpatialReuseInd, SrgPpduVldCnt) == 20);
static_assert(offsetof(SpatialReuseInd, SrAmpduMpduCnt) == 24);

// One passive scan on a 6 GHz channel, Oid6gListen.
struct ListenParam {
  uint8_t enable;   // 0 or 1
  uint8_t channel;  // primary channel
  uint8_t unused[2];
};
static_assert(sizeof(ListenParam) == 4);
static_assert(offsetof(ListenParam, channel) == 1);

// Block-ack sizes of the HE modes, OidAxBaSize.
struct AxBaSizeParam {
  uint16_t u2RxHeBaSize;  // at most AxBaSizeLimit, both
  uint16_t u2TxHeBaSize;
};
static_assert(sizeof(AxBaSizeParam) == 4);
static_assert(offsetof(AxBaSizeParam, u2TxHeBaSize) == 2);

constexpr uint16_t AxBaSizeLimit = 256;

// Where the firmware's log goes, OidFwLog.
struct FwLogParam {
  uint8_t target;  // 1 UART, 2 host
  uint8_t unused[3];
};
static_assert(sizeof(FwLogParam) == 4);

// OidSetUsbSpeed.
struct UsbSpeedParam {
  uint8_t speed;
  uint8_t unused[3];
};
static_assert(sizeof(UsbSpeedParam) == 4);

// Each text carries its own line end, so the quote that closes it stands on the next line.
constexpr char DfsStates[][30] = {
    "DFS_STATE_INACTIVE\n",
    "DFS_STATE_CHECKING\n",
    "DFS_STATE_ACTIVE\n",
    "DFS_STATE_DETECTED\n",
};
constexpr size_t DfsStateCount = sizeof(DfsStates) / sizeof(DfsStates[0]);

// Converts the mode, prints it, and sends 0 for a mode of `limit` and above.
int SetPowerSave(uint32_t oid, uint8_t limit, int argc, char** argv) {
  if (argc != 3) return InvalidParameters(0);
  uint8_t mode = 0;
  ScanArgument(argv[2], "%2hhd", &mode);
  ConsolePrintf("PWRSAVE = %d\n", mode);
  if (mode >= limit) mode = 0;
  return OidRequest(oid, &mode) ? 1 : RequestRefused(0);
}

}  // namespace

int HandleSetCoexTpCommand(int argc, char** argv) {
  if (argc != 3) return InvalidParameters(1);
  CoexTpParam param = {};
  param.state = static_cast<uint8_t>(ArgumentNumber(argv[2]));
  if (param.state > 2) return InvalidParameters(0);
  ConsolePrintf("%s", CoexTpLines[param.state]);
  if (!OidRequest(OidSetCoexTp, &param)) {
    PrintRequestErrorLine();
    return 0;
  }
  return 1;
}

int HandleGetCsCommand(int argc, char** argv) {
  if (argc != 3) {
    ConsolePrintf("nicctl get_cs <Configuration Space Offset>\n");
    return 1;
  }
  if (!EqualsIgnoreCase(argv[1], "get_cs")) return 1;
  ConfigSpaceParam param = {};
  ScanArgument(argv[2], "0x%08x", &param.offset);
  if (!OidRequest(OidReadConfigSpace, &param)) return RequestRefused(0);
  ConsolePrintf("PCIe Configuration Space Read Offset 0x%x = 0x%08x\n", param.offset, param.value);
  return 1;
}

int HandleSetCsCommand(int argc, char** argv) {
  if (argc != 4) {
    ConsolePrintf("nicctl set_cs <Configuration Space Offset> <SetValue>\n");
    return 1;
  }
  if (!EqualsIgnoreCase(argv[1], "set_cs")) return 1;
  ConfigSpaceParam param = {};
  ScanArgument(argv[2], "0x%08x", &param.offset);
  ScanArgument(argv[3], "0x%08x", &param.value);
  if (!OidRequest(OidWriteConfigSpace, &param)) return RequestRefused(0);
  ConsolePrintf("PCIe Configuration Space Write Offset 0x%08x = 0x%08x\n", param.offset,
                param.value);
  // The value is read back into the same record, at the offset that the driver confirmed.
  param.value = 0;
  if (!OidRequest(OidReadConfigSpace, &param)) return RequestRefused(0);
  ConsolePrintf("PCIe Configuration Space Read Offset 0x%08x = 0x%08x\n", param.offset,
                param.value);
  return 1;
}

int HandleGetSrCapCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  if (argc != 2) return InvalidParameters(0);
  SpatialReuseCap cap = {};
  if (!OidRequest(OidSpatialReuseCap, &cap)) return RequestRefused(0);
  ConsolePrintf("========== SR CAP ==========\n");
  ConsolePrintf("fgSrEn = %d fgSrgEn = %d\n", cap.fgSrEn, cap.fgSrgEn);
  ConsolePrintf("fgNonSrgEn = %d fgSingleMdpuRtsctsEn = %d\n", cap.fgNonSrgEn,
                cap.fgSingleMdpuRtsctsEn);
  ConsolePrintf("fgHdrDurEn = %d fgTxopDurEn = %d\n", cap.fgHdrDurEn, cap.fgTxopDurEn);
  ConsolePrintf("fgNonSrgInterPpduPresv = %d fgSrgInterPpduPresv = %d\n",
                cap.fgNonSrgInterPpduPresv, cap.fgSrgInterPpduPresv);
  ConsolePrintf("fgSrRemTimeEn = %d fgProtInSrWinDis = %d\n", cap.fgSrRemTimeEn,
                cap.fgProtInSrWinDis);
  ConsolePrintf("fgTxCmdDlRateSelEn = %d fgAmpduTxCntEn = %d\n", cap.fgTxCmdDlRateSelEn,
                cap.fgAmpduTxCntEn);
  ConsolePrintf("============================\n");
  return 1;
}

int HandleGetSrIndCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  if (argc != 2) return InvalidParameters(0);
  SpatialReuseInd ind = {};
  if (!OidRequest(OidSpatialReuseInd, &ind)) return RequestRefused(0);
  ConsolePrintf("======== SR INDICATOR ========\n");
  ConsolePrintf("NonSrgInterPpduRcpi = %x SrgInterPpduRcpi = %x\n", ind.NonSrgInterPpduRcpi,
                ind.SrgInterPpduRcpi);
  ConsolePrintf("NonSrgVldCnt = %x SrgVldCnt = %x\n", ind.NonSrgVldCnt, ind.SrgVldCnt);
  ConsolePrintf("IntraBssPpduCnt = %x InterBssPpduCnt = %x\n", ind.IntraBssPpduCnt,
                ind.InterBssPpduCnt);
  ConsolePrintf("NonSrgPpduVldCnt = %x SrgPpduVldCnt = %x\n", ind.NonSrgPpduVldCnt,
                ind.SrgPpduVldCnt);
  ConsolePrintf("SrAmpduMpduCnt = %x SrAmpduMpduAckedCnt = %x\n", ind.SrAmpduMpduCnt,
                ind.SrAmpduMpduAckedCnt);
  ConsolePrintf("==========================\n");
  return 1;
}

int Handle6gListenCommand(int argc, char** argv) {
  if (argc != 4) return InvalidParameters(0);
  ListenParam param = {};
  ScanArgument(argv[2], "%2hhd", &param.enable);
  ScanArgument(argv[3], "%2hhd", &param.channel);
  ConsolePrintf("Enable = %d\n", param.enable);
  ConsolePrintf("Channel = %d\n", param.channel);
  if (param.enable > 1) {
    ConsolePrintf("Invalid parameter : Enable %d", param.enable);
    return 0;
  }
  return OidRequest(Oid6gListen, &param) ? 1 : RequestRefused(0);
}

int HandleAxBasizeCommand(int argc, char** argv) {
  if (argc != 4) return InvalidParameters(0);
  AxBaSizeParam param = {};
  ScanArgument(argv[2], "%hd", &param.u2TxHeBaSize);
  ScanArgument(argv[3], "%hd", &param.u2RxHeBaSize);
  if (param.u2TxHeBaSize > AxBaSizeLimit || param.u2RxHeBaSize > AxBaSizeLimit) {
    ConsolePrintf("ERROR size > 256 u2TxHeBaSize = %d, u2RxHeBaSize = %d\n", param.u2TxHeBaSize,
                  param.u2RxHeBaSize);
    return 1;
  }
  ConsolePrintf("u2TxHeBaSize = %d, u2RxHeBaSize = %d\n", param.u2TxHeBaSize, param.u2RxHeBaSize);
  return OidRequest(OidAxBaSize, &param) ? 1 : RequestRefused(0);
}

int HandleFwLogCommand(int argc, char** argv) {
  if (argc != 4) return InvalidParameters(1);
  auto control = static_cast<uint8_t>(ArgumentNumber(argv[2]));
  FwLogParam param = {};
  param.target = static_cast<uint8_t>(ArgumentNumber(argv[3]));
  if (control != 0 || param.target < 1 || param.target > 2) return InvalidParameters(0);
  ConsolePrintf("Configure FW log output\n");
  ConsolePrintf(param.target == 1 ? "FW log output to UART\n" : "FW log output to HOST\n");
  return OidRequest(OidFwLog, &param) ? 1 : RequestRefused(0);
}

int HandlePwrsaveModeCommand(int argc, char** argv) {
  return SetPowerSave(OidPowerSaveMode, 3, argc, argv);
}

int HandlePwrsaveCommand(int argc, char** argv) {
  return SetPowerSave(OidPowerSave, 2, argc, argv);
}

int HandleSetUsbSpeedCommand(int argc, char** argv) {
  if (argc != 3) return InvalidParameters(1);
  int speed = ArgumentNumber(argv[2]);
  UsbSpeedParam param = {};
  param.speed = static_cast<uint8_t>(speed);
  if (!OidRequest(OidSetUsbSpeed, &param)) return RequestRefused(0);
  ConsolePrintf("Configure USB Speed %d\n", speed);
  return 1;
}

int HandleGetDfsStateCommand(int argc, char** argv) {
  ConsolePrintf("argv[0] = %s argv[1] = %s", argv[0], argv[1]);
  if (argc != 2) return InvalidParameters(0);
  uint8_t state = 0;
  if (!OidRequest(OidDfsState, &state)) return RequestRefused(0);
  ConsolePrintf("\nDFS State: \"%s\"", state < DfsStateCount ? DfsStates[state] : "");
  return 1;
}

// Probes what the driver makes of any payload length.
int HandleOidLenTestCommand(int argc, char** argv) {
  if (argc != 3) return InvalidParameters(1);
  int size = ArgumentNumber(argv[2]);
  ConsolePrintf("size = %d\n", size);
  uint8_t fixedArea[128] = {};
  void* heapArea = nullptr;
  if (size < 0 || static_cast<size_t>(size) > sizeof(fixedArea)) {
    heapArea = size < 0 ? nullptr : calloc(1, static_cast<size_t>(size));
    if (heapArea == nullptr) return OutOfMemory(0);
  }
  uint32_t returned = 0;
  void* area = heapArea != nullptr ? heapArea : fixedArea;
  bool accepted = OidRequest(OidLengthTest, area, static_cast<uint32_t>(size), &returned);
  if (!accepted) {
    PrintRequestErrorLine();
    ConsolePrintf("bytesReturned = %d, Input size=%d\n", static_cast<int>(returned), size);
  }
  free(heapArea);
  return accepted ? 1 : 0;
}
