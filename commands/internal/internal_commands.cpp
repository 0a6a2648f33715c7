// The engineering commands whose payloads are a few numbers. Each is a row, or a handler if it is
// too irregular for a row.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/internal/internal_row.h"

using enum ValueKind;

namespace {

constexpr char EchoThreeWords[] = "argv[0] = %s argv[1] = %s argv[2] = %s\n";

// The argument read by "%d"; 0 if it is not a number.
int ArgumentNumber(const char* text) {
  int number = 0;
  ScanArgument(text, "%d", &number);
  return number;
}

}  // namespace

// `bypass_cac`: the bypass time of the channel availability check.
const InternalRow BypassCacRow = {
    .oid = OidBypassCac,
    .length = 8,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%d", 2, 0}},
    .before = {{"Bypass CAC Time is: %dsec\n", Number, 0}},
};

// `radar_detect`: switches radar detection.
const InternalRow RadarDetectRow = {
    .oid = OidRadarDetect,
    .length = 8,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%hhu", 2, 4}},
    .before = {{"Radar detect mode is: %d\n", Byte, 4}},
};

// `rdd_dbdc`: the DBDC index that radar is reported for.
const InternalRow RddDbdcRow = {
    .oid = OidRddDbdc,
    .length = 1,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%hhu", 2, 0}},
    .before = {{"DBDC idx is: %d\n", Byte, 0}},
};

// `deep_sleep_cnt`: how often the chip woke from deep sleep.
const InternalRow DeepSleepCntRow = {
    .oid = OidDeepSleepCount,
    .length = 264,
    .count = 4,
    .wrongCountResult = 1,
    .failureEndsLine = true,
    .fields = {{"%x", 2, 0}, {"%d", 3, 4}},
    .before = {{"FuncDeepSleepCnt: Id = 0x%08X", Number, 0},
               {" [%s]", Argument, 2},
               {", value = %d\n", Number, 4}},
    .after = {{"WakeFromDeepSlpTimes : %d\n", Number, 4}},
};

// `set_id_value`: sets the value of one of the driver's ids.
const InternalRow SetIdValueRow = {
    .oid = OidSetIdValue,
    .length = 264,
    .count = 4,
    .wrongCountResult = 1,
    .failureEndsLine = true,
    .fields = {{"%x", 2, 0}, {"%d", 3, 4}},
    .before = {{"Id = 0x%08X", Number, 0}, {" [%s]", Argument, 2}, {", value = %d\n", Number, 4}},
};

// `dynamic_dtim`: switches the dynamic DTIM.
const InternalRow DynamicDtimRow = {
    .oid = OidDynamicDtim,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"Dynamic DTIM Enable = %d\n", Number, 0}},
};

// `get_coex_tp`: the state of the coexistence test traffic.
const InternalRow GetCoexTpRow = {
    .oid = OidGetCoexTp,
    .length = 4,
    .count = 2,
    .after = {{"COEX TP Stat = %d\n", Byte, 0}},
};

// `set_coex_tp`: sets the state of the coexistence test traffic.
namespace {

// OidSetCoexTp.
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

}  // namespace

int HandleSetCoexTpCommand(int argc, char** argv) {
  if (argc != 3) return PrintInvalidParameters(1);
  CoexTpParam param = {};
  param.state = static_cast<uint8_t>(ArgumentNumber(argv[2]));
  if (param.state > 2) return PrintInvalidParameters(0);
  ConsolePrintf("%s", CoexTpLines[param.state]);
  if (!OidRequest(OidSetCoexTp, &param)) return PrintRequestErrorLine(0);
  return 1;
}

// `hw_read`: reads a chip register.
const InternalRow HwReadRow = {
    .oid = OidReadRegister,
    .length = 8,
    .count = 3,
    .fields = {{"0x%x", 2, 0}},
    .after = {{"[0x%08x]", Number, 0}, {" = 0x%08x\n", Number, 4}},
};

// `hw_write`: writes a chip register.
const InternalRow HwWriteRow = {
    .oid = OidWriteRegister,
    .length = 8,
    .count = 4,
    .fields = {{"0x%x", 2, 0}, {"0x%x", 3, 4}},
};

