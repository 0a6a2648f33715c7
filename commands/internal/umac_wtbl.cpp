// The fields of the UMAC part of a wireless-table entry, and `uwtbl`: a summary of it.
#include "commands/internal/umac_wtbl.h"

#include <cinttypes>
#include <cstddef>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "channel/refusals.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"

// The fields of an entry, for `wtbl`.
namespace {

// Prints the bytes without leading zeros and without separators, the most significant one first.
void PacketNumber(char* text, size_t size, const uint32_t* words, uint32_t /*value*/) {
  BoundedPrintf(text, size, "0x%x%x%x%x%x%x", WtblBits(words[1], 15, 8), WtblBits(words[1], 7, 0),
                WtblBits(words[0], 31, 24), WtblBits(words[0], 23, 16), WtblBits(words[0], 15, 8),
                WtblBits(words[0], 7, 0));
}

// Prints only four of the eight low bits, as two digits.
void Tid2SequenceNumber(char* text, size_t size, const uint32_t* words, uint32_t value) {
  BoundedPrintf(text, size, "0x%01x%02x", value, WtblBits(words[2], 27, 24));
}

void Tid5SequenceNumber(char* text, size_t size, const uint32_t* words, uint32_t value) {
  BoundedPrintf(text, size, "0x%02x%01x", value, WtblBits(words[3], 31, 28));
}

// The length is a number of 256-byte steps.
void HardwareAmsdu(char* text, size_t size, const uint32_t* /*words*/, uint32_t value) {
  const int length = static_cast<int>(WtblBits(value, 5, 0));
  BoundedPrintf(text, size, "  >> AMSDU_LEN = %d (%d ~ %d bytes), AMSDU_NUM = %u, AMSDU_EN = %u",
                length, length * 256 - 256, length * 256 - 1, WtblBits(value, 8, 6),
                WtblBits(value, 9, 9));
}

constexpr WtblWordGroup DecodeUwtblDw0Dw1 = {
    "[00][01]",
    {{.header = "PN [48]DW1[15:00]DW0[31:00] = ",
      .bits = {1, 15, 0},
      .explanation = "Packet Number. Increase when transmitting a encrypted MPDU",
      .number = "",
      .formatter = PacketNumber},
     {"COM_SN [12]DW1[27:16] = ",
      {1, 27, 16},
      {},
      "Common Sequence Number. Sequence Number for non-QoS MPDU/MMPDU, Increase when transmitting "
      "a MPDU."}},
};

constexpr WtblWordGroup DecodeUwtblDw2To4 = {
    "[02][03][04]",
    {{.header = "TID0_SN / AC0_SN [12]DW2[11:00] = ",
      .bits = {2, 11, 0},
      .explanation = "Sequence Number for TID0 (11n STA) or AC0 (non-11n STA), The same as COM_SN.",
      .number = "0x%03x"},
     {.header = "TID1_SN / AC1_SN [12]DW2[23:12] = ",
      .bits = {2, 23, 12},
      .explanation = "Sequence Number for TID1 (11n STA) or AC1 (non-11n STA), The same as COM_SN.",
      .number = "0x%03x"},
     {.header = "TID2_SN / AC2_SN [12]DW3[3:0]DW2[31:24] = ",
      .bits = {3, 3, 0},
      .explanation = "Sequence Number for TID2 (11n STA) or AC2 (non-11n STA), The same as COM_SN.",
      .number = "",
      .formatter = Tid2SequenceNumber},
     {.header = "TID3_SN / AC3_SN [12]DW3[15:4] = ",
      .bits = {3, 15, 4},
      .explanation = "Sequence Number for TID3 (11n STA) or AC3 (non-11n STA), The same as COM_SN.",
      .number = "0x%03x"},
     {.header = "TID4_SN / AC4_SN [12]DW3[27:16] = ",
      .bits = {3, 27, 16},
      .explanation = "Sequence Number for TID4 (11n STA) or AC4 (non-11n STA), The same as COM_SN.",
      .number = "0x%03x"},
     {.header = "TID5_SN / AC5_SN [12]DW4[7:0]DW3[31:28] = ",
      .bits = {4, 7, 0},
      .explanation = "Sequence Number for TID5 (11n STA) or AC5 (non-11n STA), The same as COM_SN.",
      .number = "",
      .formatter = Tid5SequenceNumber},
     {.header = "TID6_SN / AC6_SN [12]DW4[19:8] = ",
      .bits = {4, 19, 8},
      .explanation = "Sequence Number for TID6 (11n STA) or AC6 (non-11n STA), The same as COM_SN.",
      .number = "0x%03x"},
     {.header = "TID7_SN / AC7_SN [12]DW4[31:20] = ",
      .bits = {4, 31, 20},
      .explanation = "Sequence Number for TID7 (11n STA) or AC7 (non-11n STA), The same as COM_SN.",
      .number = "0x%03x"}},
};

constexpr WtblWordGroup DecodeUwtblDw5Dw6 = {
    "[05][06]",
    {{"Key_loc0 [11]DW5[10:00] = ",
      {5, 10, 0},
      {},
      "Key Location 0,.The location of key table to store cipher/mic key. To use a key entry, "
      "user MUST perform the key initial procedure."},
     {"Key_loc1 [11]DW5[26:16] = ",
      {5, 26, 16},
      {},
      "Key Location 1,.The location of key table to store cipher/mic key. To use a key entry, "
      "user MUST perform the key initial procedure."},
     {"QoS [01]DW5[27:27] = ", {5, 27, 27}, {}, "SHOULD be the same as LMAC WTBL.QoS."},
     {"HT or above [01]DW5[28:28] = ",
      {5, 28, 28},
      {},
      "SHOULD be the same as LMAC WTBL.HT | WTBL.VHT | WTBL.HE."},
     {.header = "HW_AMSDU_CFG [10]DW6[9:0] = ",
      .bits = {6, 9, 0},
      .explanation = "Configuration for hardware mode A-MSDU.",
      .formatter = HardwareAmsdu}},
};

}  // namespace

