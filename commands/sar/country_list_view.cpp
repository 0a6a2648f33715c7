// `sar get_country_list`: ZWCL.
#include "app/console/print.h"
#include "channel/little_endian.h"
#include "commands/sar/sar_views.h"

namespace {

constexpr uint32_t ZwclLength = 12;
constexpr uint32_t VersionAt = TableFieldsAt;
constexpr uint32_t SettingAt = TableFieldsAt + 1;  // whether 6 GHz is allowed at all
constexpr uint32_t BitmapAt = TableFieldsAt + 2;   // a bit for each country, highest bit first

constexpr const char* CountryListNames[] = {
    "Other Countries", "European Union", "Argentina",      "Australia",     "Azerbaijan",
    "Belarus",         "Bolivia",        "Brazil",         "Canada",        "Chile",
    "China",           "Indonesia",      "Japan",          "Malaysia",      "Mexico",
    "Montenegro ",     "Morocco",        "New Zealand",    "Nigeria",       "Philippines",
    "Russia",          "Serbia ",        "Singapore",      "South Korea",   "Taiwan",
    "Thailand",        "Ukraine",        "United Kingdom", "United States", "Vietnam",
};

}  // namespace

int ShowCountryList(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::CountryList, 1)) return 1;

  uint32_t length = ReadU32(record.bytes + TableLenAt);
  if (length != ZwclLength) {
    PrintTableSizeError(SizeErrorForm::Unbroken, ZwclLength, length);
    return 1;
  }

  ConsolePrintf("The version of table is [0x%x]\n", record.bytes[VersionAt]);
  ConsolePrintf("Support 6G Setting      [0x%x]\n", record.bytes[SettingAt]);
  ConsolePrintf("Support 6G Country Setting:\n");
  uint32_t bit = 0;
  for (const char* name : CountryListNames) {
    bool isSet = (record.bytes[BitmapAt + bit / 8] & (0x80 >> bit % 8)) != 0;
    ConsolePrintf("[%c]  %s\n", isSet ? 'V' : 'X', name);
    bit++;
  }
  ConsolePrintf("\n");
  return 0;
}
