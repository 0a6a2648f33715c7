// The rows of the uniform commands.
#include "channel/oid.h"
#include "commands/internal/internal_oid.h"
#include "commands/internal/internal_row.h"

using enum ValueKind;

constexpr char EchoThreeWords[] = "argv[0] = %s argv[1] = %s argv[2] = %s\n";

const InternalRow BypassCacRow = {
    .oid = OidBypassCac,
    .length = 8,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%d", 2, 0}},
    .before = {{"Bypass CAC Time is: %dsec\n", Number, 0}},
};

const InternalRow RadarDetectRow = {
    .oid = OidRadarDetect,
    .length = 8,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%hhu", 2, 4}},
    .before = {{"Radar detect mode is: %d\n", Byte, 4}},
};

const InternalRow RddDbdcRow = {
    .oid = OidRddDbdc,
    .length = 1,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%hhu", 2, 0}},
    .before = {{"DBDC idx is: %d\n", Byte, 0}},
};

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

const InternalRow SetIdValueRow = {
    .oid = OidSetIdValue,
    .length = 264,
    .count = 4,
    .wrongCountResult = 1,
    .failureEndsLine = true,
    .fields = {{"%x", 2, 0}, {"%d", 3, 4}},
    .before = {{"Id = 0x%08X", Number, 0}, {" [%s]", Argument, 2}, {", value = %d\n", Number, 4}},
};

const InternalRow DynamicDtimRow = {
    .oid = OidDynamicDtim,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"Dynamic DTIM Enable = %d\n", Number, 0}},
};

const InternalRow GetCoexTpRow = {
    .oid = OidGetCoexTp,
    .length = 4,
    .count = 2,
    .after = {{"COEX TP Stat = %d\n", Byte, 0}},
};

const InternalRow HwReadRow = {
    .oid = OidReadRegister,
    .length = 8,
    .count = 3,
    .fields = {{"0x%x", 2, 0}},
    .after = {{"[0x%08x]", Number, 0}, {" = 0x%08x\n", Number, 4}},
};

const InternalRow HwWriteRow = {
    .oid = OidWriteRegister,
    .length = 8,
    .count = 4,
    .fields = {{"0x%x", 2, 0}, {"0x%x", 3, 4}},
};

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

const InternalRow SetSrRow = {
    .oid = OidSetSpatialReuse,
    .length = 4,
    .count = 3,
    .countCheckedLate = true,
    .echo = EchoThreeWords,
    .fields = {{"%d", 2, 0}},
    .after = {{"Set Spatial Reuse Enable = %d\n", Number, 0}},
};

const InternalRow SetAxCfgRow = {
    .oid = OidSetAxConfig,
    .length = 4,
    .count = 3,
    .fields = {{"%x", 2, 0}},
    .before = {{"reset to ddefaul Ax_cfg = 0x%x\n", Number, 0}},
};

const InternalRow SetBccRow = {
    .oid = OidSetBcc,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"BCC = %d\n", Number, 0}},
};

const InternalRow SetSerRow = {
    .oid = OidSetSer,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"Ser Parameter = %d\n", Number, 0}},
};

const InternalRow GetUsbSpeedRow = {
    .oid = OidGetUsbSpeed,
    .length = 1,
    .count = 2,
    .wrongCountResult = 1,
    .after = {{"Current USB speed = %d\n", Byte, 0}},
};

const InternalRow GetCacTimeRow = {
    .oid = OidCacTime,
    .length = 12,
    .count = 2,
    .echo = "argv[0] = %s argv[1] = %s\n",
    .after = {{"\nRemaining time of CAC: %dsec", Number, 4}},
};

const InternalRow TpTestModeRow = {
    .oid = OidTpTestMode,
    .length = 4,
    .count = 3,
    .fields = {{"%d", 2, 0}},
    .before = {{"TP Test Mode Enable = %d\n", Number, 0}},
};
