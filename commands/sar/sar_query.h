// The record that every `sar` view exchanges with the driver, and the reports of failures.
#pragma once

#include <cstddef>
#include <cstdint>

// The record of OidAcpiTable, in three generations that differ in length.
struct AcpiTableQuery176 {
  uint32_t u4SubCmd;  // question: a SarView
  uint8_t fgIs6G;  // question: 1 if it is about 6 GHz; answer: not 0 for a table with 6 GHz bands
  uint8_t reserved0[3];
  uint32_t u4TableLen;    // answer: bytes of the table
  uint8_t aucTable[144];  // answer: the platform's table, which begins with a 4-byte signature
  uint8_t ucCurTableIdx;  // answer: the row in force, counted from 0
  uint8_t reserved1[3];
  uint32_t u4SensorVersion;
  uint32_t u4SensorAvailable;
  uint32_t u4SensorCbStatus;  // 0: the driver's sensor callback succeeded
  uint32_t u4SensorModeIdx;
};
static_assert(sizeof(AcpiTableQuery176) == 176);
static_assert(offsetof(AcpiTableQuery176, fgIs6G) == 4);
static_assert(offsetof(AcpiTableQuery176, u4TableLen) == 8);
static_assert(offsetof(AcpiTableQuery176, aucTable) == 12);
static_assert(offsetof(AcpiTableQuery176, ucCurTableIdx) == 156);
static_assert(offsetof(AcpiTableQuery176, u4SensorVersion) == 160);
static_assert(offsetof(AcpiTableQuery176, u4SensorModeIdx) == 172);

struct AcpiTableQuery184 {
  uint32_t u4SubCmd;  // question: a SarView
  uint8_t fgIs6G;  // question: 1 if it is about 6 GHz; answer: not 0 for a table with 6 GHz bands
  uint8_t reserved0[3];
  uint32_t u4TableLen;    // answer: bytes of the table
  uint8_t aucTable[144];  // answer: the platform's table, which begins with a 4-byte signature
  uint8_t ucCurTableIdx;  // answer: the row in force, counted from 0
  uint8_t reserved1[3];
  uint32_t u4SensorVersion;
  uint32_t u4SensorAvailable;
  uint32_t u4SensorCbStatus;  // 0: the driver's sensor callback succeeded
  uint32_t u4SensorModeIdx;
  uint64_t u8LastUpdateTime;  // 100 nanosecond ticks since 1601-01-01 00:00 UTC
};
static_assert(sizeof(AcpiTableQuery184) == 184);
static_assert(offsetof(AcpiTableQuery184, fgIs6G) == 4);
static_assert(offsetof(AcpiTableQuery184, u4TableLen) == 8);
static_assert(offsetof(AcpiTableQuery184, aucTable) == 12);
static_assert(offsetof(AcpiTableQuery184, ucCurTableIdx) == 156);
static_assert(offsetof(AcpiTableQuery184, u4SensorVersion) == 160);
static_assert(offsetof(AcpiTableQuery184, u4SensorModeIdx) == 172);
static_assert(offsetof(AcpiTableQuery184, u8LastUpdateTime) == 176);

struct AcpiTableQuery368 {
  uint32_t u4SubCmd;  // question: a SarView
  uint8_t fgIs6G;  // question: 1 if it is about 6 GHz; answer: not 0 for a table with 6 GHz bands
  uint8_t reserved0[3];
  uint32_t u4TableLen;    // answer: bytes of the table
  uint8_t aucTable[328];  // answer: the platform's table, which begins with a 4-byte signature
  uint8_t ucCurTableIdx;  // answer: the row in force, counted from 0
  uint8_t reserved1[3];
  uint32_t u4SensorVersion;
  uint32_t u4SensorAvailable;
  uint32_t u4SensorCbStatus;  // 0: the driver's sensor callback succeeded
  uint32_t u4SensorModeIdx;
  uint64_t u8LastUpdateTime;  // 100 nanosecond ticks since 1601-01-01 00:00 UTC
};
static_assert(sizeof(AcpiTableQuery368) == 368);
static_assert(offsetof(AcpiTableQuery368, fgIs6G) == 4);
static_assert(offsetof(AcpiTableQuery368, u4TableLen) == 8);
static_assert(offsetof(AcpiTableQuery368, aucTable) == 12);
static_assert(offsetof(AcpiTableQuery368, ucCurTableIdx) == 340);
static_assert(offsetof(AcpiTableQuery368, u4SensorVersion) == 344);
static_assert(offsetof(AcpiTableQuery368, u4SensorModeIdx) == 356);
static_assert(offsetof(AcpiTableQuery368, u8LastUpdateTime) == 360);

// A record of any generation. The shorter ones use its first bytes only.
struct AcpiTableQuery {
  uint8_t bytes[sizeof(AcpiTableQuery368)];
};

