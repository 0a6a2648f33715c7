// The rate word and the rules of a fixed rate.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
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
               {{9, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1, 1}, 0x80800257}};
  for (const auto& rate : rates) {
    uint32_t word = Untouched;
    EXPECT_EQ(nicSetFixedRateData(rate.param, &word), 1);
    EXPECT_EQ(word, rate.word);
  }
}

TEST(FixedRate, EveryRateHasItsOwnWord) {
  std::set<uint32_t> words;
  size_t accepted = 0;
  for (uint32_t mode = 0; mode < 14; mode++) {
    const bool he = mode >= 8;
    // Two bits hold the streams of VHT, three those of HE.
    const uint32_t streams = he ? 8 : mode == 4 ? 4 : 1;
    for (uint32_t rest = 0; rest < 5 * 35 * streams; rest++) {
      const uint32_t bw = rest % 5, mcs = rest / 5 % 35, nss = rest / 5 / 35 + 1;
      uint32_t word = Untouched;
      if (nicSetFixedRateData({mode, bw, mcs, nss, 0, 0, 0, 0, 0, 0, 0, 0}, &word) != 1) {
        EXPECT_EQ(word, Untouched);
        continue;
      }
      accepted++;
      words.insert(word);
      EXPECT_EQ(word & 0x83780000, 0x80000000);  // fixed and reserved bits
      EXPECT_EQ((word >> 23 & 1) != 0, he);
      EXPECT_EQ(word >> 6 & (he ? 0x1F : 7), mode);
      EXPECT_TRUE(streams == 1 || (he ? word >> 12 & 7 : word >> 9 & 3) == nss - 1);
    }
  }
  EXPECT_EQ(accepted, 4U * (4 + 8 + 33 + 33 + 4 * 10 + 2 + 4 * 8 * 12));
  EXPECT_EQ(words.size(), accepted);
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
