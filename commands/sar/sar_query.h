// The record that every `sar` view exchanges with the driver, and the reports of what went wrong.
#pragma once

#include <cstdint>

// One generation of the driver's table record: its length and what it holds where, in bytes.
struct SarLayout {
  uint32_t recordLength;
  uint32_t rowIndexAt;          // ucCurTableIdx
  uint32_t sensorAt;            // u4SensorVersion, -Available, -CbStatus, -ModeIdx, 4 bytes each
  uint32_t updateTimeAt;        // u8LastUpdateTime; 0: the record has none
  uint32_t shortestPowerTable;  // least length of a ZWPL table
  bool hasRatedPowerRows;       // ZWPL tables of version 1 are known
};

constexpr SarLayout Layout176 = {176, 156, 160, 0, 328, false};
constexpr SarLayout Layout184 = {184, 156, 160, 176, 0, true};
constexpr SarLayout Layout368 = {368, 340, 344, 360, 0, true};

// A record of any generation. The shorter ones use its first bytes only.
struct AcpiTableQuery {
  uint8_t bytes[368];
};
static_assert(sizeof(AcpiTableQuery) == Layout368.recordLength);

// What stands at the same place in every generation.
constexpr uint32_t SubCmdAt = 0;    // u4SubCmd, 4 bytes
constexpr uint32_t Is6GAt = 4;      // fgIs6G; in the answer non-zero for a table with 6 GHz bands
constexpr uint32_t TableLenAt = 8;  // u4TableLen, 4 bytes: counted from the signature on
constexpr uint32_t TableAt = 16;    // the platform's table behind its 4-byte signature

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

// Asks the driver for the view's table. `is6G` is 1 where the question is about 6 GHz. Returns
// false when the driver refuses; `*errorCode` then holds the code.
bool IssueSarQuery(const SarLayout& layout, AcpiTableQuery* record, SarView view, uint8_t is6G,
                   uint32_t* errorCode);

// The report of a refused query: the code, what it means for this view, where to look it up.
void PrintSarQueryFailure(SarView view, uint32_t errorCode);

// IssueSarQuery, with PrintSarQueryFailure when the driver refuses.
bool FetchSarTable(const SarLayout& layout, AcpiTableQuery* record, SarView view, uint8_t is6G = 0);

// How many of `count` rows lie wholly inside the record.
uint32_t RowsInRecord(const SarLayout& layout, uint32_t firstRowAt, uint32_t rowLength,
                      uint32_t count);

// How much of the report of a wrong table length a view prints, and with which line ends.
enum class SizeErrorForm { Full, Unbroken, OpenEnd, Bare };

void PrintTableSizeError(SizeErrorForm form, uint32_t expected, uint32_t received);
