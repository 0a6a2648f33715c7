// Every view's report of every code that has one of its own, and of one that has none.
#include <gtest/gtest.h>

#include <string>

#include "app/console/print.h"
#include "channel/request_errors.h"
#include "commands/sar/sar_query.h"

namespace {

template <typename Printer>
std::string Printed(Printer print) {
  testing::internal::CaptureStdout();
  print();
  ConsoleFlush();
  return testing::internal::GetCapturedStdout();
}

struct View {
  SarView view;
  const char* head;
  const char* table;
  const char* otherLine;
};

constexpr View Views[] = {
    {SarView::SarTable, "Error Code in DeviceIoControl: ", "ZWDS", "Cannot find SAR table\n"},
    {SarView::SisoSarTable, "Error Code in DeviceIoControl: ", "ZWSS",
     "Cannot find SISO SAR table\n"},
    {SarView::GeoTable, "Error Code in DeviceIoControl : ", "ZWGS", "Cannot find GEO table\n"},
    {SarView::CountryList, "Error in DeviceIoControl: ", "ZWCL", "Cannot find ZWCL table\n"},
    {SarView::TxMaxPowerTable, "Error Code in DeviceIoControl: ", "ZWPL",
     "Cannot find Tx Max Power table\n"},
    {SarView::SensorInfo, "Error Code in DeviceIoControl: ", "", "Cannot Read Sensor Data\n"},
    {SarView::CountryCode, "Error Code in DeviceIoControl: ", "ZWCC", "Cannot find ZWCC table\n"},
    {SarView::FlagTable, "Error Code in DeviceIoControl: ", "ZWFG", "Cannot find ZWFG table\n"},
};

// A letter for each view in the order of Views; what it stands for is in Advice.
constexpr struct {
  uint32_t code;
  const char* advice;
} Codes[] = {
    {2, "NNNNNONN"},   {6, "SOOOOOOO"},   {8, "AAAAAOAA"},          {87, "LLLLLOLL"},
    {234, "MMMMMMMM"}, {487, "IIIIIOII"}, {637, "OSSSSOSS"},        {4200, "OOOOOGOO"},
    {31, "OOOOOOOO"},  {0, "OOOOOOOO"},   {4294967295, "OOOOOOOO"},
};

std::string Advice(char letter, const View& view) {
  std::string table = view.table;
  switch (letter) {
    case 'N':
      return "Cannot find " + table + " in BIOS, please check BIOS CODE. Thanks!!\n";
    case 'L':
      return "The length of " + table + " is wrong, please check BIOS CODE. Thanks!!\n";
    case 'S':
      return "ACPI signature is wrong. Please check the setting of ACPI if correct. Thanks!!\n";
    case 'A':
      return "Driver cannot get ACPI driver correctly. Please check the setting of ACPI if "
             "correct. Thanks!!\n";
    case 'M':
      return "This means your WLANX or Driver is not match.\n"
             "Please provide the version of driver and WLANX to VLR. Thanks!!";
    case 'I':
      return "Driver attempts to access invalid address. Please collect the driver log to VLR. "
             "Thanks!!\n";
    case 'G':
      return "Cannot find correct GUID in BIOS, please check BIOS CODE. Thanks!!\n";
    default:
      return view.otherLine + std::string("Please collect the driver log to VLR. Thanks!!\n");
  }
}

TEST(SarQueryFailure, IsReportedByViewAndCode) {
  std::string page = Printed(PrintErrorPageLines);
  for (const auto& [code, advice] : Codes) {
    for (size_t i = 0; i < std::size(Views); i++) {
      const View& view = Views[i];
      EXPECT_EQ(Printed([&] { PrintSarQueryFailure(view.view, code); }),
                view.head + std::to_string(static_cast<int>(code)) + "\n" +
                    Advice(advice[i], view) + page);
    }
  }
}

}  // namespace
