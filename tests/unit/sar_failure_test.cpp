// Each view's report of each code that has advice of its own, and of codes that have none.
#include <gtest/gtest.h>

#include <string>

#include "app/console/print.h"
#include "channel/refusals.h"
#include "commands/sar/sar_query.h"

namespace {

std::string Report(SarView view, uint32_t code) {
  testing::internal::CaptureStdout();
  PrintSarQueryFailure(view, code);
  ConsoleFlush();
  return testing::internal::GetCapturedStdout();
}

constexpr struct {
  SarView view;
  const char* table;
} Views[] = {{SarView::SarTable, "ZWDS"},    {SarView::SisoSarTable, "ZWSS"},
             {SarView::GeoTable, "ZWGS"},    {SarView::CountryList, "ZWCL"},
             {SarView::SensorInfo, ""},      {SarView::TxMaxPowerTable, "ZWPL"},
             {SarView::CountryCode, "ZWCC"}, {SarView::FlagTable, "ZWFG"}};

// A letter for each view, in the order of Views, names the advice below. '-' is the advice for any
// other code; the cases check its text.
constexpr struct {
  uint32_t code;
  const char* advice;
} Codes[] = {{2, "NNNN-NNN"},   {6, "S-------"},   {8, "AAAA-AAA"},         {87, "LLLL-LLL"},
             {234, "MMMMMMMM"}, {487, "IIII-III"}, {637, "-SSS-SSS"},       {4200, "----G---"},
             {31, "--------"},  {0, "--------"},   {UINT32_MAX, "--------"}};

constexpr const char* Advice[] = {
    "NCannot find %s in BIOS, please check BIOS CODE. Thanks!!\n",
    "LThe length of %s is wrong, please check BIOS CODE. Thanks!!\n",
    "SACPI signature is wrong. Please check the setting of ACPI if correct. Thanks!!\n",
    "ADriver cannot get ACPI driver correctly. Please check the setting of ACPI if correct. "
    "Thanks!!\n",
    "MThis means your WLANX or Driver is not match.\n"
    "Please provide the version of driver and WLANX to VLR. Thanks!!",
    "IDriver attempts to access invalid address. Please collect the driver log to VLR. Thanks!!\n",
    "GCannot find correct GUID in BIOS, please check BIOS CODE. Thanks!!\n"};

TEST(SarQueryFailure, IsReportedByViewAndCode) {
  for (size_t i = 0; i < std::size(Views); i++) {
    const auto& [view, table] = Views[i];
    const std::string other = Report(view, 50);
    const size_t number = other.find("50\n");
    for (const auto& [code, letters] : Codes) {
      std::string expected = other;
      expected.replace(number, 2, std::to_string(static_cast<int>(code)));
      for (const char* advice : Advice) {
        if (*advice != letters[i]) continue;
        const size_t at = expected.find('\n') + 1;
        char text[200];
        BoundedPrintf(text, sizeof(text), advice + 1, table);
        expected.replace(at, expected.find("Or you can") - at, text);
      }
      EXPECT_EQ(Report(view, code), expected);
    }
  }
}

}  // namespace
