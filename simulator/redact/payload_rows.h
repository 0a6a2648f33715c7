// What a report keeps of each request's payload, and what it replaces. The comments name the record
// and the fields that do not stay whole. A test compares the rows with the records.
#pragma once

#include <cstdint>

#include "channel/oid.h"
#include "commands/internal/internal_oid.h"

enum class Content : uint8_t {
  Keep,       // codes, lengths, counters, tables
  Address,    // a MAC address
  Name,       // a network name, up to its zero
  Register,   // contents of registers, 32 bits each
  Efuse,      // a block of the efuse
  Text,       // written by the driver, or typed for it
  Label,      // a version, a setting's name: stays and is shown
  WideLabel,  // the same in 16 bits a character
  Keyword,    // in the question a label, in the answer a text
  Index,      // stays in the question, a register in the answer
  Peer,       // an address; after PeerPreference numbers, which stay
};

struct Stretch {
  uint16_t offset;
  uint16_t size;
  Content content;
};

constexpr uint32_t AnyLength = UINT32_MAX;
constexpr uint32_t MostStretches = 8;

// Outside of the stretches only the zeros of a payload stay.
struct PayloadRow {
  uint32_t oid;
  uint32_t length;
  Stretch stretches[MostStretches];  // one without a size ends them
};

// The registers that `set_pcie_driving` decides by: the link's generation and driving.
constexpr uint32_t KeptRegisters[] = {0x74031090, 0x74070A04, 0x74070A08};

constexpr uint8_t PeerPreference = 2;  // CmdId of a channel's preference, four bytes

using enum Content;

