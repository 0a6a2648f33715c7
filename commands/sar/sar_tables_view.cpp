// `sar get_sar_table` and `sar get_siso_sar_table`: ZWDS and ZWSS.
#include "app/console/print.h"
#include "channel/little_endian.h"
#include "commands/sar/row_table.h"
#include "commands/sar/sar_views.h"

namespace {

constexpr uint32_t HighestRowIndex = 8;     // one row past the end of a full table is accepted
constexpr uint32_t TwoRowTableLength = 18;  // of a ZWDS table whose rows are counted from 1

constexpr RowTable Zwds = {
    .length = 54,
    .rowCountAt = 17,
    .firstRowAt = 18,
    .linesPerRow = 1,
    .bytesPerLine = 5,
    .firstHead = "SAR Status",
    .kind = "SAR",
    .listHead = "2.4G 5G SAR TX power table:",
    .lineNames = {" Main"},
};
constexpr RowTable Zwds6G = {
    .length = 103,
    .rowCountAt = 18,
    .firstRowAt = 19,
    .linesPerRow = 1,
    .bytesPerLine = 11,
    .firstHead = "SAR Status",
    .kind = "SAR",
    .listHead = "2.4G 5G 6G SAR TX power table:",
    .lineNames = {" Main"},
};
constexpr RowTable Zwss = {
    .length = 94,
    .rowCountAt = 17,
    .firstRowAt = 18,
    .linesPerRow = 2,
    .bytesPerLine = 5,
    .firstHead = "SAR Enable",
    .kind = "SAR",
    .listHead = "SAR TX power table:",
    .lineNames = {" Main", " Aux"},
};

// The bands of a row, in the order of its power bytes. Tables without 6 GHz have the first five.
constexpr const char* BandLabels[] = {
    "2.4GHz:              ", "5G 5150MHz-5350MHz:  ", "5G 5350MHz-5470MHz:  ",
    "5G 5470MHz-5725MHz:  ", "5G 5725MHz-5950MHz:  ", "6G 5945MHz-6165MHz:  ",
    "6G 6165MHz-6405MHz:  ", "6G 6425MHz-6525MHz:  ", "6G 6525MHz-6705MHz:  ",
    "6G 6705MHz-6865MHz:  ", "6G 6875MHz-7125MHz:  ",
};
static_assert(sizeof(BandLabels) / sizeof(BandLabels[0]) == Zwds6G.bytesPerLine);

// Returns false, after a message, for a row that no table has.
bool CheckRowIndex(uint32_t index) {
  if (index <= HighestRowIndex) return true;
  ConsolePrintf(
      "Current SAR Table Index %d is out of range, please check sensor mode value. Thanks!!\n",
      static_cast<int>(index));
  return false;
}

// Spells out the limits of the row in force, band by band.
void PrintPowerLimits(const RowTable& table, const uint8_t* powers) {
  ConsolePrintf("\nPower Limit\n\nANT1/ANT2\n");
  for (uint32_t band = 0; band < table.bytesPerLine; band++) {
    uint8_t main = powers[band];
    ConsolePrintf("%6s %s", "", BandLabels[band]);
    if (table.linesPerRow == 1) {
      ConsolePrintf("%.1f dBm (0x%.2X)\n", main / 2.0, main);
    } else {
      uint8_t aux = powers[table.bytesPerLine + band];
      ConsolePrintf("Main: %.1f dBm (0x%.2X), Aux: %.1f dBm (0x%.2X)\n", main / 2.0, main,
                    aux / 2.0, aux);
    }
  }
}

void PrintTable(const SarLayout& layout, const RowTable& table, const AcpiTableQuery& record,
                uint32_t current) {
  PrintRowTable(layout, table, record, current);
  PrintPowerLimits(table, RowPowers(table, record, current));
}

}  // namespace

int ShowSarTable(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::SarTable)) return 1;

  uint32_t length = ReadU32(record.bytes + TableLenAt);
  uint8_t& index = record.bytes[layout.rowIndexAt];
  // The driver counts the rows of a two-row table from 1. The adjusted index is stored in the
  // record: a list of rows that is long enough to reach that byte shows the adjusted value.
  if (length == TwoRowTableLength) index--;
  if (!CheckRowIndex(index)) return 1;

  bool is6G = record.bytes[Is6GAt] != 0;
  const RowTable& table = is6G ? Zwds6G : Zwds;
  if (length != table.length && (is6G || length != TwoRowTableLength)) {
    PrintTableSizeError(SizeErrorForm::Full, table.length, length);
    return 1;
  }
  PrintTable(layout, table, record, index);
  return 0;
}

int ShowSisoSarTable(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::SisoSarTable)) return 1;

  uint32_t length = ReadU32(record.bytes + TableLenAt);
  if (length != Zwss.length) {
    PrintTableSizeError(SizeErrorForm::Full, Zwss.length, length);
    return 1;
  }
  uint32_t index = record.bytes[layout.rowIndexAt];
  if (!CheckRowIndex(index)) return 1;
  PrintTable(layout, Zwss, record, index);
  return 0;
}