// `get_dbg_level`: the category and level of the driver's debug log.
const InternalRow GetDbgLevelRow = {
    .oid = OidGetDebugLevel,
    .length = 8,
    .count = AnyCount,
    .failureEndsLine = true,
    .after = {{"Get Category=0x%08x", Number, 0},
              {"[%s]", CategoryName, 0},
              {", Level=0x%08x", Number, 4},
              {"[%s]\n", LevelName, 4}},
};

// `set_dbg_level`: sets both.
const InternalRow SetDbgLevelRow = {
    .oid = OidSetDebugLevel,
    .length = 8,
    .count = 4,
    .wrongCountResult = 1,
    .failureEndsLine = true,
    .fields = {{"0x%x", 2, 0}, {"0x%x", 3, 4}},
    .after = {{"Set Category=0x%08x", Number, 0},
              {"[%s]", CategoryName, 0},
              {", Level=0x%08x", Number, 4},
              {"[%s]\n", LevelName, 4}},
};

// `get_cs`, `set_cs`: read and write the PCIe configuration space.
namespace {

// OidReadConfigSpace and OidWriteConfigSpace.
struct ConfigSpaceParam {
  uint32_t offset;
  uint32_t value;
};
static_assert(sizeof(ConfigSpaceParam) == 8);
static_assert(offsetof(ConfigSpaceParam, value) == 4);

}  // namespace

int HandleGetCsCommand(int argc, char** argv) {
  if (argc != 3) {
    ConsolePrintf("nicctl get_cs <Configuration Space Offset>\n");
    return 1;
  }
  if (!EqualsIgnoreCase(argv[1], "get_cs")) return 1;
  ConfigSpaceParam param = {};
  ScanArgument(argv[2], "0x%08x", &param.offset);
  if (!OidRequest(OidReadConfigSpace, &param)) return PrintRequestError(0);
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
  if (!OidRequest(OidWriteConfigSpace, &param)) return PrintRequestError(0);
  ConsolePrintf("PCIe Configuration Space Write Offset 0x%08x = 0x%08x\n", param.offset,
                param.value);
  // The value is read back into the same record, at the offset that the driver confirmed.
  param.value = 0;
  if (!OidRequest(OidReadConfigSpace, &param)) return PrintRequestError(0);
  ConsolePrintf("PCIe Configuration Space Read Offset 0x%08x = 0x%08x\n", param.offset,
                param.value);
  return 1;
}

// `get_sr_cap`: which parts of spatial reuse the adapter can do.
namespace {

// OidSpatialReuseCap. All fields are flags in the reply.
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

}  // namespace

int HandleGetSrCapCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  if (argc != 2) return PrintInvalidParameters(0);
  SpatialReuseCap cap = {};
  if (!OidRequest(OidSpatialReuseCap, &cap)) return PrintRequestError(0);
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

// `get_sr_ind`: signal levels and counters of spatial reuse.
namespace {

// OidSpatialReuseInd. All fields are in the reply.
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

}  // namespace

int HandleGetSrIndCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  if (argc != 2) return PrintInvalidParameters(0);
  SpatialReuseInd ind = {};
  if (!OidRequest(OidSpatialReuseInd, &ind)) return PrintRequestError(0);
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

// `set_sr`: switches spatial reuse.
const InternalRow SetSrRow = {
    .oid = OidSetSpatialReuse,
    .length = 4,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%d", 2, 0}},
    .after = {{"Set Spatial Reuse Enable = %d\n", Number, 0}},
};

// `6g_listen`: one passive scan on a 6 GHz channel.
namespace {

// Oid6gListen.
struct ListenParam {
  uint8_t enable;   // 0 or 1
  uint8_t channel;  // primary channel
  uint8_t unused[2];
};
static_assert(sizeof(ListenParam) == 4);
static_assert(offsetof(ListenParam, channel) == 1);

}  // namespace