constexpr PayloadRow PayloadRows[] = {
    {OidReadRegister, 8, {{0, 4, Keep}, {4, 4, Register}}},   // RegAccessParam: value
    {OidWriteRegister, 8, {{0, 4, Keep}, {4, 4, Register}}},  // RegAccessParam: value
    {OidResetStatistics, 1, {{0, 1, Keep}}},
    {OidStatisticsText, 4096, {{0, 4096, Text}}},
    // N9VersionInfo: aucPlatform, aucVersion, aucManifestDate, aucManifestPlatform, aucPatchDate,
    // aucPatchPlatform
    {OidFirmwareVersion,
     100,
     {{0, 2, Keep},
      {3, 2, Keep},
      {7, 10, Label},
      {17, 19, Label},
      {36, 16, Label},
      {52, 12, Label},
      {68, 16, Label},
      {84, 12, Label}}},
    // CountryPowerRequest: aucCountry, acRate, acSecondText
    {OidCountryPower,
     772,
     {{0, 4, Keep},
      {4, 2, Label},
      {8, 4, Keep},
      {12, 200, Keyword},
      {212, 318, Text},
      {530, 2, Keep}}},
    // RssiCheckRequest: acSsid, aucBssid
    {OidRssiCheck, 68, {{4, 32, Name}, {36, 6, Address}, {42, 22, Keep}}},
    {OidAcpiTable, 176, {{0, 5, Keep}, {8, 149, Keep}, {160, 16, Keep}}},  // AcpiTableQuery176
    {OidAcpiTable, 184, {{0, 5, Keep}, {8, 149, Keep}, {160, 24, Keep}}},  // AcpiTableQuery184
    {OidAcpiTable, 368, {{0, 5, Keep}, {8, 333, Keep}, {344, 24, Keep}}},  // AcpiTableQuery368
    {OidTxHangCounters, 8, {{0, 8, Keep}}},                                // TxHangCounters
    {OidSniffer, 28, {{0, 4, Keep}, {5, 1, Keep}, {8, 5, Keep}, {16, 12, Keep}}},  // SnifferRequest
    {OidLowPowerInfo, 4, {}},
    {OidTRxMode, 4, {{0, 4, Keep}}},      // TRxModeRequest
    {OidFixedRate, 264, {{0, 8, Keep}}},  // FixedRateRequest
    {OidWfdText, 4096, {{0, 4096, Text}}},
    {OidIcs, 80, {{0, 18, Keep}}},          // IcsRequest
    {OidMacAddress, 8, {{0, 6, Address}}},  // MacAddressReply: address
    {OidNonMsLowPower, 4, {{0, 4, Keep}}},
    {OidSetRegistry, 56, {{0, 4, Keep}, {4, 50, Label}}},  // RegistryParam: name
    {OidGetRegistry, 56, {{0, 4, Keep}, {4, 50, Label}}},  // RegistryParam: name
    {OidGenSwitch, 8, {{4, 2, Keep}}},                     // GenSwitchParam
    {OidUmacDump, 4, {}},
    {OidUmacText, 8192, {{0, 8192, Text}}},
    {OidBluetoothVersion, 255, {{0, 255, WideLabel}}},

    {OidCoexInfo, 464, {{0, 464, Keep}}},  // CoexInfoResponse
    {OidFwLog, 4, {{0, 1, Keep}}},         // FwLogParam
    {OidGetDebugLevel, 8, {{0, 8, Keep}}},
    {OidSetDebugLevel, 8, {{0, 8, Keep}}},
    {OidStaStat, 68, {{0, 17, Keep}, {28, 40, Keep}}},           // StaLinkStat
    {OidReadConfigSpace, 8, {{0, 4, Keep}, {4, 4, Register}}},   // ConfigSpaceParam: value
    {OidWriteConfigSpace, 8, {{0, 4, Keep}, {4, 4, Register}}},  // ConfigSpaceParam: value
    {OidSetCoexTp, 4, {{0, 1, Keep}}},                           // CoexTpParam
    {OidGetCoexTp, 4, {{0, 1, Keep}}},
    {OidSetCmdStr, 328, {{2, 4, Keep}, {8, 320, Text}}},  // CmdStringParam: text
    {OidGetCmdStr, 328, {{2, 4, Keep}, {8, 320, Text}}},  // CmdStringParam: text
    {OidDynamicDtim, 4, {{0, 4, Keep}}},
    {OidSetSpatialReuse, 4, {{0, 4, Keep}}},
    {OidSpatialReuseCap, 20, {{8, 12, Keep}}},                 // SpatialReuseCap
    {OidSpatialReuseInd, 32, {{8, 14, Keep}, {24, 8, Keep}}},  // SpatialReuseInd
    // EfuseAccessParam: aucData
    {OidEfuse, 32, {{0, 1, Keep}, {4, 4, Keep}, {12, 16, Efuse}, {28, 2, Keep}}},
    {OidLengthTest, AnyLength, {}},
    {OidSetSer, 4, {{0, 4, Keep}}},
    {OidDeepSleepCount, 264, {{0, 8, Keep}}},
    // UwtblSummary: group to address, packetNumber, wlanIndex, commonSequenceWord, keyWord,
    // amsduWord
    {OidUwtblSummary,
     56,
     {{4, 8, Register},
      {16, 8, Register},
      {24, 4, Index},
      {28, 4, Register},
      {36, 4, Register},
      {44, 4, Register}}},
    {OidDfsState, 1, {{0, 1, Keep}}},
    {OidCacTime, 12, {{4, 4, Keep}}},
    {OidRadarDetect, 8, {{4, 1, Keep}}},
    {OidRddDbdc, 1, {{0, 1, Keep}}},
    {OidBypassCac, 8, {{0, 4, Keep}}},
    {OidTxBfProfile, 68, {{0, 3, Keep}, {6, 2, Keep}}},  // TxBfProfileReadParam
    {OidTxBfProfileDataText, 4096, {{0, 4096, Text}}},
    {OidTxBfProfileTagText, 4096, {{0, 4096, Text}}},
    {OidSetAxConfig, 4, {{0, 4, Keep}}},
    {OidSetBcc, 4, {{0, 4, Keep}}},
    {OidTwtSetup, 12, {{0, 3, Keep}, {4, 8, Keep}}},  // TwtSetupParam
    {OidSetBssid, 6, {{0, 6, Address}}},
    {OidAxBaSize, 4, {{0, 4, Keep}}},                // AxBaSizeParam
    {OidChanPref, 7, {{0, 1, Keep}, {1, 6, Peer}}},  // ChanPrefParam: address
    {OidSetApsd, 1, {{0, 1, Keep}}},                 // ApsdParam
    {OidPowerSave, 1, {{0, 1, Keep}}},
    {OidPowerSaveMode, 1, {{0, 1, Keep}}},
    {OidSetBssid2, 6, {{0, 6, Address}}},
    {Oid6gListen, 4, {{0, 2, Keep}}},  // ListenParam
    {OidTpTestMode, 4, {{0, 4, Keep}}},
    {OidSetUsbSpeed, 4, {{0, 1, Keep}}},  // UsbSpeedParam
    {OidGetUsbSpeed, 1, {{0, 1, Keep}}},
};
