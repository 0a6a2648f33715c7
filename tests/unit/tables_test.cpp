// Tables of rows: what a row says of itself, and what all rows together show.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "app/console/print.h"
#include "commands/internal/lmac_wtbl.h"
#include "commands/internal/umac_wtbl.h"
#include "commands/internal/value_names.h"

namespace {

// What the wireless table's texts say otherwise than it is, and how it is.
const std::pair<std::string, std::string> Misprints[] = {
    {"HT_AMSDU [101]DW29[30:30]", "HT_AMSDU [1]DW29[30:30]"},
    {"AMSDU_cross_LG [101]DW29[31:31]", "AMSDU_cross_LG [1]DW29[31:31]"},
    {"SNR_RX1 [06]DW31[10:06]", "SNR_RX1 [06]DW31[11:06]"},
    {"banner [10] above [12]", "banner [12] above [12]"}};

// Fields in two pieces. The row has the first; its formatter adds the second.
const std::string TwoPieces[] = {
    "Peer Address [48]DW1[31:00]DW0[15:00] = ", "PN [48]DW1[15:00]DW0[31:00] = ",
    "TID2_SN / AC2_SN [12]DW3[3:0]DW2[31:24] = ", "TID5_SN / AC5_SN [12]DW4[7:0]DW3[31:28] = "};

std::string Corrected(std::string text) {
  for (const auto& [wrong, right] : Misprints) {
    if (text.starts_with(wrong)) text.replace(0, wrong.size(), right);
  }
  return text;
}

uint32_t Mask(const WtblBitRange& bits) {
  return WtblBits(UINT32_MAX, bits.high, bits.low) << bits.low;
}

// The pieces in "NAME [WIDTH]DWn[HIGH:LOW]...DWn[HIGH:LOW] = ", whose widths make up the field's.
std::vector<WtblBitRange> PiecesIn(const std::string& header) {
  std::vector<WtblBitRange> pieces;
  int width = -1, end = 0;
  const char* at = header.c_str() + header.find('[');
  EXPECT_EQ(sscanf(at, "[%d]%n", &width, &end), 1);
  WtblBitRange piece = {};
  for (at += end; sscanf(at, "DW%hhu[%hhu:%hhu]%n", &piece.word, &piece.high, &piece.low, &end) > 2;
       at += end) {
    pieces.push_back(piece);
    width -= piece.high - piece.low + 1;
  }
  EXPECT_STREQ(at, " = ");
  EXPECT_EQ(width, 0) << "the width differs from that of the range";
  return pieces;
}

void CheckTexts(const WtblField& field) {
  const uint32_t largest = WtblBits(UINT32_MAX, field.bits.high, field.bits.low);
  for (const WtblValueText* row = field.texts.begin(); row != field.texts.end(); row++) {
    EXPECT_LE(row->from, row->to) << row->format;
    EXPECT_LE(row->to, largest) << row->format;
    for (const WtblValueText* other = field.texts.begin(); other != row; other++) {
      EXPECT_TRUE(other->to < row->from || row->to < other->from)
          << "values with two texts:" << other->format << " and" << row->format;
    }
  }
}

TEST(Tables, WtblRowsAreWhatTheirHeadersSay) {
  for (const WtblWordGroups groups : {LmacWtblGroups, UmacWtblGroups}) {
    uint32_t used[64] = {};
    for (const WtblWordGroup& group : groups) {
      std::set<unsigned> words;
      for (const WtblField& field : group.fields) {
        SCOPED_TRACE(field.header);
        const std::vector<WtblBitRange> pieces = PiecesIn(Corrected(field.header));
        ASSERT_FALSE(pieces.empty());
        EXPECT_EQ(field.bits.word, pieces[0].word);
        EXPECT_EQ(field.bits.high, pieces[0].high);
        EXPECT_EQ(field.bits.low, pieces[0].low);
        EXPECT_EQ(pieces.size(), 1U + std::count(TwoPieces, std::end(TwoPieces), field.header));
        for (const WtblBitRange& piece : pieces) {
          EXPECT_EQ(used[piece.word] & Mask(piece), 0U) << "another field has some of its bits";
          used[piece.word] |= Mask(piece);
          words.insert(piece.word);
        }
        CheckTexts(field);
      }
      std::string names;
      for (const unsigned word : words)
        names += (word < 10 ? "[0" : "[") + std::to_string(word) + "]";
      EXPECT_EQ(Corrected(std::string("banner ") + group.words + " above " + names),
                "banner " + names + " above " + names);
    }
  }
}

// Compares a text too long to stand here with its digest (FNV-1a), and keeps it in a file beside
// the program.
void ExpectDigest(const std::string& name, const std::string& text, uint64_t expected) {
  uint64_t digest = 0xCBF29CE484222325;
  for (const char character : text) {
    digest = (digest ^ static_cast<unsigned char>(character)) * 0x100000001B3;
  }
  const auto folder = std::filesystem::canonical("/proc/self/exe").parent_path();
  const std::string before = folder / (name + ".before.txt");
  const std::string now = folder / (name + ".now.txt");
  std::ofstream(digest == expected ? before : now) << text;
  EXPECT_EQ(digest, expected) << "Other lines than before are printed. To see which:\n  diff "
                              << before << " " << now
                              << "\nThe first file is written where this test passes: for a build "
                                 "that never did, by\n  git stash; scripts/test; git stash pop\n"
                                 "Where the change is meant, take over the new digest.";
}

// What entries show in which each field of up to six bits takes every value, each word by an order
// of its own, and the wider ones 0 and their two largest.
std::string Decoded(WtblWordGroups groups) {
  std::mt19937 random;
  uint32_t words[67][64];
  for (unsigned k = 0; k < 64; k++) {
    for (unsigned i = 0; i < 64; i++) {
      const auto other = static_cast<unsigned>(random() % (i + 1));
      words[i][k] = words[other][k];
      words[other][k] = 0x41041041 * i ^ 0x4B2D1E37;
    }
    words[64][k] = 0xFFFFFFFF;
    words[65][k] = 0xFEFEFEFE;
    words[66][k] = 0;
  }
  testing::internal::CaptureStdout();
  for (const auto& entry : words) PrintWtblGroups(groups, entry);
  ConsoleFlush();
  return testing::internal::GetCapturedStdout();
}

TEST(Tables, WtblEntries) {
  ExpectDigest("lmac_wtbl", Decoded(LmacWtblGroups), 13099247541277114627U);
  ExpectDigest("umac_wtbl", Decoded(UmacWtblGroups), 12383333638988507730U);
}

// From the first rate on, each whose text is not that of the one before but for the MCS.
constexpr char Rates[] = R"(0/Legacy CCK/long preamble 1M 1/Legacy CCK/long preamble 2M
2/Legacy CCK/long preamble 5.5M 3/Legacy CCK/long preamble 11M 4/Legacy CCK
5/Legacy CCK/short preamble 2M 6/Legacy CCK/short preamble 5.5M 7/Legacy CCK/short preamble 11M
8/Legacy CCK 64/Legacy OFDM 72/Legacy OFDM/48M 73/Legacy OFDM/24M 74/Legacy OFDM/12M
75/Legacy OFDM/6M 76/Legacy OFDM/54M 77/Legacy OFDM/36M 78/Legacy OFDM/18M 79/Legacy OFDM/9M
80/Legacy OFDM 128/HT Mixed mode/MCS# 192/HT Green field mode/MCS# 256/VHT mode/MCS# 320/Resvered
512/HE_SU/MCS# 576/HE_EXT_SU/MCS# 640/HE_TRIG/MCS# 704/HE_MU/MCS# 768/Resvered
)";