int Handle6gListenCommand(int argc, char** argv) {
  if (argc != 4) return PrintInvalidParameters(0);
  ListenParam param = {};
  ScanArgument(argv[2], "%2hhd", &param.enable);
  ScanArgument(argv[3], "%2hhd", &param.channel);
  ConsolePrintf("Enable = %d\n", param.enable);
  ConsolePrintf("Channel = %d\n", param.channel);
  if (param.enable > 1) {
    ConsolePrintf("Invalid parameter : Enable %d", param.enable);
    return 0;
  }
  return OidRequest(Oid6gListen, &param) ? 1 : PrintRequestError(0);
}

// `set_ax_cfg`: the bits of the AX configuration.
const InternalRow SetAxCfgRow = {
    .oid = OidSetAxConfig,
    .length = 4,
    .count = 3,
    .fields = {{"%x", 2, 0}},
    .before = {{"reset to ddefaul Ax_cfg = 0x%x\n", Number, 0}},
};

// `ax_basize`: the block-ack sizes of the HE modes.
namespace {

// OidAxBaSize.
struct AxBaSizeParam {
  uint16_t u2RxHeBaSize;  // at most AxBaSizeLimit, both
  uint16_t u2TxHeBaSize;
};
static_assert(sizeof(AxBaSizeParam) == 4);
static_assert(offsetof(AxBaSizeParam, u2TxHeBaSize) == 2);

constexpr uint16_t AxBaSizeLimit = 256;

}  // namespace

int HandleAxBasizeCommand(int argc, char** argv) {
  if (argc != 4) return PrintInvalidParameters(0);
  AxBaSizeParam param = {};
  ScanArgument(argv[2], "%hd", &param.u2TxHeBaSize);
  ScanArgument(argv[3], "%hd", &param.u2RxHeBaSize);
  if (param.u2TxHeBaSize > AxBaSizeLimit || param.u2RxHeBaSize > AxBaSizeLimit) {
    ConsolePrintf("ERROR size > 256 u2TxHeBaSize = %d, u2RxHeBaSize = %d\n", param.u2TxHeBaSize,
                  param.u2RxHeBaSize);
    return 1;
  }
  ConsolePrintf("u2TxHeBaSize = %d, u2RxHeBaSize = %d\n", param.u2TxHeBaSize, param.u2RxHeBaSize);
  return OidRequest(OidAxBaSize, &param) ? 1 : PrintRequestError(0);
}

// `set_bcc`: the BCC setting.
const InternalRow SetBccRow = {
    .oid = OidSetBcc,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"BCC = %d\n", Number, 0}},
};

// `fw_log`: where the firmware's log goes.
namespace {

// OidFwLog.
struct FwLogParam {
  uint8_t target;  // 1 UART, 2 host
  uint8_t unused[3];
};
static_assert(sizeof(FwLogParam) == 4);

}  // namespace

int HandleFwLogCommand(int argc, char** argv) {
  if (argc != 4) return PrintInvalidParameters(1);
  auto control = static_cast<uint8_t>(ArgumentNumber(argv[2]));
  FwLogParam param = {};
  param.target = static_cast<uint8_t>(ArgumentNumber(argv[3]));
  if (control != 0 || param.target < 1 || param.target > 2) return PrintInvalidParameters(0);
  ConsolePrintf("Configure FW log output\n");
  ConsolePrintf(param.target == 1 ? "FW log output to UART\n" : "FW log output to HOST\n");
  return OidRequest(OidFwLog, &param) ? 1 : PrintRequestError(0);
}

// `pwrsave_mode`, `pwrsave`: switch power saving. They differ only in OID and limit.
namespace {

// Converts the mode, prints it and sends it. A mode of `limit` or above is sent as 0.
int SetPowerSave(uint32_t oid, uint8_t limit, int argc, char** argv) {
  if (argc != 3) return PrintInvalidParameters(0);
  uint8_t mode = 0;
  ScanArgument(argv[2], "%2hhd", &mode);
  ConsolePrintf("PWRSAVE = %d\n", mode);
  if (mode >= limit) mode = 0;
  return OidRequest(oid, &mode) ? 1 : PrintRequestError(0);
}

}  // namespace

