#include "commands/internal/value_names.h"

#include <cstddef>

namespace {

struct CategoryName {
  uint32_t category;
  const char* name;
};

constexpr CategoryName CategoryNames[] = {
    {0x00000001, "DBG_CAT_INIT"}, {0x00000002, "DBG_CAT_HW"},    {0x00000004, "DBG_CAT_FW"},
    {0x00000008, "DBG_CAT_HIF"},  {0x00000010, "DBG_CAT_FPGA"},  {0x00000020, "DBG_CAT_TEST"},
    {0x00000040, "DBG_CAT_RA"},   {0x00000080, "DBG_CAT_AP"},    {0x00000100, "DBG_CAT_CLIENT"},
    {0x00000200, "DBG_CAT_TX"},   {0x00000400, "DBG_CAT_RX"},    {0x00000800, "DBG_CAT_CFG"},
    {0x00001000, "DBG_CAT_MLME"}, {0x00002000, "DBG_CAT_PROTO"}, {0x00004000, "DBG_CAT_SEC"},
    {0x00008000, "DBG_CAT_PS"},   {0x00010000, "DBG_CAT_POWER"}, {0x00020000, "DBG_CAT_COEX"},
    {0x00040000, "DBG_CAT_P2P"},  {0x00100000, "DBG_CAT_FUNC"},  {0x40000000, "DBG_CAT_RSV1"},
    {0x80000000, "DBG_CAT_RSV2"}, {0xFFFFFFFF, "DBG_CAT_ALL"},
};

constexpr const char* LevelNames[] = {
    "DBG_LVL_OFF",  "DBG_LVL_ERROR", "DBG_LVL_WARN",  "DBG_LVL_TRACE",
    "DBG_LVL_INFO", "DBG_LVL_LOUD",  "DBG_LVL_NOISY",
};

constexpr const char* PhyModeNames[] = {"CCK", "OFDM", "HTMIX", "HTGREENFIELD", "VHT"};

template <size_t Count>
const char* NameAt(const char* const (&names)[Count], uint32_t index, const char* other) {
  return index < Count ? names[index] : other;
}

}  // namespace

const char* DebugCategoryName(uint32_t category) {
  for (const CategoryName& row : CategoryNames) {
    if (row.category == category) return row.name;
  }
  return "Unknown";
}

const char* DebugLevelName(uint32_t level) {
  return NameAt(LevelNames, level, "Unknown");
}

const char* PhyModeName(uint32_t mode) {
  return NameAt(PhyModeNames, mode, "UNKNOWN_PHY_MODE");
}
