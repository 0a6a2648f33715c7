// `sar get_TxMaxPower_table`: ZWPL.
#include "app/console/print.h"
#include "channel/little_endian.h"
#include "commands/sar/row_table.h"
#include "commands/sar/sar_views.h"

namespace {

constexpr uint32_t ZwplLength = 328;  // with all its 80 rows
constexpr uint32_t VersionAt = TableFieldsAt;
constexpr uint32_t RowCountAt = TableFieldsAt + 1;
constexpr uint32_t FirstRowAt = TableFieldsAt + 4;
constexpr uint32_t RowLength = 4;

// By band number. Tables of version 0 have the first two only.
constexpr const char* BandNames[] = {"2.4G", "5G", "6G"};
constexpr uint32_t PlainBands = 2;
constexpr uint32_t RatedBands = 3;

constexpr const char* RateNames[] = {"CCK",   "OFDM",  "HT20",   "HT40",  "VHT20",
                                     "VHT40", "VHT80", "VHT160", "RU26",  "RU52",
                                     "RU106", "RU242", "RU484",  "RU996", "RU996*2"};
constexpr uint32_t RateCount = sizeof(RateNames) / sizeof(RateNames[0]);

// Version 0: band, channel index, power in half decibels, a byte without meaning.
void PrintPlainRow(const uint8_t* row, uint32_t number) {
  if (row[0] >= PlainBands) return;
  ConsolePrintf("Index%d: Band: %s, ChannelIndex: %d, MaxTxPower: %.1f dBm(0x%.2X)\n",
                static_cast<int>(number), BandNames[row[0]], row[1], row[2] / 2.0, row[2]);
}

// Version 1: band, channel index, rate class, power. Here the power is signed.
void PrintRatedRow(const uint8_t* row, uint32_t number) {
  if (row[0] >= RatedBands) return;
  auto power = static_cast<int8_t>(row[3]);
  ConsolePrintf("Index%d: Band: %s, ChannelIndex: %d, Rate: %s, MaxTxPower: %.1f dBm(0x%.2X)\n",
                static_cast<int>(number), BandNames[row[0]], row[1],
                row[2] < RateCount ? RateNames[row[2]] : "Unknown", power / 2.0,
                static_cast<uint32_t>(power));
}

}  // namespace

int ShowTxMaxPowerTable(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::TxMaxPowerTable)) return 1;

  uint32_t length = ReadU32(record.bytes + TableLenAt);
  if (layout.takesShortPowerTables ? length > ZwplLength : length != ZwplLength) {
    PrintTableSizeError(SizeErrorForm::Unbroken, ZwplLength, length);
    return 1;
  }

  uint32_t count = record.bytes[RowCountAt];
  ConsolePrintf("ZWPL Num Of PwrLimit: %d\n", static_cast<int>(count));
  ConsolePrintf("\n");
  ConsolePrintf("Max TX power Limit table:\n");

  uint8_t version = layout.hasRatedPowerRows ? record.bytes[VersionAt] : 0;
  if (version > 1) return 0;
  uint32_t rows = RowsInRecord(layout, FirstRowAt, RowLength, count);
  for (uint32_t i = 0; i < rows; i++) {
    const uint8_t* row = &record.bytes[FirstRowAt + i * RowLength];
    if (version == 0) {
      PrintPlainRow(row, i + 1);
    } else {
      PrintRatedRow(row, i + 1);
    }
  }
  return 0;
}
