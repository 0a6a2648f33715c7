#include "commands/internal/umac_wtbl_fields.h"

#include "app/console/print.h"

namespace {

// The bytes run together without filling zeros, the most significant one first.
void PacketNumber(char* text, size_t size, const uint32_t* words, uint32_t /*value*/) {
  BoundedPrintf(text, size, "0x%x%x%x%x%x%x", WtblBits(words[1], 15, 8), WtblBits(words[1], 7, 0),
                WtblBits(words[0], 31, 24), WtblBits(words[0], 23, 16), WtblBits(words[0], 15, 8),
                WtblBits(words[0], 7, 0));
}

// Of the number's eight lower bits only four are shown, in two digits.
void Tid2SequenceNumber(char* text, size_t size, const uint32_t* words, uint32_t value) {
  BoundedPrintf(text, size, "0x%01x%02x", value, WtblBits(words[2], 27, 24));
}

void Tid5SequenceNumber(char* text, size_t size, const uint32_t* words, uint32_t value) {
  BoundedPrintf(text, size, "0x%02x%01x", value, WtblBits(words[3], 31, 28));
}

// The length counts steps of 256 bytes.
void HardwareAmsdu(char* text, size_t size, const uint32_t* /*words*/, uint32_t value) {
  const int length = static_cast<int>(WtblBits(value, 5, 0));
  BoundedPrintf(text, size, "  >> AMSDU_LEN = %d (%d ~ %d bytes), AMSDU_NUM = %u, AMSDU_EN = %u",
                length, length * 256 - 256, length * 256 - 1, WtblBits(value, 8, 6),
                WtblBits(value, 9, 9));
}

}  // namespace

constexpr WtblWordGroups UmacWtblGroups = {
    {"[00][01]",
     {{"PN [48]DW1[15:00]DW0[31:00] = ",
       {1, 15, 0},
       {},
       "Packet Number. Increase when transmitting a encrypted MPDU",
       "",
       PacketNumber},
      {"COM_SN [12]DW1[27:16] = ",
       {1, 27, 16},
       {},
       "Common Sequence Number. Sequence Number for non-QoS MPDU/MMPDU, Increase when transmitting "
       "a MPDU."}}},
    {"[02][03][04]",
     {{"TID0_SN / AC0_SN [12]DW2[11:00] = ",
       {2, 11, 0},
       {},
       "Sequence Number for TID0 (11n STA) or AC0 (non-11n STA), The same as COM_SN.",
       "0x%03x"},
      {"TID1_SN / AC1_SN [12]DW2[23:12] = ",
       {2, 23, 12},
       {},
       "Sequence Number for TID1 (11n STA) or AC1 (non-11n STA), The same as COM_SN.",
       "0x%03x"},
      {"TID2_SN / AC2_SN [12]DW3[3:0]DW2[31:24] = ",
       {3, 3, 0},
       {},
       "Sequence Number for TID2 (11n STA) or AC2 (non-11n STA), The same as COM_SN.",
       "",
       Tid2SequenceNumber},
      {"TID3_SN / AC3_SN [12]DW3[15:4] = ",
       {3, 15, 4},
       {},
       "Sequence Number for TID3 (11n STA) or AC3 (non-11n STA), The same as COM_SN.",
       "0x%03x"},
      {"TID4_SN / AC4_SN [12]DW3[27:16] = ",
       {3, 27, 16},
       {},
       "Sequence Number for TID4 (11n STA) or AC4 (non-11n STA), The same as COM_SN.",
       "0x%03x"},
      {"TID5_SN / AC5_SN [12]DW4[7:0]DW3[31:28] = ",
       {4, 7, 0},
       {},
       "Sequence Number for TID5 (11n STA) or AC5 (non-11n STA), The same as COM_SN.",
       "",
       Tid5SequenceNumber},
      {"TID6_SN / AC6_SN [12]DW4[19:8] = ",
       {4, 19, 8},
       {},
       "Sequence Number for TID6 (11n STA) or AC6 (non-11n STA), The same as COM_SN.",
       "0x%03x"},
      {"TID7_SN / AC7_SN [12]DW4[31:20] = ",
       {4, 31, 20},
       {},
       "Sequence Number for TID7 (11n STA) or AC7 (non-11n STA), The same as COM_SN.",
       "0x%03x"}}},
    {"[05][06]",
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
      {"HW_AMSDU_CFG [10]DW6[9:0] = ",
       {6, 9, 0},
       {},
       "Configuration for hardware mode A-MSDU.",
       "0x%x",
       HardwareAmsdu}}},
};
