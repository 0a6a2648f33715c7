#include "app/usage_texts.h"

#include "app/command_table.h"
#include "channel/oid.h"
#include "commands/internal/internal_oid.h"

namespace {

using enum UsageLayout;

// Each row is one line of the listing.
// clang-format off

// For all commands without arguments.
constexpr UsageLine WordAlone[] = {
    {Plain, " Usage:"},
    {Command, ""},
};

constexpr UsageLine IndexAndValue[] = {
    {Plain, " Usage:"},
    {TabbedCommand, " Index Value"},
};

constexpr UsageLine Stat[] = {
    {Plain, " Usage:"},
    {Command, " [resetcounter]"},
    {Plain, " For example"},
    {Command, ""},
    {Command, " resetcounter"},
};

constexpr UsageLine FixedRate[] = {
    {Plain, " Usage:"},
    {TabbedCommand, " <Option>"},
    {Plain, "\t Option support 10 or 13 parameters"},
    {Plain, "\t Option:[WCID]-[Mode]-[BW]-[MCS]-[VhtHeNss]-[GI]-[Preamble]-[STBC]-[LDPC]-[SPE_EN]"},
    {Plain, "\t 13 param support another [HE-LTF]-[HE-ER-DCM]-[HE-ER-106]"},
    {Plain, "\t [WCID]Wireless Client ID (Default is fixed for all connected peer)"},
    {Plain,
     "\t [Mode]CCK=0, OFDM=1, HT=2, GF=3, VHT=4, PLR=5, HE_SU=8, HE_ER_SU=9, HE_TRIG=10, "
     "HE_MU=11"},
    {Plain, "\t [BW]BW20=0, BW40=1, BW80=2,BW160=3"},
    {Plain, "\t [MCS]CCK=0~3, OFDM=0~7, HT=0~32, VHT=0~9, HE=0~11"},
    {Plain, "\t [VhtHeNss]1~8, Other=ignore"},
    {Plain, "\t [GI]HT/VHT: 0:Long, 1:Short, HE: SGI=0(0.8us), MGI=1(1.6us), LGI=2(3.2us)"},
    {Plain, "\t [Preamble]Long=0, Other=Short"},
    {Plain, "\t [STBC]Enable=1, Disable=0"},
    {Plain, "\t [LDPC]BCC=0, LDPC=1"},
    {Plain, "\t [SPE_EN]Disable=0, Enable=1 (1T to duplicate 2T)"},
    {Plain, "\t [HE-LTF]1X=0, 2X=1, 4X=2"},
    {Plain, "\t [HE-ER-DCM]Enable=1, Disable=0"},
    {Plain, "\t [HE-ER-106]106-tone=1"},
    {Plain, " For example:"},
    {TabbedValue, "Set Fixed-Rate: WCID2 HT(MM) BW40 MCS7"},
    {Command, " 2-2-1-7-0-0-0-0-0-0"},
    {TabbedValue,
     "Set Fixed-Rate: WCID2 AX(HE_SU) BW80 MCS11 HeNss2 SGI LongPreamble DisSTBC LDPC "
     "DisSPE_EN HE-LTF(2X)"},
    {Command, " 2-8-2-11-2-0-0-0-1-0-1-0-0"},
    {TabbedValue, "Disable Fixed-Rate:"},
    {Command, " auto"},
};

constexpr UsageLine GetUmac[] = {
    {Plain, " Usage (DUMP PLE ,PSE, WPDMA Info):"},
    {TabbedCommand, ""},
    {Plain, " The infomation will dump with kernel logs in Debugview."},
};

constexpr UsageLine Country[] = {
    {Plain, " Usage(Get current country):"},
    {Command, " now"},
    {Plain, " For example"},
    {Command, " now"},
    {Plain, " Usage(Set power table):"},
    {Command, " set_pwr_tbl <country>"},
    {Plain, " For example"},
    {Command, " set_pwr_tbl TW"},
    {Plain, " Usage(Get power table):"},
    {Command, " get_pwr_tbl <rate> <ch>"},
    {Plain, "    rate: cck, ofdm, ht20, ht40, vht20, vht40, vht80, vht160"},
    {Plain, " For example"},
    {Command, " get_pwr_tbl vht80 100"},
    {Plain, " Usage(Set power test mode):"},
    {Command, " set_pwr_test_mode <1/0>"},
    {Plain, "    1: set_pwr_test_mode ON"},
    {Plain, "    0: set_pwr_test_mode OFF"},
    {Plain, " For example"},
    {Command, " set_pwr_test_mode 1"},
    {Plain, " Usage(Enable 6E test mode):"},
    {Command, " set_6g_test_mode <1/0>"},
    {Plain, " For example"},
    {Command, " set_6g_test_mode 1"},
};

constexpr UsageLine Rf[] = {
    {Plain, " Usage (Check RSSI value):"},
    {Command, " rssi <ssid> <threshold>"},
    {Plain, " For example"},
    {Command, " rssi AC1900-5G 60"},
    {Plain, " Usage (Check RSSI value):"},
    {Command, " rssi <radio frequency> <ssid> <threshold>"},
    {Plain, "    radio frequency: all_freq, 2.4g/2.4G, 5g/5G, 6g/6G"},
    {Plain, " For example"},
    {Command, " rssi 5g AC1900-5G 60"},
};

constexpr UsageLine TRx[] = {
    {Plain, " Usage (Set TRx Mode):"},
    {Command, " 1T1R WF0"},
    {Plain, " For example"},
    {Command, " 1T1R WF0"},
    {Command, " 1T1R WF1"},
    {TabbedValue, "Disable TRx Mode:"},
    {Command, " Auto"},
};

constexpr UsageLine Sar[] = {
    {Plain, " Usage (Get ZWDS SAR table):"},
    {Command, " get_sar_table"},
    {Plain, " For example"},
    {Command, " get_sar_table"},
    {Plain, " Usage (Get ZWSS SAR table):"},
    {Command, " get_siso_sar_table"},
    {Plain, " For example"},
    {Command, " get_siso_sar_table"},
    {Plain, " Usage (Get ZWGS SAR table):"},
    {Command, " get_geo_table"},
    {Plain, " For example"},
    {Command, " get_geo_table"},
    {Plain, " Usage (Get ZWCL SAR table):"},
    {Command, " get_country_list"},
    {Plain, " For example"},
    {Command, " get_country_list"},
    {Plain, " Usage (Get Tx Max Power info):"},
    {Command, " get_TxMaxPower_table"},
    {Plain, " For example"},
    {Command, " get_TxMaxPower_table"},
    {Plain, " Usage (Get SAR sensor info):"},
    {Command, " get_sensor_info"},
    {Plain, " For example"},
    {Command, " get_sensor_info"},
    {Plain, " Usage (Get Flag table info):"},
    {Command, " get_FlagTable"},
    {Plain, " For example"},
    {Command, " get_FlagTable"},
};

constexpr UsageLine TxHangCounter[] = {
    {Plain, " Usage (DUMP Tx Hang Counter):"},
    {TabbedCommand, ""},
    {Plain, " The infomation will dump NBL pending count and SER trigger number."},
};

constexpr UsageLine Sniffer[] = {
    {Plain, " Usage (Enable Sniffer Mode):"},
    {Command, " on <radio frequency> <ch> <bw>"},
    {Plain, "    radio frequency: 2.4g/2.4G, 5g/5G, 6g/6G"},
    {Plain, "    bw: bw20, bw40, bw80, bw160"},
    {Plain, " For example"},
    {Command, " on 5g 100 bw80"},
    {Plain, " Usage (Disable Sniffer Mode):"},
    {Command, " off"},
    {Plain, " For example"},
    {Command, " off"},
    {Plain, " Usage (Get received packet number):"},
    {Command, " stast"},
    {Plain, " For example"},
    {Command, " stast"},
};

constexpr UsageLine GetLp[] = {
    {Plain, " Usage (DUMP LowPower Info and Thermal Temperature):"},
    {TabbedCommand, ""},
    {Plain, " The infomation will dump with kernel logs in Debugview."},
};

constexpr UsageLine Ics[] = {
    {Plain, " Usage:"},
    {TabbedCommand, " <Option>"},
    {Plain, "\t Option support 10parameters"},
    {Plain, "\t Option:[Module]-[Action]-[Filter]-[Operation]-"},
    {Plain, "\t        [Condition0]-[Condition1]-[Condition2]-"},
    {Plain, "\t        [Condition3]-[Condition4]-[Condition5]"},
    {Plain, "\t [Module]Set to 2"},
    {Plain, "\t [Action]Off=0, On=1"},
    {Plain, "\t [Filter]No Function"},
    {Plain, "\t [Operation]No Function"},
    {Plain, "\t [Condition0]0:Set Tx by Action, 1:Set Rx by Action,Set Tx/Rx by Action"},
    {Plain, "\t [Condition1]HT/VHT: 0:Long, 1:Short, HE: SGI=0(0.8us), MGI=1(1.6us), LGI=2(3.2us)"},
    {Plain, "\t [Condition2]No Function"},
    {Plain, "\t [Condition3]No Function"},
    {Plain, "\t [Condition4]No Function"},
    {Plain, "\t [Condition5]No Function"},
    {Plain, " For example:"},
    {TabbedValue, "Enable Tx/Rx ICS:"},
    {Command, " 2-1-0-0-2-0-0-0-0-0"},
    {TabbedValue, "Disable Tx/Rx ICS:"},
    {Command, " 2-0-0-0-2-0-0-0-0-0"},
};

constexpr UsageLine NonMs[] = {
    {Plain, " Usage: (<Enable, Disable> LP Support Non-MS Platform )"},
    {Plain, " For example"},
    {Command, " 1 (LP Support Non-MS Platform)"},
    {Command, " 0 (LP DOES NOT Support Non-MS Platform)"},
};

constexpr UsageLine Setreg[] = {
    {Plain, " Usage"},
    {TabbedCommand, " regname regvalue"},
    {TabbedCommand, " TxopLimit 0"},
};

constexpr UsageLine Getreg[] = {
    {Plain, " Usage"},
    {TabbedCommand, " regname"},
    {TabbedCommand, " TxopLimit"},
};

constexpr UsageLine SetPcieDriving[] = {
    {Plain, " Usage (Get PCIE gen and set PCIE driving setting):"},
    {NarrowCommand, ""},
};

constexpr UsageLine ExportRssiReport[] = {
    {Plain, " Usage (Export RSSI Xml File, Check RSSI value):"},
    {Command, " rssi <ssid> <threshold> <xml file path>"},
    {Plain, " Example"},
    {Command, " rssi AC1900-5G 60 test.xml\n"},
    {Plain, " Usage (Export RSSI Xml File, Check RSSI value):"},
    {Command, " rssi <radio frequency> <ssid> <threshold> <xml file path>"},
    {Plain, " Example"},
    {Command, " rssi 5g AC1900-5G 60 test.xml"},
    {Plain, " Note that:"},
    {BeforeProgram, " 1. <threshold>: 0 ~ 127, "},
    {AfterProgram, " would convert threshold to negative value. "},
    {Plain, " 2. <radio frequency>: all_freq, 2.4g/2.4G, 5g/5G"},
    {Plain, " 3. all error would export to error.xml"},
};

constexpr UsageLine Pcie[] = {
    {Plain, " Usage (Check PCIE gen switch):"},
    {Command, " gen_switch_chk"},
    {Plain, " For example"},
    {Command, " gen_switch_chk"},
};

// Commands of the engineering edition only.

constexpr UsageLine BypassCac[] = {
    {Plain, " Usage (Set Bypass CAC Time):"},
    {TabbedCommand, ""},
};

constexpr UsageLine RadarDetect[] = {
    {Plain, " Usage (Set Radar Detect mode Enable(1) or Disable(0)):"},
    {TabbedCommand, ""},
};

constexpr UsageLine RddDbdc[] = {
    {Plain, " Usage (Set Rdd Report DBDC index (1) or (0)):"},
    {HalfTabbedCommand, ""},
};

constexpr UsageLine DynamicDtim[] = {
    {Plain, " Usage:"},
    {Command, " Address Value"},
    {Plain, " For example"},
    {Command, " 1 (enable dynamic dtim)"},
    {Command, " 0 (disable dynamic dtim)"},
};

constexpr UsageLine GetCoexTp[] = {
    {Plain, " Usage:"},
    {TabbedCommand, ""},
};

constexpr UsageLine SetCoexTp[] = {
    {Plain, " Usage:"},
    {TabbedCommand, " [0 or 1 or 2]"},
    {Plain, " For example"},
    {TabbedValue, "Set COEX TP wifi idle"},
    {TabbedCommand, " 0"},
    {TabbedValue, "Set COEX TP wifi TX busy"},
    {TabbedCommand, " 1"},
    {TabbedValue, "Set COEX TP wifi RX busy"},
    {TabbedCommand, " 2"},
};

constexpr UsageLine HwRead[] = {
    {Plain, " Usage:"},
    {Command, " Address"},
    {Plain, " For example"},
    {Command, " 0x00000208"},
    {Command, " 0x80021008"},
};

constexpr UsageLine HwWrite[] = {
    {Plain, " Usage:"},
    {Command, " Address Value"},
    {Plain, " For example"},
    {Command, " 0x00000330 0x12345678"},
    {Command, " 0x80021130 0x87654321"},
};

constexpr UsageLine GetDbgLevel[] = {
    {Plain, " Usage:"},
    {Command, " "},
};

constexpr UsageLine SetDbgLevel[] = {
    {Plain, " Usage:"},
    {Command, " DebugCategory DebugLevel"},
    {Plain, " For example"},
    {Command, " 0xffffffff 0x01"},
};

constexpr UsageLine GetCs[] = {
    {Plain, " Usage:"},
    {Command, " Address"},
    {Plain, " For example"},
    {Command, " 0x90"},
};

constexpr UsageLine SetCs[] = {
    {Plain, " Usage:"},
    {Command, " Address Value"},
    {Plain, " For example"},
    {Command, " 0x90 0x12345678"},
};

constexpr UsageLine GetSrCap[] = {
    {Plain, " Usage (Get Spatial Reuse Capability):"},
    {TabbedCommand, ""},
    {Plain, " The infomation will dump Spatial Reuse Capability."},
};

constexpr UsageLine GetSrInd[] = {
    {Plain, " Usage (Get Spatial Reuse Indication):"},
    {TabbedCommand, ""},
    {Plain, " The infomation will dump Spatial Reuse Indication."},
};

constexpr UsageLine SetSr[] = {
    {Plain, " Usage (Set Spatial Reuse Enable(1) or Disable(0)):"},
    {TabbedCommand, " 1"},
};

constexpr UsageLine Listen6g[] = {
    {Plain, " Usage: (<Enable, Disable> one-shot passive scan with a given 6g <PrimaryChannel> )"},
    {Plain, " For example"},
    {Command, " 1 9 (enable 6g_listen on ch9)"},
    {Command, " 0 9 (disable 6g_listen on ch9)"},
};

constexpr UsageLine SetAxCfg[] = {
    {Plain, " Usage:"},
    {TabbedCommand, " <0Xxxx>"},
    {Plain, "\t bit[0]: Sta2gBandwidth"},
    {Plain, "\t bit[1-3]: Sta5gBandwidth "},
    {Plain, "\t bit[4]: EnableSUBeamformee"},
    {Plain, "\t bit[5]: TxStbc"},
    {Plain, "\t bit[6]: RxStbc"},
    {Plain, "\t bit[7]: TxLdpc"},
    {Plain, "\t bit[8]: RxLdpc"},
    {Plain, "\t bit[9]: HeAmsduInAmpduRx"},
    {Plain, "\t bit[10]: HeAmsduInAmpduTx"},
    {Plain, "\t bit[11 - 31]: Reserved"},
    {Plain, "\tdefault value is 0x7F5"},
};

constexpr UsageLine AxBasize[] = {
    {Plain, " Usage (set ax ba size):"},
    {TabbedCommand, " set_ax_basize (txBAsize) (rxBasize)"},
    {Plain, " The infomation will set_ax_basize must <= 256."},
};

constexpr UsageLine FwLog[] = {
    {Plain, " Usage:"},
    {Command, " 0 [1/2]"},
    {Plain, " For example"},
    {Value, "Log to UART"},
    {Command, " 0 1"},
    {Value, "Log to HOST"},
    {Command, " 0 2"},
};

constexpr UsageLine GetCacTime[] = {
    {Plain, " Usage (Show DFS CAC Time):"},
    {TabbedCommand, ""},
};

constexpr UsageLine GetDfsState[] = {
    {Plain, " Usage (Show DFS State):"},
    {HalfTabbedCommand, ""},
};

constexpr UsageLine TpTestMode[] = {
    {Plain, " Usage:"},
    {Command, " Address Value"},
    {Plain, " For example"},
    {Command, " 1 (enable TP test mode: keep full power, no scan)"},
    {Command, " 0 (disable TP test mode)"},
};

// The driver takes this code, but no command sends it yet.
constexpr UsageLine SetDfsState[] = {
    {Plain, " Usage (Set DFS State):"},
    {Plain, " For example"},
    {HalfTabbedCommand, " 0 (Set DFS state: DFS_STATE_INACTIVE)"},
    {HalfTabbedCommand, " 1 (Set DFS state: DFS_STATE_CHECKING)"},
    {HalfTabbedCommand, " 2 (Set DFS state: DFS_STATE_ACTIVE)"},
    {HalfTabbedCommand, " 3 (Set DFS state: DFS_STATE_DETECTED)"},
};

constexpr UsageLine Efuse[] = {
    {Plain, " Usage:"},
    {Command, " read addr_hex"},
    {Command, " write addr_hex val_hex"},
    {Command, " free"},
    {Plain, " For example"},
    {Command, " read 0x87"},
    {Command, " write 0x87 0x10"},
    {Plain,
     " Notice: please use QA tool to write a continuity of e-fuse address, otherwise consume "
     "free blocks"},
};

constexpr UsageLine StaStat[] = {
    {Plain, " Usage:"},
    {TabbedCommand, ""},
    {Plain, " For example"},
    {TabbedCommand, ""},
};

constexpr UsageLine CoexInfo[] = {
    {Plain, " Usage:"},
    {Command, " 0x81"},
};

constexpr UsageLine Wtbl[] = {
    {Plain, " Usage:"},
    {Command, " <entry index>"},
    {Plain, " For example"},
    {Command, " 1"},
};

constexpr UsageLine Uwtbl[] = {
    {Plain, " Usage"},
    {Plain, " For example (wlanidx)"},
    {Command, " wlanidx "},
};

// clang-format on

constexpr uint32_t KeyOfSetDfsState = 0xFFFCF111;  // no command has it

template <int Count>
constexpr UsageText TextOf(uint32_t oid, const UsageLine (&lines)[Count],
                           UsageEnding ending = UsageEnding::EmptyLine,
                           const char* name = nullptr) {
  return {.Oid = oid, .Ending = ending, .LineCount = Count, .Lines = lines, .Name = name};
}

}  // namespace

