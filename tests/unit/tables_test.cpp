// Tables with too many lines to spell out, as a whole. Who changes a row on purpose looks at what
// its command shows and takes over the new digest.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "app/console/print.h"
#include "commands/internal/lmac_wtbl.h"
#include "commands/internal/umac_wtbl.h"
#include "commands/internal/value_names.h"

namespace {

// FNV-1a.
uint64_t Digest(const std::string& text) {
  uint64_t digest = 0xCBF29CE484222325;
  for (const char character : text) {
    digest = (digest ^ static_cast<unsigned char>(character)) * 0x100000001B3;
  }
  return digest;
}

// What entries show whose words are all the same: each nibble 0 to F, each single bit.
std::string Decoded(WtblWordGroups groups) {
  testing::internal::CaptureStdout();
  for (uint32_t i = 0; i < 48; i++) {
    uint32_t words[64];
    std::fill(std::begin(words), std::end(words), i < 16 ? 0x11111111 * i : 1U << (i - 16));
    PrintWtblGroups(groups, words);
  }
  ConsoleFlush();
  return testing::internal::GetCapturedStdout();
}

TEST(Tables, WtblFields) {
  EXPECT_EQ(Digest(Decoded(LmacWtblGroups)), 0xFEE5E58F79DBD407);
  EXPECT_EQ(Digest(Decoded(UmacWtblGroups)), 0xB15A4C953DB8CB0D);
}

TEST(Tables, WtblRates) {
  std::string rates;
  for (uint32_t rate = 0; rate < 1 << 14; rate++) {
    char text[100];
    DecodeWtblRate(text, sizeof text, nullptr, rate);
    rates += std::string(text) + "\n";
  }
  EXPECT_EQ(Digest(rates), 0x39D8C0562F295F75);
}

TEST(Tables, ValueNames) {
  std::string names;
  for (uint32_t bit = 0; bit < 34; bit++) {
    const auto value = static_cast<uint32_t>((uint64_t{1} << bit) - (bit > 31 ? 1 : 0));
    for (const auto name : {DebugCategoryName, DebugLevelName, PhyModeName}) {
      names += std::string(name(value)) + name(bit) + "\n";
    }
  }
  EXPECT_EQ(Digest(names), 0x91F501AA05567C2C);
}

}  // namespace
