// `wtbl`: one entry of the wireless table, raw and decoded.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/request_errors.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/lmac_wtbl_fields.h"
#include "commands/internal/umac_wtbl_fields.h"
#include "commands/maintenance/register_access.h"

namespace {

// One of the two register areas that hold the table's entries.
struct EntryArea {
  const char* name;
  uint32_t base;
  uint32_t stride;  // bytes from one entry to the next
  uint32_t words;   // of an entry
};
constexpr EntryArea LmacArea = {"LMAC", 0x820D8000, 0x100, 64};
constexpr EntryArea UmacArea = {"UMAC", 0x820C6000, 0x40, 16};

// Reads and prints the words of one entry. Returns false when the driver refuses one.
bool DumpEntry(const EntryArea& area, int index, RegAccessParam* param, uint32_t* words) {
  const uint32_t entry = area.base + static_cast<uint32_t>(index) * area.stride;
  for (uint32_t k = 0; k < area.words; k++) {
    param->address = entry + 4 * k;
    if (!ReadRegister(param)) {
      PrintRequestError();
      return false;
    }
    words[k] = param->value;
    ConsolePrintf("%s WTBL %02d EntryDW[%02u] 0x%08x = 0x%08x\n", area.name, index, k,
                  param->address, param->value);
  }
  return true;
}

}  // namespace

int HandleWtblCommand(int argc, char** argv) {
  if (argc != 3) {
    ConsolePrintf("nicctl wtbl <entry index>\n");
    return 1;
  }
  int index = 0;
  ScanArgument(argv[2], "%d", &index);

  RegAccessParam param = {};  // what a reply holds goes out again with the next read
  uint32_t lmacWords[LmacArea.words] = {};
  uint32_t umacWords[UmacArea.words] = {};
  if (!DumpEntry(LmacArea, index, &param, lmacWords)) return 0;
  if (!DumpEntry(UmacArea, index, &param, umacWords)) return 0;

  ConsolePrintf("===================== Parsing LMAC WTBL ======================\n");
  PrintWtblGroups(LmacWtblGroups, lmacWords);
  ConsolePrintf("===================== Parsing UMAC WTBL ======================\n");
  PrintWtblGroups(UmacWtblGroups, umacWords);
  return 1;
}
