// `sar get_geo_table`: ZWGS.
#include "app/console/print.h"
#include "channel/little_endian.h"
#include "commands/sar/row_table.h"
#include "commands/sar/sar_views.h"

namespace {

constexpr uint32_t RowIndexEnd = 8;  // more than the five rows of a table

constexpr RowTable Zwgs = {
    .length = 31,
    .rowCountAt = 17,
    .firstRowAt = 18,
    .linesPerRow = 1,
    .bytesPerLine = 4,
    .firstHead = "Geo Table Version",
    .kind = "Geo",
    .listHead = "2.4G 5G Geo TX power table:",
    .lineNames = {""},
};
constexpr RowTable Zwgs6G = {
    .length = 42,
    .rowCountAt = 18,
    .firstRowAt = 19,
    .linesPerRow = 1,
    .bytesPerLine = 6,
    .firstHead = "Geo Table Version",
    .kind = "Geo",
    .listHead = "2.4G 5G 6G Geo TX power table:",
    .lineNames = {""},
};

// The bands of a row, two power bytes each. Tables without 6 GHz have the first two.
constexpr const char* BandNames[] = {"2.4GHz", "5GHz", "6GHz"};
static_assert(sizeof(BandNames) / sizeof(BandNames[0]) == Zwgs6G.bytesPerLine / 2);

void PrintBands(const RowTable& table, const uint8_t* powers) {
  for (size_t band = 0; band < table.bytesPerLine / 2; band++) {
    uint8_t most = powers[2 * band];
    uint8_t delta = powers[2 * band + 1];
    ConsolePrintf("\n%s\n", BandNames[band]);
    ConsolePrintf("%6s Max Power:      %.1f dBm (0x%.2X)\n", "", most / 2.0, most);
    ConsolePrintf("%6s ANT1/2(Delta):  %.1f dBm (0x%.2X)\n", "", delta / 2.0, delta);
  }
}

}  // namespace

int ShowGeoTable(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::GeoTable)) return 1;

  uint32_t index = record.bytes[layout.rowIndexAt];
  if (index >= RowIndexEnd) {
    ConsolePrintf("Invalid table index %d\n", static_cast<int>(index));
    return 1;
  }

  bool is6G = record.bytes[Is6GAt] != 0;
  const RowTable& table = is6G ? Zwgs6G : Zwgs;
  uint32_t length = ReadU32(record.bytes + TableLenAt);
  if (length != table.length) {
    // The report names the length of a table without 6 GHz for both kinds of table.
    PrintTableSizeError(is6G ? SizeErrorForm::Bare : SizeErrorForm::Full, Zwgs.length, length);
    return 1;
  }
  PrintRowTable(layout, table, record, index);
  PrintBands(table, RowPowers(table, record, index));
  return 0;
}