constexpr WtblWordGroups UmacWtblGroups = {DecodeUwtblDw0Dw1, DecodeUwtblDw2To4, DecodeUwtblDw5Dw6};

// `uwtbl`: the driver's summary of the entry.
namespace {

// OidUwtblSummary.
struct UwtblSummary {
  uint32_t reserved0;
  uint32_t group;    // of the entry
  uint32_t address;  // of the entry, in the chip's register space
  uint32_t reserved12;
  uint64_t packetNumber;
  uint32_t wlanIndex;           // request; the reply puts the entry's first word here
  uint32_t commonSequenceWord;  // number in bits 27:16
  uint32_t reserved32;
  uint32_t keyWord;  // key locations in bits 10:0 and 26:16, QoS in 27, HT in 28
  uint32_t reserved40;
  uint32_t amsduWord;  // hardware A-MSDU configuration in bits 9:0
  uint32_t reserved48[2];
};
static_assert(sizeof(UwtblSummary) == 56);
static_assert(offsetof(UwtblSummary, group) == 4);
static_assert(offsetof(UwtblSummary, packetNumber) == 16);
static_assert(offsetof(UwtblSummary, wlanIndex) == 24);
static_assert(offsetof(UwtblSummary, keyWord) == 36);
static_assert(offsetof(UwtblSummary, amsduWord) == 44);

void PrintUwtblSummary(const UwtblSummary& summary) {
  const uint32_t keyLocation0 = WtblBits(summary.keyWord, 10, 0);
  const uint32_t keyLocation1 = WtblBits(summary.keyWord, 26, 16);
  ConsolePrintf("UMAC WTBL Addr: group: 0x%x=0x0 addr: 0x%x\n", summary.group, summary.address);
  ConsolePrintf("UWTBL DW 0,1\n\tpn:%" PRIu64 "\n\tcom_sn:%u\n", summary.packetNumber,
                WtblBits(summary.commonSequenceWord, 27, 16));
  ConsolePrintf("UWTBL DW 5\n\tKey_loc0:%u\n\tKey_loc1:%u\n\tQoS:%u\n\tHT:%u\n\tHW_AMSDU_CFG:%u\n",
                keyLocation0, keyLocation1, WtblBits(summary.keyWord, 27, 27),
                WtblBits(summary.keyWord, 28, 28), WtblBits(summary.amsduWord, 9, 0));
  ConsolePrintf("\n\nkeyloc0:%u\n", keyLocation0);
  ConsolePrintf("\n\nkeyloc1:%u\n", keyLocation1);
}

}  // namespace

int HandleUwtblCommand(int argc, char** argv) {
  const char* indexText = argc > 2 ? argv[2] : "";
  ConsolePrintf("argv[0] = %s argv[1] = %s argv[2] = %s\n", argv[0], argv[1], indexText);
  int wlanIndex = 0;
  ScanArgument(indexText, "%d", &wlanIndex);
  ConsolePrintf("wlanIdx is: %d\n", wlanIndex);
  if (argc != 3) return PrintInvalidParameters(0);
  UwtblSummary summary = {};
  summary.wlanIndex = static_cast<uint32_t>(wlanIndex);
  if (!OidRequest(OidUwtblSummary, &summary)) return PrintRequestError(0);
  PrintUwtblSummary(summary);
  return 1;
}