TEST(Tables, WtblRates) {
  for (uint32_t streams = 0; streams < 16; streams++) {
    const std::string head =
        "  >> STBC(" + std::to_string(streams / 8) + ")/Nsts(" + std::to_string(streams % 8) + ")";
    std::string rates;
    std::string last;
    for (uint32_t rate = 0; rate < 1024; rate++) {
      char text[100];
      DecodeWtblRate(text, sizeof(text), nullptr, streams << 10 | rate);
      std::string name = text;
      ASSERT_EQ(name.substr(0, head.size()), head);
      const std::string index = "/MCS" + std::to_string(rate % 64);
      if (name.ends_with(index)) name.replace(name.size() - index.size(), index.size(), "/MCS#");
      if (name != last) rates += std::to_string(rate) + name.substr(head.size()) + " ";
      last = name;
    }
    std::string expected = Rates;
    for (char& character : expected) character = character == '\n' ? ' ' : character;
    ASSERT_EQ(rates, expected);
  }
}

TEST(Tables, ValueNames) {
  std::string names;
  for (uint32_t bit = 0; bit < 34; bit++) {
    const uint32_t category = bit < 32 ? 1U << bit : bit - 33;  // all bits, then none
    names += std::to_string(bit) + DebugCategoryName(category) + " ";
  }
  for (uint32_t level = 0; level < 8; level++) names += std::string(DebugLevelName(level)) + " ";
  for (uint32_t mode = 0; mode < 6; mode++) names += std::string(PhyModeName(mode)) + " ";
  EXPECT_EQ(names,
            "0DBG_CAT_INIT 1DBG_CAT_HW 2DBG_CAT_FW 3DBG_CAT_HIF 4DBG_CAT_FPGA 5DBG_CAT_TEST "
            "6DBG_CAT_RA 7DBG_CAT_AP 8DBG_CAT_CLIENT 9DBG_CAT_TX 10DBG_CAT_RX 11DBG_CAT_CFG "
            "12DBG_CAT_MLME 13DBG_CAT_PROTO 14DBG_CAT_SEC 15DBG_CAT_PS 16DBG_CAT_POWER "
            "17DBG_CAT_COEX 18DBG_CAT_P2P 19Unknown 20DBG_CAT_FUNC 21Unknown 22Unknown 23Unknown "
            "24Unknown 25Unknown 26Unknown 27Unknown 28Unknown 29Unknown 30DBG_CAT_RSV1 "
            "31DBG_CAT_RSV2 32DBG_CAT_ALL 33Unknown DBG_LVL_OFF DBG_LVL_ERROR DBG_LVL_WARN "
            "DBG_LVL_TRACE DBG_LVL_INFO DBG_LVL_LOUD DBG_LVL_NOISY Unknown CCK OFDM HTMIX "
            "HTGREENFIELD VHT UNKNOWN_PHY_MODE ");
}

}  // namespace
