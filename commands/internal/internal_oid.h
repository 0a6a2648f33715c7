// The OIDs that only the engineering edition's commands send.
#pragma once

#include <cstdint>

constexpr uint32_t OidCoexInfo = 0xFFFCF003;          // CoexInfoRequest, CoexInfoResponse
constexpr uint32_t OidFwLog = 0xFFFCF004;             // FwLogParam
constexpr uint32_t OidGetDebugLevel = 0xFFFCF008;     // category and level
constexpr uint32_t OidSetDebugLevel = 0xFFFCF009;     // category and level
constexpr uint32_t OidStaStat = 0xFFFCF00A;           // StaLinkStat
constexpr uint32_t OidReadConfigSpace = 0xFFFCF00B;   // ConfigSpaceParam
constexpr uint32_t OidWriteConfigSpace = 0xFFFCF00C;  // ConfigSpaceParam
constexpr uint32_t OidSetCoexTp = 0xFFFCF010;         // state byte in four bytes
constexpr uint32_t OidGetCoexTp = 0xFFFCF011;         // state byte in four bytes
constexpr uint32_t OidSetCmdStr = 0xFFFCF012;         // CmdStringParam
constexpr uint32_t OidGetCmdStr = 0xFFFCF013;         // CmdStringParam
constexpr uint32_t OidDynamicDtim = 0xFFFCF015;       // 32-bit flag
constexpr uint32_t OidSetSpatialReuse = 0xFFFCF019;   // 32-bit flag
constexpr uint32_t OidSpatialReuseCap = 0xFFFCF01A;   // SpatialReuseCap
constexpr uint32_t OidSpatialReuseInd = 0xFFFCF01B;   // SpatialReuseInd
constexpr uint32_t OidEfuse = 0xFFFCF01E;             // EfuseAccessParam
constexpr uint32_t OidLengthTest = 0xFFFCF100;        // any length
constexpr uint32_t OidSetIdValue = 0xFFFCF101;        // id and value in 264 bytes; fixedrate's code
constexpr uint32_t OidSetSer = 0xFFFCF103;            // 32-bit number
constexpr uint32_t OidDeepSleepCount = 0xFFFCF106;    // id and value in 264 bytes
constexpr uint32_t OidUwtblSummary = 0xFFFCF10A;      // UwtblSummary
constexpr uint32_t OidDfsState = 0xFFFCF10B;          // one byte
constexpr uint32_t OidCacTime = 0xFFFCF10C;           // seconds at 4, in 12 bytes
constexpr uint32_t OidRadarDetect = 0xFFFCF10D;       // mode byte at 4, in 8 bytes
constexpr uint32_t OidRddDbdc = 0xFFFCF10E;           // one byte
constexpr uint32_t OidBypassCac = 0xFFFCF10F;         // seconds, in 8 bytes
constexpr uint32_t OidTxBfProfile = 0xFFFCF112;       // TxBfProfileReadParam
constexpr uint32_t OidTxBfProfileDataText = 0xFFFCF113;  // 4096 bytes of text
constexpr uint32_t OidTxBfProfileTagText = 0xFFFCF114;   // 4096 bytes of text
constexpr uint32_t OidSetAxConfig = 0x0FFFC200;          // 32 bits
constexpr uint32_t OidSetBcc = 0x0FFFC201;               // 32-bit number
constexpr uint32_t OidTwtSetup = 0x0FFFC202;             // TwtSetupParam
constexpr uint32_t OidSetBssid = 0x0FFFC204;             // six address bytes
constexpr uint32_t OidAxBaSize = 0x0FFFC205;             // AxBaSizeParam
constexpr uint32_t OidChanPref = 0x0FFFC206;             // ChanPrefParam
constexpr uint32_t OidSetApsd = 0x0FFFC207;              // ApsdParam
constexpr uint32_t OidPowerSave = 0x0FFFC208;            // one byte
constexpr uint32_t OidPowerSaveMode = 0x0FFFC209;        // one byte
constexpr uint32_t OidSetBssid2 = 0x0FFFC20A;            // six address bytes
constexpr uint32_t Oid6gListen = 0x0FFFC20B;             // ListenParam
constexpr uint32_t OidTpTestMode = 0x0FFFC20F;           // 32-bit flag
constexpr uint32_t OidSetUsbSpeed = 0xFFF10155;          // speed byte in four bytes
constexpr uint32_t OidGetUsbSpeed = 0xFF710155;          // one byte