// Offsets that are the same in every generation.
constexpr uint32_t SubCmdAt = offsetof(AcpiTableQuery176, u4SubCmd);
constexpr uint32_t Is6GAt = offsetof(AcpiTableQuery176, fgIs6G);
constexpr uint32_t TableLenAt = offsetof(AcpiTableQuery176, u4TableLen);
constexpr uint32_t TableFieldsAt = 16;  // where the table's fields begin, after its signature
static_assert(TableFieldsAt == offsetof(AcpiTableQuery176, aucTable) + 4);

// What differs between the generations.
struct SarLayout {
  uint32_t recordLength;
  uint32_t rowIndexAt;  // offset of ucCurTableIdx, and so on
  uint32_t sensorVersionAt;
  uint32_t sensorAvailableAt;
  uint32_t sensorCbStatusAt;
  uint32_t sensorModeIdxAt;
  uint32_t updateTimeAt;       // or NoUpdateTime
  bool takesShortPowerTables;  // whether ZWPL tables may have fewer rows
  bool hasRatedPowerRows;      // whether ZWPL tables may be of version 1
};

constexpr uint32_t NoUpdateTime = 0;

constexpr SarLayout Layout176 = {
    .recordLength = sizeof(AcpiTableQuery176),
    .rowIndexAt = offsetof(AcpiTableQuery176, ucCurTableIdx),
    .sensorVersionAt = offsetof(AcpiTableQuery176, u4SensorVersion),
    .sensorAvailableAt = offsetof(AcpiTableQuery176, u4SensorAvailable),
    .sensorCbStatusAt = offsetof(AcpiTableQuery176, u4SensorCbStatus),
    .sensorModeIdxAt = offsetof(AcpiTableQuery176, u4SensorModeIdx),
    .updateTimeAt = NoUpdateTime,
    .takesShortPowerTables = false,
    .hasRatedPowerRows = false,
};

constexpr SarLayout Layout184 = {
    .recordLength = sizeof(AcpiTableQuery184),
    .rowIndexAt = offsetof(AcpiTableQuery184, ucCurTableIdx),
    .sensorVersionAt = offsetof(AcpiTableQuery184, u4SensorVersion),
    .sensorAvailableAt = offsetof(AcpiTableQuery184, u4SensorAvailable),
    .sensorCbStatusAt = offsetof(AcpiTableQuery184, u4SensorCbStatus),
    .sensorModeIdxAt = offsetof(AcpiTableQuery184, u4SensorModeIdx),
    .updateTimeAt = offsetof(AcpiTableQuery184, u8LastUpdateTime),
    .takesShortPowerTables = true,
    .hasRatedPowerRows = true,
};

constexpr SarLayout Layout368 = {
    .recordLength = sizeof(AcpiTableQuery368),
    .rowIndexAt = offsetof(AcpiTableQuery368, ucCurTableIdx),
    .sensorVersionAt = offsetof(AcpiTableQuery368, u4SensorVersion),
    .sensorAvailableAt = offsetof(AcpiTableQuery368, u4SensorAvailable),
    .sensorCbStatusAt = offsetof(AcpiTableQuery368, u4SensorCbStatus),
    .sensorModeIdxAt = offsetof(AcpiTableQuery368, u4SensorModeIdx),
    .updateTimeAt = offsetof(AcpiTableQuery368, u8LastUpdateTime),
    .takesShortPowerTables = true,
    .hasRatedPowerRows = true,
};

// The views. Each value is the subcommand code that asks the driver for the view's table.
enum class SarView : uint32_t {
  SarTable = 0,
  GeoTable = 1,
  CountryCode = 2,
  TxMaxPowerTable = 3,
  SensorInfo = 4,
  SisoSarTable = 5,
  CountryList = 6,
  FlagTable = 8,
};

// Asks the driver for the view's table. `is6G` is 1 if the question is about 6 GHz. Returns false
// when the driver refuses. `*errorCode` then holds the code.
bool IssueSarQuery(const SarLayout& layout, AcpiTableQuery* record, SarView view, uint8_t is6G,
                   uint32_t* errorCode);

// Prints the report of a refused query: the code, what it means for this view, where to look it up.
void PrintSarQueryFailure(SarView view, uint32_t errorCode);

// IssueSarQuery, with PrintSarQueryFailure when the driver refuses.
bool FetchSarTable(const SarLayout& layout, AcpiTableQuery* record, SarView view, uint8_t is6G = 0);

// How many of `count` rows lie wholly inside the record.
uint32_t RowsInRecord(const SarLayout& layout, uint32_t firstRowAt, uint32_t rowLength,
                      uint32_t count);

// Which lines of the report of a wrong table length a view prints, and with which line ends.
enum class SizeErrorForm { Full, Unbroken, OpenEnd, Bare };

void PrintTableSizeError(SizeErrorForm form, uint32_t expected, uint32_t received);
