// Handlers called in this process, with the test's own driver: state that outlives a handler, and
// runs that are too many or too long for cases.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "app/console/print.h"
#include "commands/internal/internal_commands.h"
#include "commands/radio/radio_commands.h"
#include "commands/sar/sar_command.h"
#include "device/device.h"

namespace {

// Returns 0, or the code of a refusal; what it leaves in the payload is the answer.
uint32_t (*Answer)(uint32_t* payload);
std::string Requests;  // a line for each: its code, then its words up to the last that is not 0
uint32_t Refusal;

std::string Hex(uint32_t word) {
  char text[9];
  BoundedPrintf(text, sizeof(text), "%08x", word);
  return text;
}

// Returns what the handler prints, its status and its requests.
template <typename... Words>
std::string AfterRunning(int (*handler)(int, char**), Words... words) {
  std::string texts[] = {"wlanx", words...};
  char* argv[sizeof...(words) + 1];
  for (size_t i = 0; i <= sizeof...(words); i++) argv[i] = texts[i].data();
  Requests.clear();
  testing::internal::CaptureStdout();
  const int status = handler(sizeof...(words) + 1, argv);
  ConsoleFlush();
  return testing::internal::GetCapturedStdout() + "status " + std::to_string(status) + "\n" +
         Requests;
}

uint32_t Accept(uint32_t* /*payload*/) {
  return 0;
}

void ExpectStartAndEnd(const std::string& printed, const std::string& start,
                       const std::string& end) {
  EXPECT_TRUE(printed.starts_with(start) && printed.ends_with(end)) << printed;
}

TEST(FixedRate, IsForOneStationFromUseWcidToApplyAll) {
  const auto numbers = [](int useWcid) {
    return "u4WCID=74565\nu4Mode=1\nu4Bw=0\nu4Mcs=7\nu4VhtNss=1\nu4GI=0\nu4Preamble=0\nu4STBC=0\n"
           "u4LDPC=0\nu4SpeEn=0\nu4HeLTF=0\nu4HeErDCM=0\nu4HeEr106t=0\nfgIsUseWCID=" +
           std::to_string(useWcid) + "\n";
  };
  const char rate[] = "74565-1-0-7-1-0-0-0-0-0";
  Answer = Accept;
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", "usewcid"),
            "nicctl fixedrate UseWCID (not support now!)\nUpdate fgIsUseWCID 1\nstatus 1\n");
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", rate),
            numbers(1) + "Apply WCID 74565\nstatus 1\nfffcf101 a0612345 8000004c\n");
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", "APPLYALL"),
            "nicctl fixedrate ApplyAll\nUpdate fgIsUseWCID 0\nstatus 1\n");
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", rate),
            numbers(0) + "Apply All\nstatus 1\nfffcf101 a0610000 8000004c\n");
}

TEST(FixedRate, DependsOnTheCountOfNumbers) {
  const char help[] = "nicctl fixedrate <Option>\n";
  const char helpEnd[] = "[HE-ER-106]106-tone=1\nstatus 0\n";
  const struct {
    const char* rate;
    const char* start;
    const char* end;
  } rates[] = {
      {"", help, helpEnd},
      {"x", help, helpEnd},
      {"1-2-3", "Update fgIsUseWCID 0\nstatus 1\n", ""},
      {"1-2-0-7-1-1-0-0-0", help, helpEnd},
      {"1-2-0-7-1-1-0-0-0-0-0", help, helpEnd},
      {"1-2-0-7-1-1-0-0-0-0-0-0", help, helpEnd},
      {"1--2-0-0-1-0-0-0-0-0", "Apply All\nError: nicRateHeLtfCheckGi", " failed\nstatus 0\n"},
      {"1-9-0-0-1-0-0-0-0-0", "Apply All\nstatus 1\n", "fffcf101 a0610000 80808240\n"}};
  Answer = Accept;
  for (const auto& [rate, start, end] : rates) {
    const std::string printed = AfterRunning(HandleFixedRateCommand, "fixedrate", rate);
    const std::string mark = "fgIsUseWCID=0\n";
    ExpectStartAndEnd(printed.substr(printed.find(mark) + mark.size()), start, end);
  }
}

TEST(Ics, FirstNumbersHaveTwoCharacters) {
  Answer = Accept;
  const auto run = [](const char* text) { return AfterRunning(HandleIcsCommand, "ics", text); };
  const char end[] = "SNIFFER CMD: Number of PARAMETERS is WRONG\nstatus 1\n";
  ExpectStartAndEnd(run("100-1-1-1"), "ucModule=10\nucAction=0\nucFilter=0\n", end);
  ExpectStartAndEnd(run("2-100-1-1"), "ucModule=2\nucAction=10\nucFilter=0\n", end);
  ExpectStartAndEnd(run("2-1-100-1"), "ucModule=2\nucAction=1\nucFilter=10\nucOperation=0\n", end);
  ExpectStartAndEnd(run("2-1-1-100-1"), "ucModule=2\nucAction=1\nucFilter=1\nucOperation=10\n",
                    end);
  ExpectStartAndEnd(run("2-0-0-0-0-0-0-0-0"), "ucModule=2\n", end);
  ExpectStartAndEnd(run("3-0-0-0-0-0-0-100-0-0-0"), "ucModule=3\n",
                    "PHY ICS partition must less than 0xff\nstatus 1\n");
}

