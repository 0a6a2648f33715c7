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
  } rates[] = {{{2, 0, 7, 1, 1, 0, 0, 0, 0, 0, 0, 0}, 0xC0000087},
               {{1, 0, 7, 1, 0, 0, 0, 0, 0, 0, 0, 0}, 0x8000004C},
               {{0, 0, 3, 1, 0, 1, 0, 0, 0, 0, 0, 0}, 0x80000007},
               {{4, 2, 9, 2, 1, 0, 0, 1, 0, 0, 0, 0}, 0xE8000309},
               {{2, 0, 15, 2, 1, 0, 1, 0, 0, 0, 0, 0}, 0xC0000A8F},
               {{8, 1, 11, 2, 1, 0, 0, 1, 0, 1, 0, 0}, 0xA482920B},
               {{9, 0, 0, 1, 0, 0, 0, 0, 0, 0, 2, 3}, 0x80800257},
               {{8, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1, 1}, 0x80800200},
               {{8, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 0}, 0x80817200},
               {{4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 0x80000700},
               {{4, 0, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0}, 0x80000B00},
               {{3, 3, 7, 0, 2, 0, 2, 2, 2, 0, 0, 0}, 0xFC000AC7},
               {{2, 1, 32, 0, 0, 0, 1, 0, 0, 0, 0, 0}, 0x840008A0},
               {{2, 0, 16, 0, 0, 0, 1, 0, 0, 0, 0, 0}, 0x80000C90},
               {{5, 0, 1, 3, 0, 0, 1, 0, 1, 0, 0, 0}, 0x90000941},
               {{0, 0, 3, 0, 0, 2, 1, 0, 0, 0, 0, 0}, 0x80000807}};
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
      const FixedRateParam param = {mode, 3, mcs, 3, 0, 0, 0, 0, 0, 0, 0, 0};
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

TEST(FixedRate, WhatIsWrong) {
  const struct {
    FixedRateParam param;
    const char* text;
  } rates[] = {
      {{0, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, "Error: Wrong BW! BW20=0, BW40=1, BW80=2,BW160=3\n"},
      {{12, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0},
       "Error: Wrong TxMode! CCK=0, OFDM=1, HT=2, GF=3, VHT=4"
       "Error: HE_SU=8, HE_ER_SU=9, HE_TRIG=10, HE_MU=11\n"},
      {{0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0}, "Error: SP but MCS=0!\n"},
      {{8, 0, 99, 1, 3, 0, 0, 0, 0, 0, 0, 0},
       "Error: Wrong HE GI! SGI=0, MGI=1, LGI=2\nError: HE_SU mode but wrong MCS(=99)!\n"},
  };
  uint32_t word = Untouched;
  ConsoleFlush();  // what the tests before have printed
  for (const auto& rate : rates) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(nicSetFixedRateData(rate.param, &word), 0);
    ConsoleFlush();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), rate.text);
  }
  const char* names[] = {"CCK", "OFDM", "MM",    "GF",    "VHT",     "PLR",
                         "N/A", "N/A",  "HE_SU", "HE_ER", "HE_TRIG", "HE_MU"};
  for (uint32_t mode = 0; mode < 12; mode++) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(nicSetFixedRateData({mode, 0, 33, 1, 0, 0, 0, 0, 0, 0, 0, 0}, &word), 0);
    ConsoleFlush();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
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
      const FixedRateParam param = {mode, 0, 0, 1, pair % 4, 0, 0, 0, 0, pair / 4, 0, 0};
      EXPECT_EQ(nicRateHeLtfCheckGi(param) == 1, expected) << mode << " " << pair;
    }
  }
}

}  // namespace