int HandlePwrsaveModeCommand(int argc, char** argv) {
  return SetPowerSave(OidPowerSaveMode, 3, argc, argv);
}

int HandlePwrsaveCommand(int argc, char** argv) {
  return SetPowerSave(OidPowerSave, 2, argc, argv);
}

// `set_ser`: the SER parameter.
const InternalRow SetSerRow = {
    .oid = OidSetSer,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"Ser Parameter = %d\n", Number, 0}},
};

// `set_usb_speed`: asks for a USB speed.
namespace {

// OidSetUsbSpeed.
struct UsbSpeedParam {
  uint8_t speed;
  uint8_t unused[3];
};
static_assert(sizeof(UsbSpeedParam) == 4);

}  // namespace

int HandleSetUsbSpeedCommand(int argc, char** argv) {
  if (argc != 3) return PrintInvalidParameters(1);
  int speed = ArgumentNumber(argv[2]);
  UsbSpeedParam param = {};
  param.speed = static_cast<uint8_t>(speed);
  if (!OidRequest(OidSetUsbSpeed, &param)) return PrintRequestError(0);
  ConsolePrintf("Configure USB Speed %d\n", speed);
  return 1;
}

// `get_usb_speed`: the USB speed in use.
const InternalRow GetUsbSpeedRow = {
    .oid = OidGetUsbSpeed,
    .length = 1,
    .count = 2,
    .wrongCountResult = 1,
    .after = {{"Current USB speed = %d\n", Byte, 0}},
};

// `get_cac_time`: the seconds left of the channel availability check.
const InternalRow GetCacTimeRow = {
    .oid = OidCacTime,
    .length = 12,
    .count = 2,
    .echo = "argv[0] = %s argv[1] = %s\n",
    .after = {{"\nRemaining time of CAC: %dsec", Number, 4}},
};

// `get_dfs_state`: how far the check for radar has come.
namespace {

// Each text has its own line end, so that the closing quote is printed on the next line.
constexpr char DfsStates[][30] = {
    "DFS_STATE_INACTIVE\n",
    "DFS_STATE_CHECKING\n",
    "DFS_STATE_ACTIVE\n",
    "DFS_STATE_DETECTED\n",
};
constexpr size_t DfsStateCount = sizeof(DfsStates) / sizeof(DfsStates[0]);

}  // namespace

int HandleGetDfsStateCommand(int argc, char** argv) {
  ConsolePrintf("argv[0] = %s argv[1] = %s", argv[0], argv[1]);
  if (argc != 2) return PrintInvalidParameters(0);
  uint8_t state = 0;
  if (!OidRequest(OidDfsState, &state)) return PrintRequestError(0);
  ConsolePrintf("\nDFS State: \"%s\"", state < DfsStateCount ? DfsStates[state] : "");
  return 1;
}

// `oid_len_test`: finds out whether the driver takes a payload of some length.
int HandleOidLenTestCommand(int argc, char** argv) {
  if (argc != 3) return PrintInvalidParameters(1);
  const int size = ArgumentNumber(argv[2]);
  const auto length = static_cast<uint32_t>(size);  // a negative size is sent as it stands
  ConsolePrintf("size = %d\n", size);
  uint8_t fixedArea[128] = {};
  void* heapArea = nullptr;
  if (length > sizeof(fixedArea)) {
    heapArea = calloc(1, length);
    if (heapArea == nullptr) return PrintOutOfMemory(0);
  }
  uint32_t returned = 0;
  void* area = heapArea != nullptr ? heapArea : fixedArea;
  const bool accepted = OidRequest(OidLengthTest, area, length, &returned);
  if (!accepted) {
    PrintRequestErrorLine(0);
    ConsolePrintf("bytesReturned = %d, Input size=%d\n", static_cast<int>(returned), size);
  }
  free(heapArea);
  return accepted ? 1 : 0;
}

// `tp_test_mode`: full power and no scan for throughput tests.
const InternalRow TpTestModeRow = {
    .oid = OidTpTestMode,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"TP Test Mode Enable = %d\n", Number, 0}},
};