TEST(Sniffer, TakesTheChannelsOfEachBand) {
  Answer = Accept;
  std::string taken;
  for (const char* band : {"2.4g", "5g", "6g"}) {
    taken += std::string(band) + ":";
    for (int channel = -1; channel < 300; channel++) {
      const std::string text = std::to_string(channel);
      AfterRunning(HandleSnifferCommand, "sniffer", "on", band, text, "bw20");
      if (!Requests.empty()) taken += " " + text;
    }
  }
  EXPECT_EQ(
      taken,
      "2.4g: 1 2 3 4 5 6 7 8 9 10 11 12 13 14"
      "5g: 36 40 44 48 52 56 60 64 100 104 108 112 116 120 124 128 132 136 140 144 149 153 157 "
      "161 165"
      "6g: 1 5 9 13 17 21 25 29 33 37 41 45 49 53 57 61 65 69 73 77 81 85 89 93 97 101 105 109 "
      "113 117 121 125 129 133 137 141 145 149 153 157 161 165 169 173 177 181 185 189 193 197 "
      "201 205 209 213 217 221 225 229 233");
}

TEST(Sar, ATableOfTwoRowsShowsItsIndexAdjustedAndEndsWithTheRecord) {
  Answer = [](uint32_t* payload) {
    auto* bytes = reinterpret_cast<uint8_t*>(payload);
    bytes[8] = 18;
    bytes[17] = 255;
    bytes[340] = 8;  // the row in force, and the fourth power of the 54th row
    return uint32_t{0};
  };
  const std::string printed = AfterRunning(HandleSarCommand, "sar", "get_sar_table");
  EXPECT_NE(printed.find("Current SAR Table Index: 8\n"), std::string::npos) << printed;
  EXPECT_NE(printed.find("  Index54 Main: 0x00 0x00 0x00 0x07 0x00\n"), std::string::npos);
  EXPECT_NE(printed.find("Index58 Main: 0x00 0x00 0x00 0x00 0x00\n\nPower"), std::string::npos);
}

TEST(StaStat, NamesModesAndUnits) {
  static uint32_t mode;
  Answer = [](uint32_t* payload) {
    payload[0] = 1;
    payload[7] = mode;
    return uint32_t{0};
  };
  const char* units[] = {"Mbps", "Mbps", "MCS", "MCS", "MCS", ""};
  const char* names[] = {"CCK", "OFDM", "HTMIX", "HTGREENFIELD", "VHT", "UNKNOWN_PHY_MODE"};
  for (mode = 0; mode < 6; mode++) {
    const std::string rate = std::string(" Rate\t\t\t\t\t\t\t\t  = 0 ") + units[mode] + "\n";
    const std::string wanted = "Tx" + rate + "Rx" + rate +
                               "Phy mode\t\t\t\t\t\t\t  = " + names[mode] + "(" +
                               std::to_string(mode) + ")\n";
    EXPECT_NE(AfterRunning(HandleStaStatCommand, "sta_stat").find(wanted), std::string::npos);
  }
}

TEST(CmdString, IsEchoedWholeAndSentUpToItsField) {
  Answer = Accept;
  std::string sent = "319 \nstatus 1\nfffcf013 00030000 0000013f";
  for (int i = 0; i < 79; i++) sent += " 78787878";
  ExpectStartAndEnd(AfterRunning(HandleGetCmdStrCommand, "get_cmd_str", std::string(400, 'x')),
                    "argc = 3 \n", "aucCmd[399] = x \naucCmd[400] =   \n" + sent + " 00787878\n");
}

}  // namespace

bool DeviceOpen(void** /*device*/) {
  return false;
}

bool DeviceRequest(void* /*device*/, uint32_t oid, void* payload, uint32_t length,
                   uint32_t* returned) {
  auto* words = static_cast<uint32_t*>(payload);
  uint32_t used = length / 4;
  while (used > 0 && words[used - 1] == 0) used--;
  Requests += Hex(oid);
  for (uint32_t i = 0; i < used; i++) Requests += " " + Hex(words[i]);
  Requests += "\n";
  *returned = length;
  Refusal = Answer(words);
  return Refusal == 0;
}

bool DeviceClose(void* /*device*/) {
  return true;
}

uint32_t DeviceError() {
  return Refusal;
}
