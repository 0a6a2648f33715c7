// The console helpers: formatted text, the argument scanner, names and comparisons.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "platform/clock.h"

namespace {

TEST(Scan, ReadsNumbersAsTheCLibraryDoes) {
  std::istringstream texts(
      "|12abc| +7|-1|- 1|abc|  |4294967297|1A|0X1A|0x1a|0x0x1F|0x123456789|99999999999999999999|"
      "-99999999999999999999|0xfffffffffffffffff|-ffffffffffffffff|0x0x1234567|ff-1|12-x|");
  for (std::string text; std::getline(texts, text, '|');) {
    for (const char* format : {"%d", "%u", "%x", "0x%x", "0x%08x", "%x-%x"}) {
      uint32_t values[] = {99, 99};
      uint32_t expected[] = {99, 99};
      EXPECT_EQ(ScanArgument(text.c_str(), format, &values[0], &values[1]),
                sscanf(text.c_str(), format, &expected[0], &expected[1]));
      EXPECT_EQ(memcmp(values, expected, sizeof(values)), 0) << text << " by " << format;
    }
  }
  // A prefix without a digit is no number here.
  uint32_t value = 99;
  EXPECT_EQ(ScanArgument("0x", "0x%x", &value), -1);
  EXPECT_EQ(ScanArgument("0x", "%x", &value), 0);
  EXPECT_EQ(ScanArgument("0xg", "%x", &value), 0);
  EXPECT_EQ(value, 99U);
  EXPECT_EQ(ScanArgument("0x-1", "0x%x", &value), 1);
  EXPECT_EQ(value, 0xFFFFFFFF);
}

TEST(Scan, StoresNoMoreThanTheTarget) {
  uint8_t bytes[4] = {9, 9, 9, 9};
  EXPECT_EQ(ScanArgument("100", "%2hhd", &bytes[1]), 1);
  EXPECT_EQ(ScanArgument(" -12", "%2hhd", &bytes[2]), 1);
  EXPECT_EQ(memcmp(bytes, "\x09\x0a\xff\x09", 4), 0);
  uint16_t halves[3] = {9, 9, 9};
  EXPECT_EQ(ScanArgument("65537-100", "%hd-%hx", &halves[0], &halves[1]), 2);
  EXPECT_TRUE(halves[0] == 1 && halves[1] == 0x100 && halves[2] == 9);
  char word[8] = "#######";
  EXPECT_EQ(ScanArgument("abcde", "%s", word, 5U), 0);
  EXPECT_STREQ(word, "#######");
  EXPECT_EQ(ScanArgument("  abcd ef", "%s", word, 5U), 1);
  EXPECT_TRUE(strcmp(word, "abcd") == 0 && word[5] == '#');
  EXPECT_EQ(ScanArgument("  ", "%s", word, 5U), -1);
}

TEST(Scan, ParsesIntegersLikeAtoi) {
  for (const char* text : {"12x", "off", "", " \t-3", "+4", "0x5"}) {
    EXPECT_EQ(ParseInteger(text), atoi(text)) << text;
  }
  EXPECT_EQ(ParseInteger("2147483648"), INT32_MAX);
  EXPECT_EQ(ParseInteger("99999999999999999999999"), INT32_MAX);
  EXPECT_EQ(ParseInteger("-2147483649"), INT32_MIN);
}

TEST(Clock, ConvertsUpToTheYear3000) {
  const int64_t last = 32535215999;  // in UTC; 3000 or 3001 elsewhere
  EXPECT_GE(LocalCalendarTime(last).year, 3000);
  EXPECT_EQ(LocalCalendarTime(last).second, 59);
  EXPECT_EQ(LocalCalendarTime(0).second, 0);
  for (const int64_t refused : {last + 1, int64_t{-1}}) {
    const CalendarTime time = LocalCalendarTime(refused);
    EXPECT_EQ(time.year, 1899);
    EXPECT_EQ(time.month, 0);
    EXPECT_EQ(time.day & time.hour & time.minute & time.second, -1);
  }
}

TEST(Text, NamesAndComparisons) {
  struct {
    const char* path;
    const char* name;
  } cases[] = {{R"(C:\tools\my.tool.exe)", "my.tool"},
               {"tool", "tool"},
               {".hidden", ".hidden"},
               {"a.", "a"},
               {R"(a.b\c)", "c"},
               {"/x.y/tool", "/x"},
               {"", ""},
               {R"(dir\)", ""}};
  for (auto& c : cases) {
    char name[ProgramNameSize];
    ProgramBaseName(c.path, name);
    EXPECT_STREQ(name, c.name) << c.path;
  }
  EXPECT_TRUE(EqualsIgnoreCase("STat", "stAT"));
  EXPECT_FALSE(EqualsIgnoreCase("stat", "stats"));
  EXPECT_FALSE(EqualsIgnoreCase("a[", "A{"));
}

TEST(Text, ACopyThatDoesNotFitEndsTheProcess) {
  char target[4];
  CopyText(target, sizeof(target), "abc");
  EXPECT_STREQ(target, "abc");
  EXPECT_EXIT(CopyText(target, sizeof(target), "abcd"), testing::ExitedWithCode(3), "^$");
  std::string longName(ProgramNameSize, 'a');
  char name[ProgramNameSize];
  EXPECT_EXIT(ProgramBaseName(longName.c_str(), name), testing::ExitedWithCode(3), "^$");
  ProgramBaseName(longName.c_str() + 1, name);
  EXPECT_EQ(strlen(name), ProgramNameSize - 1);
}

}  // namespace
