// The decoded wireless-table entries as a whole: too many lines to spell out. Who changes a field
// on purpose looks at what `wtbl` shows and takes over the new digest.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "app/console/print.h"
#include "commands/internal/lmac_wtbl_fields.h"
#include "commands/internal/umac_wtbl_fields.h"

namespace {

constexpr size_t MostWords = 64;

std::string Decoded(WtblWordGroups groups, uint32_t word) {
  uint32_t words[MostWords];
  std::fill(std::begin(words), std::end(words), word);
  testing::internal::CaptureStdout();
  PrintWtblGroups(groups, words);
  ConsoleFlush();
  return testing::internal::GetCapturedStdout();
}

// FNV-1a of the lines of entries whose words are all the same: each nibble 0 to F, each single bit.
uint64_t Digest(WtblWordGroups groups) {
  uint64_t digest = 0xCBF29CE484222325;
  const auto add = [&](uint32_t word) {
    for (const char character : Decoded(groups, word)) {
      digest = (digest ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    }
  };
  for (uint32_t nibble = 0; nibble < 16; nibble++) add(0x11111111 * nibble);
  for (uint32_t bit = 0; bit < 32; bit++) add(uint32_t{1} << bit);
  return digest;
}

TEST(Wtbl, EveryFieldShowsItsBits) {
  EXPECT_EQ(Digest(LmacWtblGroups), 0xFEE5E58F79DBD407);
  EXPECT_EQ(Digest(UmacWtblGroups), 0xB15A4C953DB8CB0D);
}

}  // namespace
