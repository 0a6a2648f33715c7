#include "commands/sar/sar_query.h"

#include <cstring>

#include "app/console/print.h"
#include "channel/driver_channel.h"
#include "channel/little_endian.h"
#include "channel/oid.h"
#include "channel/refusals.h"

namespace {

constexpr char MismatchLine[] = "This means your WLANX or Driver is not match.\n";
constexpr char VersionsText[] =
    "Please provide the version of driver and WLANX to VLR. Thanks!!";  // no line end
constexpr char DriverLogLine[] = "Please collect the driver log to VLR. Thanks!!\n";

// What is printed about a refused query after its code.
enum class Advice {
  NotFound,
  Signature,
  NoAcpi,
  Length,
  Mismatch,
  Address,
  NoGuid,
  Other,
};

struct AdviceRow {
  uint32_t errorCode;
  Advice sarTable;
  Advice otherTables;
  Advice sensor;
};

// For a code without a row every view prints Other.
constexpr AdviceRow AdviceByCode[] = {
    {2, Advice::NotFound, Advice::NotFound, Advice::Other},
    {6, Advice::Signature, Advice::Other, Advice::Other},
    {8, Advice::NoAcpi, Advice::NoAcpi, Advice::Other},
    {87, Advice::Length, Advice::Length, Advice::Other},
    {234, Advice::Mismatch, Advice::Mismatch, Advice::Mismatch},
    {487, Advice::Address, Advice::Address, Advice::Other},
    {637, Advice::Other, Advice::Signature, Advice::Other},
    {4200, Advice::Other, Advice::Other, Advice::NoGuid},
};

// The words in the report of a refused query that differ between the views.
struct FailureWords {
  SarView view = {};
  const char* table = nullptr;  // its name in the platform firmware
  const char* otherLine = nullptr;
  Advice AdviceRow::*column = &AdviceRow::otherTables;
  const char* codeHead = "Error Code in DeviceIoControl: ";
};

constexpr FailureWords WordsByView[] = {
    {.view = SarView::SarTable,
     .table = "ZWDS",
     .otherLine = "Cannot find SAR table\n",
     .column = &AdviceRow::sarTable},
    {.view = SarView::SisoSarTable, .table = "ZWSS", .otherLine = "Cannot find SISO SAR table\n"},
    {.view = SarView::GeoTable,
     .table = "ZWGS",
     .otherLine = "Cannot find GEO table\n",
     .codeHead = "Error Code in DeviceIoControl : "},
    {.view = SarView::CountryList,
     .table = "ZWCL",
     .otherLine = "Cannot find ZWCL table\n",
     .codeHead = "Error in DeviceIoControl: "},
    {.view = SarView::TxMaxPowerTable,
     .table = "ZWPL",
     .otherLine = "Cannot find Tx Max Power table\n"},
    {.view = SarView::SensorInfo,
     .table = "",
     .otherLine = "Cannot Read Sensor Data\n",
     .column = &AdviceRow::sensor},
    {.view = SarView::CountryCode, .table = "ZWCC", .otherLine = "Cannot find ZWCC table\n"},
    {.view = SarView::FlagTable, .table = "ZWFG", .otherLine = "Cannot find ZWFG table\n"},
};

static_assert(sizeof(WordsByView) / sizeof(WordsByView[0]) == 8);  // a row for every view

const FailureWords& WordsOf(SarView view) {
  const FailureWords* words = WordsByView;
  while (words->view != view) words++;
  return *words;
}

Advice AdviceFor(const FailureWords& words, uint32_t errorCode) {
  for (const AdviceRow& row : AdviceByCode) {
    if (row.errorCode == errorCode) return row.*words.column;
  }
  return Advice::Other;
}

void PrintAdvice(const FailureWords& words, Advice advice) {
  switch (advice) {
    case Advice::NotFound:
      ConsolePrintf("Cannot find %s in BIOS, please check BIOS CODE. Thanks!!\n", words.table);
      break;
    case Advice::Signature:
      ConsolePrintf(
          "ACPI signature is wrong. Please check the setting of ACPI if correct. Thanks!!\n");
      break;
    case Advice::NoAcpi:
      ConsolePrintf(
          "Driver cannot get ACPI driver correctly. Please check the setting of ACPI if correct. "
          "Thanks!!\n");
      break;
    case Advice::Length:
      ConsolePrintf("The length of %s is wrong, please check BIOS CODE. Thanks!!\n", words.table);
      break;
    case Advice::Mismatch:
      ConsolePrintf("%s%s", MismatchLine, VersionsText);
      break;
    case Advice::Address:
      ConsolePrintf(
          "Driver attempts to access invalid address. Please collect the driver log to VLR. "
          "Thanks!!\n");
      break;
    case Advice::NoGuid:
      ConsolePrintf("Cannot find correct GUID in BIOS, please check BIOS CODE. Thanks!!\n");
      break;
    case Advice::Other:
      ConsolePrintf("%s%s", words.otherLine, DriverLogLine);
      break;
  }
}

struct SizeErrorWords {
  const char* lengthsEnd;
  const char* mismatch;
  const char* versions;
  const char* versionsEnd;
};

// In the order of SizeErrorForm.
constexpr SizeErrorWords WordsByForm[] = {
    {"\n", MismatchLine, VersionsText, "\n"},  // Full
    {"", MismatchLine, VersionsText, "\n"},    // Unbroken
    {"\n", MismatchLine, VersionsText, ""},    // OpenEnd
    {"\n", "", "", ""},                        // Bare
};

}  // namespace

bool IssueSarQuery(const SarLayout& layout, AcpiTableQuery* record, SarView view, uint8_t is6G,
                   uint32_t* errorCode) {
  memset(record->bytes, 0, layout.recordLength);
  WriteU32(record->bytes + SubCmdAt, static_cast<uint32_t>(view));
  record->bytes[Is6GAt] = is6G;

  if (OidRequest(OidAcpiTable, record->bytes, layout.recordLength)) return true;
  *errorCode = DeviceError();
  return false;
}

void PrintSarQueryFailure(SarView view, uint32_t errorCode) {
  const FailureWords& words = WordsOf(view);

  ConsolePrintf("%s%d\n", words.codeHead, static_cast<int>(errorCode));
  PrintAdvice(words, AdviceFor(words, errorCode));
  PrintErrorPageLines();
}

bool FetchSarTable(const SarLayout& layout, AcpiTableQuery* record, SarView view, uint8_t is6G) {
  uint32_t errorCode = 0;
  if (IssueSarQuery(layout, record, view, is6G, &errorCode)) return true;
  PrintSarQueryFailure(view, errorCode);
  return false;
}

uint32_t RowsInRecord(const SarLayout& layout, uint32_t firstRowAt, uint32_t rowLength,
                      uint32_t count) {
  uint32_t room = (layout.recordLength - firstRowAt) / rowLength;
  return count < room ? count : room;
}

void PrintTableSizeError(SizeErrorForm form, uint32_t expected, uint32_t received) {
  const SizeErrorWords& words = WordsByForm[static_cast<int>(form)];
  ConsolePrintf("Return table size error %d %d%s%s%s%s", static_cast<int>(expected),
                static_cast<int>(received), words.lengthsEnd, words.mismatch, words.versions,
                words.versionsEnd);
}
