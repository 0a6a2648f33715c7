// The rate word and the rules of a fixed rate.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "app/console/print.h"
#include "commands/radio/fixed_rate_validation.h"

namespace {

constexpr uint32_t Untouched = 0x12345678;

TEST(FixedRate, KnownWords) {
  struct {
    FixedRateParam param;
    uint32_t word;
  } rates[] = {
      {{.u4Mcs = 3, .u4VhtNss = 1, .u4Preamble = 1}, 0x80000007},
      {{.u4Mode = 4, .u4Bw = 2, .u4Mcs = 9, .u4VhtNss = 2, .u4GI = 1, .u4LDPC = 1}, 0xE8000309},
      {{.u4Mode = 2, .u4Mcs = 15, .u4VhtNss = 2, .u4GI = 1, .u4STBC = 1}, 0xC0000A8F},
      {{.u4Mode = 9, .u4VhtNss = 1, .u4HeErDCM = 2, .u4HeEr106t = 3}, 0x80800257},
      {{.u4Mode = 8, .u4VhtNss = 1, .u4HeErDCM = 1, .u4HeEr106t = 1}, 0x80800200},
      {{.u4Mode = 8, .u4HeLTF = 2}, 0x80817200},
      {{.u4Mode = 4}, 0x80000700},
      {{.u4Mode = 4, .u4VhtNss = 1, .u4STBC = 1}, 0x80000B00},
      {{.u4Mode = 3, .u4Bw = 3, .u4Mcs = 7, .u4GI = 2, .u4STBC = 2, .u4LDPC = 2, .u4SpeEn = 2},
       0xFC000AC7},
      {{.u4Mode = 2, .u4Bw = 1, .u4Mcs = 32, .u4STBC = 1}, 0x840008A0},
      {{.u4Mode = 2, .u4Mcs = 16, .u4STBC = 1}, 0x80000C90},
      {{.u4Mode = 5, .u4Mcs = 1, .u4VhtNss = 3, .u4STBC = 1, .u4SpeEn = 1}, 0x90000941},
      {{.u4Mcs = 3, .u4Preamble = 2, .u4STBC = 1}, 0x80000807}};
  for (const auto& rate : rates) {
    uint32_t word = Untouched;
    EXPECT_EQ(nicSetFixedRateData(rate.param, &word), 1);
    EXPECT_EQ(word, rate.word);
  }
}

TEST(FixedRate, EveryModeHasItsLimitAndItsBits) {
  constexpr uint32_t Limits[] = {4, 8, 33, 33, 10, 2, 0, 0, 12, 12, 12, 12, 0};
  for (uint32_t mode = 0; mode < std::size(Limits); mode++) {
    for (uint32_t mcs = 0; mcs < 35; mcs++) {
      uint32_t word = Untouched;
      const FixedRateParam param = {.u4Mode = mode, .u4Bw = 3, .u4Mcs = mcs, .u4VhtNss = 3};
      ASSERT_EQ(nicSetFixedRateData(param, &word) == 1, mcs < Limits[mode]) << mode << " " << mcs;
      if (mcs >= Limits[mode]) {
        EXPECT_EQ(word, Untouched);
        continue;
      }
      constexpr uint32_t Ofdm[] = {0xB, 0xF, 0xA, 0xE, 0x9, 0xD, 0x8, 0xC};
      const uint32_t streams = mode == 4 || mode >= 8   ? 2
                               : mode == 2 || mode == 3 ? mcs / 8 % 4
                                                        : 0;
      EXPECT_EQ(word, (mode < 8 ? 0x8C000000 | streams << 9 : 0x8C800000 | streams << 12) |
                          mode << 6 | (mode == 1 ? Ofdm[mcs] : mcs));
    }
  }
}

// Returns what is printed about a rate that is wrong.
std::string Refusal(const FixedRateParam& param) {
  uint32_t word = Untouched;
  testing::internal::CaptureStdout();
  EXPECT_EQ(nicSetFixedRateData(param, &word), 0);
  EXPECT_EQ(word, Untouched);
  ConsoleFlush();
  return testing::internal::GetCapturedStdout();
}

TEST(FixedRate, WhatIsWrong) {
  const struct {
    FixedRateParam param;
    const char* text;
  } rates[] = {
      {{.u4Bw = 4}, "Error: Wrong BW! BW20=0, BW40=1, BW80=2,BW160=3\n"},
      {{.u4Mode = 12, .u4VhtNss = 1},
       "Error: Wrong TxMode! CCK=0, OFDM=1, HT=2, GF=3, VHT=4"
       "Error: HE_SU=8, HE_ER_SU=9, HE_TRIG=10, HE_MU=11\n"},
      {{.u4Preamble = 1}, "Error: SP but MCS=0!\n"},
      {{.u4Mode = 8, .u4Mcs = 99, .u4VhtNss = 1, .u4GI = 3},
       "Error: Wrong HE GI! SGI=0, MGI=1, LGI=2\nError: HE_SU mode but wrong MCS(=99)!\n"},
  };
  ConsoleFlush();  // what the tests before have printed
  for (const auto& rate : rates) EXPECT_EQ(Refusal(rate.param), rate.text);
  const char* names[] = {"CCK", "OFDM", "MM",    "GF",    "VHT",     "PLR",
                         "N/A", "N/A",  "HE_SU", "HE_ER", "HE_TRIG", "HE_MU"};
  for (uint32_t mode = 0; mode < 12; mode++) {
    EXPECT_EQ(Refusal({.u4Mode = mode, .u4Mcs = 33, .u4VhtNss = 1}),
              std::string("Error: ") + names[mode] + " mode but wrong MCS(=33)!\n");
  }
}

TEST(FixedRate, HeTrainingFieldAndGuardInterval) {
  // For each pair of LTF (0 to 3) and GI (0 to 3) the HE modes 8, 9, 10, 11 that allow it.
  const char* allowed[] = {"yy--", "--y-", "----", "----", "yy-y", "yyyy", "----", "----",
                           "yy-y", "----", "yyyy", "----", "----", "----", "----", "----"};
  for (uint32_t pair = 0; pair < 16; pair++) {
    for (uint32_t mode = 0; mode < 14; mode++) {
      const bool expected = mode < 8 || (mode < 12 && allowed[pair][mode - 8] == 'y');
      const FixedRateParam param = {
          .u4Mode = mode, .u4VhtNss = 1, .u4GI = pair % 4, .u4HeLTF = pair / 4};
      EXPECT_EQ(nicRateHeLtfCheckGi(param) == 1, expected) << mode << " " << pair;
    }
  }
}

}  // namespace