constexpr UsageText UsageTexts[] = {
    TextOf(OidResetStatistics, Stat),
    TextOf(OidFixedRate, FixedRate, UsageEnding::EmptyLine, "fixedrate"),
    TextOf(OidWfdText, WordAlone, UsageEnding::None),
    TextOf(OidUmacDump, GetUmac),
    TextOf(OidCountryPower, Country),
    TextOf(OidRssiCheck, Rf),
    TextOf(OidTRxMode, TRx),
    TextOf(OidAcpiTable, Sar),
    TextOf(OidTxHangCounters, TxHangCounter),
    TextOf(OidSniffer, Sniffer),
    TextOf(OidLowPowerInfo, GetLp),
    TextOf(OidIcs, Ics),
    TextOf(OidNonMsLowPower, NonMs),
    TextOf(OidSetRegistry, Setreg),
    TextOf(OidGetRegistry, Getreg),
    TextOf(KeyOfSetPcieDriving, SetPcieDriving),
    TextOf(OidBluetoothVersion, WordAlone),  // get_fw_ver
    TextOf(KeyOfExportRssiReport, ExportRssiReport),
    TextOf(OidGenSwitch, Pcie),
    TextOf(OidSetIdValue, IndexAndValue),
    TextOf(OidBypassCac, BypassCac),
    TextOf(OidRadarDetect, RadarDetect),
    TextOf(OidRddDbdc, RddDbdc),
    TextOf(OidDeepSleepCount, IndexAndValue),
    TextOf(OidDynamicDtim, DynamicDtim),
    TextOf(OidGetCoexTp, GetCoexTp),
    TextOf(OidSetCoexTp, SetCoexTp),
    TextOf(OidReadRegister, Wtbl, UsageEnding::EmptyLine, "wtbl"),
    TextOf(OidReadRegister, HwRead),
    TextOf(OidWriteRegister, HwWrite),
    TextOf(OidGetDebugLevel, GetDbgLevel, UsageEnding::NextText),
    TextOf(OidSetDebugLevel, SetDbgLevel),
    TextOf(OidReadConfigSpace, GetCs),
    TextOf(OidWriteConfigSpace, SetCs),
    TextOf(OidSpatialReuseCap, GetSrCap),
    TextOf(OidSpatialReuseInd, GetSrInd),
    TextOf(OidSetSpatialReuse, SetSr),
    TextOf(Oid6gListen, Listen6g),
    TextOf(OidSetAxConfig, SetAxCfg),
    TextOf(OidAxBaSize, AxBasize),
    TextOf(OidFwLog, FwLog),
    TextOf(OidCacTime, GetCacTime),
    TextOf(OidDfsState, GetDfsState),
    TextOf(OidTpTestMode, TpTestMode),
    TextOf(KeyOfSetDfsState, SetDfsState),
    TextOf(OidEfuse, Efuse),
    TextOf(OidFirmwareVersion, WordAlone),  // get_n9_ver
    TextOf(OidStaStat, StaStat),
    TextOf(OidCoexInfo, CoexInfo),
    TextOf(OidUwtblSummary, Uwtbl),
};

constexpr int UsageTextCount = sizeof(UsageTexts) / sizeof(UsageTexts[0]);
