// Handlers called in this process, over a driver of its own: what outlives a handler, and a run
// with more requests than a case can list.
#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

#include "app/console/print.h"
#include "commands/internal/internal_commands.h"
#include "commands/radio/radio_commands.h"
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

// Every answer is one more than the value that the question carried, one is for another address,
// and the second word of the UMAC entry is refused.
uint32_t CountUp(uint32_t* access) {
  if (access[0] == 0x820C5FC4) return 31;
  if (access[0] == 0x820D7F04) access[0] = 0x12345678;
  access[1]++;
  return 0;
}

TEST(Wtbl, AsksWithTheValueOfTheAnswerBeforeAndPrintsTheAddressOfTheAnswer) {
  std::string printed;
  std::string asked = "fffcf001 820d7f00\n";
  for (uint32_t k = 0; k < 65; k++) {
    const uint32_t address = k < 64 ? 0x820D7F00 + 4 * k : 0x820C5FC0;
    char text[80];
    BoundedPrintf(text, sizeof(text), "%s WTBL -1 EntryDW[%02u] 0x%08x = 0x%08x\n",
                  k < 64 ? "LMAC" : "UMAC", k % 64, k == 1 ? 0x12345678 : address, k + 1);
    printed += text;
    asked += "fffcf001 " + Hex(k == 63 ? 0x820C5FC0 : address + 4) + " " + Hex(k + 1) + "\n";
  }
  Answer = CountUp;
  std::istringstream expected(printed + "Error in DeviceIoControl : 31status 0\n" + asked);
  std::istringstream actual(AfterRunning(HandleWtblCommand, "wtbl", "-1"));
  std::string line;
  for (std::string wanted; std::getline(expected, wanted);) {
    std::getline(actual, line);
    ASSERT_EQ(line, wanted);
  }
  EXPECT_FALSE(std::getline(actual, line)) << line;
}

TEST(FixedRate, IsForOneStationFromUseWcidToApplyAll) {
  const auto numbers = [](int useWcid) {
    return "u4WCID=5\nu4Mode=1\nu4Bw=0\nu4Mcs=7\nu4VhtNss=1\nu4GI=0\nu4Preamble=0\nu4STBC=0\n"
           "u4LDPC=0\nu4SpeEn=0\nu4HeLTF=0\nu4HeErDCM=0\nu4HeEr106t=0\nfgIsUseWCID=" +
           std::to_string(useWcid) + "\n";
  };
  const char rate[] = "5-1-0-7-1-0-0-0-0-0";
  Answer = [](uint32_t* /*payload*/) { return uint32_t{0}; };
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", "UseWCID"),
            "nicctl fixedrate UseWCID (not support now!)\nUpdate fgIsUseWCID 1\nstatus 1\n");
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", rate),
            numbers(1) + "Apply WCID 5\nstatus 1\nfffcf101 a0610105 8000004c\n");
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", "ApplyAll"),
            "nicctl fixedrate ApplyAll\nUpdate fgIsUseWCID 0\nstatus 1\n");
  EXPECT_EQ(AfterRunning(HandleFixedRateCommand, "fixedrate", rate),
            numbers(0) + "Apply All\nstatus 1\nfffcf101 a0610000 8000004c\n");
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
