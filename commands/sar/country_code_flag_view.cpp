// `sar get_country_code` and `sar get_FlagTable`: ZWCC and ZWFG.
#include <cstring>

#include "app/console/print.h"
#include "channel/little_endian.h"
#include "commands/sar/sar_views.h"

namespace {

// ZWCC
constexpr uint32_t ZwccLength = 8;
constexpr uint32_t ForceAt = TableFieldsAt;            // how the country is forced
constexpr uint32_t CountryCodeAt = TableFieldsAt + 2;  // 2 bytes, first letter in the high byte

// ZWFG
constexpr uint32_t FlagCountAt = TableFieldsAt + 2;
constexpr uint32_t FirstFlagAt = TableFieldsAt + 4;

}  // namespace

int ShowCountryCode(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::CountryCode)) return 1;

  uint32_t length = ReadU32(record.bytes + TableLenAt);
  if (length != ZwccLength) {
    PrintTableSizeError(SizeErrorForm::OpenEnd, ZwccLength, length);
    return 1;
  }
  ConsolePrintf("Country Code is [0x%x]\n", ReadU16(record.bytes + CountryCodeAt));
  ConsolePrintf("Force value     [0x%X]\n", record.bytes[ForceAt]);
  ConsolePrintf("\n");
  return 0;
}

int ShowFlagTable(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::FlagTable)) return 1;

  uint32_t count = RowsInRecord(layout, FirstFlagAt, 1, record.bytes[FlagCountAt]);
  // The one known flag is on when any flag byte is zero.
  bool isOn = memchr(record.bytes + FirstFlagAt, 0, count) != nullptr;
  ConsolePrintf("[Flag %2d]%sDisable 2.4G channel 12 & 13 when country code is US or CA.\n", 0,
                isOn ? "[ON]: " : "[OFF]: ");
  return 0;
}
