// `coex_info`: the report about how Wi-Fi and Bluetooth share the antenna.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/refusals.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"

namespace {

// The answer of OidCoexInfo.
struct CoexInfoResponse {
  uint32_t selector;    // what was asked for
  uint16_t listLength;  // bytes of the item list
  uint8_t items[458];   // each a CoexInfoItem and its value
};
static_assert(sizeof(CoexInfoResponse) == 464);
static_assert(offsetof(CoexInfoResponse, listLength) == 4);
static_assert(offsetof(CoexInfoResponse, items) == 6);

// The question has the same layout. Only its selector is set.
using CoexInfoRequest = CoexInfoResponse;

// The head of an item; `length` value bytes follow.
struct CoexInfoItem {
  uint8_t id;
  uint8_t length;
};
static_assert(sizeof(CoexInfoItem) == 2);

constexpr uint32_t CoexInfoSelector = 0x81;

// The report as far as it is built.
struct CoexText {
  char text[1024];
  size_t used;  // length of the text; the whole size after something was cut
};

// A text that does not fit is cut, and later ones are dropped.
PRINTF_LIKE(2, 3) void CoexAppend(CoexText* report, const char* format, ...) {
  const size_t room = sizeof(report->text) - report->used;
  if (room == 0) return;
  va_list values;
  va_start(values, format);
  report->used += BoundedVprintf(report->text + report->used, room, format, values);
  va_end(values);
}

void AppendBtProfile(CoexText* report, const char* label, const uint8_t* value) {
  static constexpr const char* Profiles[] = {
      "SCO",      "A2DP", "LINK CONNECTED", "HID",       "PAGE", "INQUIRY", "ESCO", "MULTI HID",
      "BLE SCAN", "ADV",  "ADV DIRECT",     "A2DP SINK", "PAN"};
  unsigned mask = value[0] | static_cast<unsigned>(value[1]) << 8;
  CoexAppend(report, "%-20s : ", label);
  if (mask == 0) CoexAppend(report, "%s\n", "none");
  for (const char* profile : Profiles) {
    if ((mask & 1) != 0) CoexAppend(report, "%s\n", profile);
    mask >>= 1;
  }
}

void AppendNumber(CoexText* report, const char* label, const uint8_t* value) {
  CoexAppend(report, "%-20s : %d\n", label, value[0]);
}

// Bits 4 to 7 of `modes` say for which directions the band has a common action.
void AppendArbitrationBand(CoexText* report, const char* label, unsigned modes) {
  static constexpr const char* Directions[] = {"WF Rx BT Tx", "WF Tx BT Rx", "WF Rx BT Rx",
                                               "WF Tx BT Tx"};
  unsigned bit = 0x10;
  for (const char* direction : Directions) {
    CoexAppend(report, "%-20s : %s %s common action\n", label, direction,
               (modes & bit) != 0 ? "all" : "no");
    label = " ";
    bit <<= 1;
  }
}

void AppendArbitrationMode(CoexText* report, const char* /*label*/, const uint8_t* value) {
  AppendArbitrationBand(report, "InBand ARB mode", value[1]);
  AppendArbitrationBand(report, "OutBand ARB mode", value[3]);
}

void AppendProtectionType(CoexText* report, const char* label, const uint8_t* value) {
  const bool set = (value[0] | value[1] | value[2] | value[3]) != 0;
  CoexAppend(report, "%-20s : %s\n", label, set ? "PS-NULL" : "CTS");
}

// One kind of item; its id is its index.
struct CoexInfoRow {
  const char* label;
  size_t valueLength;  // bytes that `append` reads; the length in the item does not matter
  void (*append)(CoexText* report, const char* label, const uint8_t* value);  // null: not shown
};
constexpr CoexInfoRow CoexInfoItemTable[] = {
    {"Isolation Detection Value", 0, nullptr},
    {"BT Profile", 4, AppendBtProfile},
    {"Rx BA Size", 1, AppendNumber},
    {"ARB Mode", 4, AppendArbitrationMode},
    {"Protection Type", 4, AppendProtectionType},
    {"CFG CoexIsoCtrl", 1, AppendNumber},
    {"CFG CoexModeCtrl", 1, AppendNumber},
    {"CFG FddPerPkt", 1, AppendNumber},
    {"CFG BT FIX POWER", 0, nullptr},
    {"CFG BT FDD GAIN", 0, nullptr},
    {"CFG BT FDD POWER", 0, nullptr},
    {"CFG WF FDD POWER", 0, nullptr},
};
constexpr size_t CoexInfoItemCount = sizeof(CoexInfoItemTable) / sizeof(CoexInfoItemTable[0]);

// Prints the report, or nothing when the list holds an unknown item.
void FormatCoexInfo(const CoexInfoResponse& info) {
  CoexText report = {};
  size_t cursor = 0;
  uint8_t consumed = 0;  // wraps at 256: a longer list may continue to the end of the record
  while (consumed < info.listLength && cursor < sizeof(info.items)) {
    CoexInfoItem item = {info.items[cursor++], 0};
    if (item.id >= CoexInfoItemCount) return;
    if (cursor == sizeof(info.items)) break;  // no length
    item.length = info.items[cursor++];
    consumed = static_cast<uint8_t>(consumed + sizeof(item) + item.length);
    const CoexInfoRow& row = CoexInfoItemTable[item.id];
    if (row.append == nullptr) {
      cursor += item.length;
      continue;
    }
    if (cursor + row.valueLength > sizeof(info.items)) break;
    row.append(&report, row.label, info.items + cursor);
    cursor += row.valueLength;
  }
  ConsolePrintf("%s\n", report.text);
}

}  // namespace

int HandleCoexInfoCommand(int argc, char** argv) {
  if (argc != 3 || !EqualsIgnoreCase(argv[2], "0x81")) return PrintInvalidParameters(0);
  CoexInfoRequest info = {};
  info.selector = CoexInfoSelector;
  if (!OidRequest(OidCoexInfo, &info)) return PrintRequestError(0);
  FormatCoexInfo(info);
  return 1;
}
