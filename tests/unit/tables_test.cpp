// The fields of the wireless table, its rates, and the names of values.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "app/console/print.h"
#include "commands/internal/lmac_wtbl.h"
#include "commands/internal/umac_wtbl.h"
#include "commands/internal/value_names.h"

namespace {

constexpr char Document[] = DOCUMENTS "/wtbl-fields.md";

// A word of the entry that the document's examples show.
uint32_t ExampleWord(uint32_t word) {
  return 0x9E3779B9 * (word + 1);
}

std::string Cell(const std::string& text) {
  std::string cell;
  for (const char character : text) {
    char escaped[8];
    BoundedPrintf(escaped, sizeof(escaped), character & 0x80 ? "\\x%02X" : "%c", character & 0xFF);
    cell += character == '|' ? "\\|" : escaped;
  }
  return cell;
}

std::string Code(const std::string& text) {
  return "`" + Cell(text) + "`";
}

// How the number is printed if that is not 0x%x, and the texts from the lowest value on.
std::string TextsByValue(const WtblField& field) {
  std::map<uint32_t, std::string> texts;
  for (const WtblValueText& row : field.texts) {
    std::string& text = texts[row.from];
    text += std::to_string(row.from);
    if (row.to != row.from) text += "-" + std::to_string(row.to);
    text += ": " + Code(row.format);
    if (row.offset != 0) text += " (value " + std::to_string(row.offset) + ")";
  }
  std::string cell;
  if (field.number != nullptr && *field.number != 0) cell = Code(field.number);
  for (const auto& [from, text] : texts) cell += (cell.empty() ? "" : "<br>") + text;
  return cell;
}

// The part of the field's line between the header and the explanation.
std::string Shown(const WtblField& field) {
  uint32_t words[64];
  for (uint32_t k = 0; k < 64; k++) words[k] = ExampleWord(k);
  testing::internal::CaptureStdout();
  WtblFieldLine(field, words);
  ConsoleFlush();
  const std::string line = testing::internal::GetCapturedStdout();
  const std::string head = std::string(45 - std::string(field.header).size(), ' ') + field.header;
  const std::string end =
      field.explanation == nullptr ? "\n" : std::string("    -- ") + field.explanation + "\n";
  EXPECT_TRUE(line.starts_with(head) && line.ends_with(end)) << line;
  return line.substr(head.size(), line.size() - head.size() - end.size());
}

std::vector<std::string> RowsOf(WtblWordGroups groups) {
  std::vector<std::string> rows;
  for (const WtblWordGroup& group : groups) {
    for (const WtblField& field : group.fields) {
      std::string name = field.header;
      EXPECT_TRUE(name.ends_with(" = ")) << name;
      name.resize(name.size() - 3);
      std::string bits = "DW" + std::to_string(field.bits.word) + "[" +
                         std::to_string(field.bits.high) + ":" + std::to_string(field.bits.low) +
                         "]";
      rows.push_back("| " + std::string(group.words) + " | " + bits + " | " + Code(name) + " | " +
                     TextsByValue(field) + " | " + Code(Shown(field)) + " | " +
                     Cell(field.explanation == nullptr ? "" : field.explanation) + " |");
    }
  }
  return rows;
}

// With UPDATE_DOCUMENTS in the environment the document gets the rows instead.
TEST(Tables, WtblFieldsAreThoseOfTheDocument) {
  const std::vector<std::string> tables[] = {RowsOf(LmacWtblGroups), RowsOf(UmacWtblGroups)};
  std::ifstream file(Document);
  std::vector<std::string> documented, expected;
  size_t table = 0;
  for (std::string line; std::getline(file, line);) {
    documented.push_back(line);
    if (line.starts_with("| [")) continue;
    expected.push_back(line);
    if (!line.starts_with("|---|---|---")) continue;
    ASSERT_LT(table, std::size(tables));
    expected.insert(expected.end(), tables[table].begin(), tables[table].end());
    table++;
  }
  ASSERT_EQ(table, std::size(tables)) << Document << " has to have a table for each part";
  if (getenv("UPDATE_DOCUMENTS") != nullptr) {
    std::ofstream document(Document);
    for (const std::string& line : expected) document << line << "\n";
    GTEST_SKIP() << Document << " is written anew";
  }
  for (size_t i = 0; i < documented.size() && i < expected.size(); i++) {
    ASSERT_EQ(documented[i], expected[i]) << Document << ":" << i + 1;
  }
  EXPECT_EQ(documented.size(), expected.size()) << Document;
}

// Each rate whose text differs from that of the rate before it by more than the MCS.
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
  EXPECT_EQ(names,
            "0DBG_CAT_INIT 1DBG_CAT_HW 2DBG_CAT_FW 3DBG_CAT_HIF 4DBG_CAT_FPGA 5DBG_CAT_TEST "
            "6DBG_CAT_RA 7DBG_CAT_AP 8DBG_CAT_CLIENT 9DBG_CAT_TX 10DBG_CAT_RX 11DBG_CAT_CFG "
            "12DBG_CAT_MLME 13DBG_CAT_PROTO 14DBG_CAT_SEC 15DBG_CAT_PS 16DBG_CAT_POWER "
            "17DBG_CAT_COEX 18DBG_CAT_P2P 19Unknown 20DBG_CAT_FUNC 21Unknown 22Unknown 23Unknown "
            "24Unknown 25Unknown 26Unknown 27Unknown 28Unknown 29Unknown 30DBG_CAT_RSV1 "
            "31DBG_CAT_RSV2 32DBG_CAT_ALL 33Unknown DBG_LVL_OFF DBG_LVL_ERROR DBG_LVL_WARN "
            "DBG_LVL_TRACE DBG_LVL_INFO DBG_LVL_LOUD DBG_LVL_NOISY Unknown ");
}

}  // namespace
