// The private OIDs that the registered commands send. The codes in the command table (app/) are
// keys of the usage texts. They need not be among these.
#pragma once

#include <cstdint>

constexpr uint32_t OidReadRegister = 0xFFFCF001;      // RegAccessParam
constexpr uint32_t OidWriteRegister = 0xFFFCF002;     // RegAccessParam
constexpr uint32_t OidResetStatistics = 0xFFFCF005;   // one flag byte
constexpr uint32_t OidStatisticsText = 0xFFFCF006;    // 4096 bytes of text
constexpr uint32_t OidFirmwareVersion = 0xFFFCF007;   // N9VersionInfo
constexpr uint32_t OidCountryPower = 0xFFFCF014;      // CountryPowerRequest
constexpr uint32_t OidRssiCheck = 0xFFFCF016;         // RssiCheckRequest
constexpr uint32_t OidAcpiTable = 0xFFFCF017;         // AcpiTableQuery
constexpr uint32_t OidTxHangCounters = 0xFFFCF018;    // TxHangCounters
constexpr uint32_t OidSniffer = 0xFFFCF01C;           // SnifferRequest
constexpr uint32_t OidLowPowerInfo = 0xFFFCF01D;      // four bytes without a value
constexpr uint32_t OidTRxMode = 0xFFFCF01F;           // TRxModeRequest
constexpr uint32_t OidFixedRate = 0xFFFCF101;         // FixedRateRequest
constexpr uint32_t OidWfdText = 0xFFFCF102;           // 4096 bytes of text
constexpr uint32_t OidIcs = 0xFFFCF104;               // IcsRequest
constexpr uint32_t OidMacAddress = 0xFFFCF105;        // MacAddressReply
constexpr uint32_t OidNonMsLowPower = 0xFFFCF107;     // one 32-bit flag
constexpr uint32_t OidSetRegistry = 0xFFFCF108;       // RegistryParam
constexpr uint32_t OidGetRegistry = 0xFFFCF109;       // RegistryParam
constexpr uint32_t OidGenSwitch = 0xFFFCF116;         // GenSwitchParam
constexpr uint32_t OidUmacDump = 0x0FFFC203;          // four bytes without a value
constexpr uint32_t OidUmacText = 0x0FFFC20C;          // 8192 bytes of text
constexpr uint32_t OidBluetoothVersion = 0x0FFFC20D;  // 255 bytes of 16-bit text
