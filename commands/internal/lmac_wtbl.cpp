// `wtbl`: one entry of the wireless table, raw and decoded, and the fields of its LMAC part.
#include "commands/internal/lmac_wtbl.h"

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/refusals.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/umac_wtbl.h"
#include "commands/maintenance/register_access.h"

// The rate words.
namespace {

// A code without a row prints no rate.
constexpr WtblValueTexts CckRates = {{0, 0, "/long preamble 1M"},   {1, 1, "/long preamble 2M"},
                                     {2, 2, "/long preamble 5.5M"}, {3, 3, "/long preamble 11M"},
                                     {5, 5, "/short preamble 2M"},  {6, 6, "/short preamble 5.5M"},
                                     {7, 7, "/short preamble 11M"}};
constexpr WtblValueTexts OfdmRates = {{8, 8, "/48M"},   {9, 9, "/24M"},   {10, 10, "/12M"},
                                      {11, 11, "/6M"},  {12, 12, "/54M"}, {13, 13, "/36M"},
                                      {14, 14, "/18M"}, {15, 15, "/9M"}};
constexpr WtblValueTexts McsRates = {{0, 63, "/MCS%d"}};

// The fields of a rate word.
struct WtblRateWord {
  uint32_t stbc;  // bit 13
  uint32_t nsts;  // bits 12:10
  uint32_t mode;  // bits 9:6, index of RateModes
  uint32_t code;  // bits 5:0, a row of the mode's rates
};

struct RateMode {
  const char* name = nullptr;
  WtblValueTexts rates;
};

constexpr RateMode RateModes[] = {
    {"/Legacy CCK", CckRates},
    {"/Legacy OFDM", OfdmRates},
    {"/HT Mixed mode", McsRates},
    {"/HT Green field mode", McsRates},
    {"/VHT mode", McsRates},
    {"/Resvered", {}},
    {"/Resvered", {}},
    {"/Resvered", {}},
    {"/HE_SU", McsRates},
    {"/HE_EXT_SU", McsRates},
    {"/HE_TRIG", McsRates},
    {"/HE_MU", McsRates},
    {"/Resvered", {}},
    {"/Resvered", {}},
    {"/Resvered", {}},
    {"/Resvered", {}},
};
static_assert(sizeof(RateModes) / sizeof(RateModes[0]) == 16);

}  // namespace

void DecodeWtblRate(char* text, size_t size, const uint32_t* /*words*/, uint32_t value) {
  const WtblRateWord word = {
      .stbc = WtblBits(value, 13, 13),
      .nsts = WtblBits(value, 12, 10),
      .mode = WtblBits(value, 9, 6),
      .code = WtblBits(value, 5, 0),
  };
  const RateMode& mode = RateModes[word.mode];
  char rate[32];
  FormatWtblValueText(rate, sizeof(rate), mode.rates, word.code);
  BoundedPrintf(text, size, "  >> STBC(%u)/Nsts(%u)%s%s", word.stbc, word.nsts, mode.name, rate);
}

// The fields of an entry.
namespace {

constexpr WtblValueTexts ProfileTexts = {{0, 254, "0x%x"}, {255, 255, "0xFF >> invalid : 0xFF"}};

constexpr WtblValueTexts CodingTexts = {{1, 1, "  >> LDPC"}, {0, 0, "  >> BCC"}};

constexpr WtblValueTexts BaWindowTexts = {
    {0, 14, "  >> BA window size is the value of AGG.AWSCR(1).WINSIZE%d."},
    {15, 15, "  >> BA IS DISABLED."}};

constexpr WtblValueTexts GuardTexts = {{1, 1, "  >> Use short GI (0.4us)."},
                                       {0, 0, "  >> Use normal GI (0.8us)."}};

constexpr WtblValueTexts LtfTexts = {{0, 0, "  >> 1x LTF (3.2us)."},
                                     {1, 1, "  >> 2x LTF (6.4us)."},
                                     {2, 2, "  >> 4x LTF (12.8us)."},
                                     {3, 3, "  >> reserved."}};

constexpr WtblValueTexts HeGuardTexts = {{0, 0, "  >> 0.8 us GI."},
                                         {1, 1, "  >> 1.6 us GI."},
                                         {2, 2, "  >> 3.2 us GI."},
                                         {3, 3, "  >> reserved."}};

constexpr char AntennaIdExplanation[] =
    "Antenna ID. bit 0: sub-sector0 enable or not in antenna  bit 1: sub-sector1 enable or not in "
    "antenna  bit 2: sub-sector2 enable or not in antenna";

void PeerAddress(char* text, size_t size, const uint32_t* words, uint32_t /*value*/) {
  BoundedPrintf(text, size, "%x:%x:%x:%x:%x:%x", WtblBits(words[1], 7, 0),
                WtblBits(words[1], 15, 8), WtblBits(words[1], 23, 16), WtblBits(words[1], 31, 24),
                WtblBits(words[0], 7, 0), WtblBits(words[0], 15, 8));
}

}  // namespace

constexpr WtblWordGroups LmacWtblGroups = {
    {"[00][01]",
     {{.header = "Peer Address [48]DW1[31:00]DW0[15:00] = ",
       .bits = {1, 31, 0},
       .number = "",
       .formatter = PeerAddress},
      {"MUAR Index [06]DW0[21:16] = ",
       {0, 21, 16},
       {{0, 4, "  >> OwnMAC%d, unicast address"},
        {14, 14, "  >> BC/MC %d, broadcast address"},
        {15, 15, "  >> unmatched"},
        {17, 31, "  >> extend OwnMAC%d, unicast address"},
        {32, 63, "  >> Repeater%d", -32}},
       "only for Rx valid when RCA1=1"},
      {"RCA1 [01]DW0[22:22] = ",
       {0, 22, 22},
       {{1, 1, "  >> Rx MUST check A1"}, {0, 0, "  >> Rx do not check A1"}},
       "A1 is encoded as MUAR"},
      {"KID [02]DW0[24:23] = ",
       {0, 24, 23},
       {{0, 3, "  >> Key index %d"}},
       "for Tx and Rx packets."},
      {"RCID [01]DW0[25:25] = ",
       {0, 25, 25},
       {{1, 1, "  >> Rx MUST check Key ID for encrypted packet"},
        {0, 0, "  >> Rx do not check Key ID"}},
       "used for CCMP/TKIP, but not used for WEP, WPI and BIP key"},
      {"FD [01]DW0[26:26] = ",
       {0, 26, 26},
       {},
       "The field control the [From DS] bit in frame control field and only used by header "
       "translation HW."},
      {"TD [01]DW0[27:27] = ",
       {0, 27, 27},
       {},
       "The field control the [To DS] bit in frame control field and only used by header "
       "translation HW."},
      {"RV [01]DW0[28:28] = ",
       {0, 28, 28},
       {{1, 1, "  >> entry is valid"}, {0, 0, "  >> entry is invalid (default)"}},
       "Rx Valid. (only for Rx)  Set to 1 means the reception frame MUST check this entry for all "
       "Rx related fields(RCA1, RCA2, RCID); otherwise, this entry is not be checked when Rx"},
      {"RCA2 [01]DW0[29:29] = ",
       {0, 29, 29},
       {{1, 1, "  >> Rx MUST check A2 (default)"}, {0, 0, "  >> Rx do not check A2"}},
       "only for Rx. check A2 with peer address."},
      {"WPI FLAG [01]DW0[30:30] = ",
       {0, 30, 30},
       {{1, 1, "  >> cipher_suit == WPI or GCM-WPI"},
        {0, 0, "  >> cipher_suit != WPI or GCM-WPI (default)"}},
       "This peer uses WPI as cipher, use for speeding up Rx search time, this field MUST sync "
       "with cipher_suit(PKT/GTK) (sync it manually)"}}},
    {"[02]",
     {{"AID [12]DW2[11:00] = ",
       {2, 11, 0},
       {},
       "AID for the peer(user ID). Value 2046 is used to indicate that the RU carries no data."},
      {"GID SU [01]DW2[12:12] = ",
       {2, 12, 12},
       {{1, 1, "  >> Group ID is 63. (addressed by STA)"},
        {0, 0, "  >> Group ID is 0. (addressed by AP)"}},
       "Group ID for SU PPDU (GID for MU is assigned by UMAC)"},
      {"SPP EN [01]DW2[13:13] = ",
       {2, 13, 13},
       {},
       "Use Signaling and Payload Protected A-MSDU, An A-MSDU that is CCMP protected and does "
       "include the A-MSDU Present field."},
      {"WPI EVEN [01]DW2[14:14] = ",
       {2, 14, 14},
       {{1, 1, "  >> Use even PN"}, {0, 0, "  >> Use odd PN"}},
       "Use Even or Odd PN for WPI TX"},
      {"AAD OM [01]DW2[15:15] = ",
       {2, 15, 15},
       {{1, 1, "  >> Do not mask order bit. (< 802.11n)"}, {0, 0, "  >> Follow SPEC. (>= 11n)"}},
       "The order mask for construction of AAD in security. To keep the backward compatibility "
       "with Kelvane chip, user MUST set to 1."},
      {"Cipher Suit (PTK/GTK) [05]DW2[20:16] = ",
       {2, 20, 16},
       {{0, 0, "  >> NONE"},
        {1, 1, "  >> WEP-40 (LG)"},
        {2, 2, "  >> TKIP with MIC (LG)"},
        {3, 3, "  >> TKIP without MIC (LG)"},
        {4, 4, "  >> CCMP-128 (for DFP or 802.11w MFP) (HT)"},
        {5, 5, "  >> WEP-104 (LG)"},
        {6, 6, "  >> invalid settings"},
        {7, 7, "  >> WEP-128 (LG)"},
        {8, 8, "  >> WPI-128 (HT)"},
        {9, 9, "  >> CCMP-128 (for DFP or CCX MFP) (HT)"},
        {10, 10, "  >> CCMP-256 (VHT)"},
        {11, 11, "  >> GCMP-128 (VHT)"},
        {12, 12, "  >> GCMP-256 (VHT)"},
        {13, 13, "  >> GCMP-WPI-128 (VHT)"},
        {14, 31, "  >> invalid settings"}},
       "Cipher Suit for PTK/GTK."},
      {"Cipher Suit (IGTK) [02]DW2[22:21] = ",
       {2, 22, 21},
       {{0, 0, "  >> NONE"},
        {1, 1, "  >> BIP-CMAC-128 (HT)"},
        {2, 2, "  >> BIP-CMAC-256 (VHT)"},
        {3, 3, "  >> invalid settings"}},
       "Cipher Suit for IGTK."},
      {"SW [01]DW2[24:24] = ",
       {2, 24, 24},
       {},
       "To indicate this peer is finished association process. SW directly combine SW bit with RX "
       "error status to speed up the RX process. (use in mobile platform)."},
      {"UL (HE) [01]DW2[25:25] = ", {2, 25, 25}, {}, "Uplink flag. The peer is a STA in AP mode."},
      {"TX PS Status [01]DW2[26:26] = ",
       {2, 26, 26},
       {{1, 1, "  >> Set the [Pwr Mgt] bit in frame control field."},
        {0, 0, "  >> Unset the [Pwr Mgt] bit in frame control field."}},
       "TX PowerSaving Status. This field is to control the [Pwr Mgt] bit in frame control field. "
       "For any types of packets in 802.11, 802.3 and Ethernet II format. HW overwrites the [Pwr "
       "Mgt] bit in frame control field and reports the bit status in TXS."},
      {"QoS [01]DW2[27:27] = ",
       {2, 27, 27},
       {},
       "QoS capability. This bit is used to indicate the QoS capability of the PA. Once the QoS "
       "capability is set for this PA, all data frames translated by MAC should set the QoS bit "
       "and add a QoS Control field in WLAN Header."},
      {"HT [01]DW2[28:28] = ", {2, 28, 28}, {}, "Client is a HT STA."},
      {"VHT [01]DW2[29:29] = ", {2, 29, 29}, {}, "Client is a VHT STA."},
      {"HE [01]DW2[30:30] = ", {2, 30, 30}, {}, "Client is a HE STA."},
      {"MESH [01]DW2[31:31] = ", {2, 31, 31}, {}, "Client is a MESH STA."}}},
    {"[03]",
     {{"WMM Q [02]DW3[01:00] = ", {3, 1, 0}, {}, "WMM Queue used by peer."},
      {"RXD DUP MODE [02]DW3[03:02] = ",
       {3, 3, 2},
       {{0, 0, "  >> Disable (used in active mode of STA)"},
        {1, 1, "  >> Always (used in PS mode of STA)"},
        {2, 2, "  >> When PM bit is 1 or change (1 -> 0) (used for AP mode)"},
        {3, 3, "  >> invalid value (this field is used by OM change)"}},
       "Rx Duplicate Mode. If WTBL cannot find a valid peer info, HW refer "
       "WTBLOFF.RCR.RXD_DUP_MODE for default operation."},
      {"VLAN2ETH [01]DW3[04:04] = ",
       {3, 4, 4},
       {},
       "Vlan to Ether type. Recognize Vlan(0x8100) as a normal ether type."},
      {"BEAM_CHG [01]DW3[05:05] = ",
       {3, 5, 5},
       {{1, 1, "  >> pre-HE-STF portion of PPDU is spatially mapped different way as HE-LTF1"},
        {0, 0, "  >> pre-HE-STF portion of PPDU is spatially mapped the same way as HE-LTF1"}},
       "Beam change."},
      {"BA_MODE (HE) [02]DW3[07:06] = ",
       {3, 7, 6},
       {{0, 0,
         "  >> auto mode: according to RX MPDU SN range, HW selects the BA bitmap size (64 or 256) "
         "automatically"},
        {1, 1, "  >> force BA64"},
        {2, 2, "  >> force BA256"},
        {3, 3, "  >> Reserved"}},
       "BA mode."},
      {.header = "PFMU_index [08]DW3[15:08] = ",
       .bits = {3, 15, 8},
       .texts = ProfileTexts,
       .explanation =
           "Profile Management Unit index. For beamforming unit to indicate the profile ID. WTBL "
           "indicates a hit event to BF when TEBF | TEBF_VHT | TEBF_HE = 1.",
       .number = ""},
      {.header = "ULPF_index [08]DW3[23:16] = ",
       .bits = {3, 23, 16},
       .texts = ProfileTexts,
       .explanation =
           "Index for UL profile that saves the channel profile when receiving a HE-SU PPDU. HW "
           "uses it to calculate different group's UL-MU-MIMO initial MCS before engrouping.",
       .number = ""},
      {"RIBF [01]DW3[24:24] = ",
       {3, 24, 24},
       {{1, 1, "  >> Update ibf profile"}, {0, 0, "  >> do nothing"}},
       "Update RX Implicit BeamForming profile. (WTBL spec has a mapping table)"},
      {"ULPF [01]DW3[25:25] = ",
       {3, 25, 25},
       {{1, 1, "  >> update UL profile to target ULPF_index"}, {0, 0, "  >> do nothing"}},
       "Update UL profile"},
      {"IGN_FBK [01]DW3[26:26] = ",
       {3, 26, 26},
       {{1, 1, "  >> ignore feedback"}, {0, 0, "  >> feedback"}},
       "Ignore beamformee feedback"},
      {"TBF_HT [01]DW3[29:29] = ",
       {3, 29, 29},
       {{1, 1,
         "  >> For TX: the transmission can use explicit or implicit beamforming result. For RX: "
         "update the explicit beamforming result to beamforning mapping table."},
        {0, 0, "  >> Ignore the explicit or implicit beamforming request (TX & RX)"}},
       "TX Explicit or Implicit BeamForming"},
      {"TBF_VHT [01]DW3[30:30] = ", {3, 30, 30}, {}, "the same as TBF, but only for VHT mode."},
      {"TBF_HE [01]DW3[31:31] = ", {3, 31, 31}, {}, "the same as TBF, but only for HE mode."}}},
    {"[04]",
     {{"ANT_ID(STS0) [03]DW4[02:00] = ", {4, 2, 0}, {}, AntennaIdExplanation},
      {"ANT_ID(STS1) [03]DW4[05:03] = ", {4, 5, 3}, {}, AntennaIdExplanation},
      {"ANT_ID(STS2) [03]DW4[08:06] = ", {4, 8, 6}, {}, AntennaIdExplanation},
      {"ANT_ID(STS3) [03]DW4[11:09] = ", {4, 11, 9}, {}, AntennaIdExplanation},
      {"ANT_ID(STS4) [03]DW4[14:12] = ", {4, 14, 12}, {}, AntennaIdExplanation},
      {"ANT_ID(STS5) [03]DW4[17:15] = ", {4, 17, 15}, {}, AntennaIdExplanation},
      {"ANT_ID(STS6) [03]DW4[20:18] = ", {4, 20, 18}, {}, AntennaIdExplanation},
      {"ANT_ID(STS7) [03]DW4[23:21] = ", {4, 23, 21}, {}, AntennaIdExplanation},
      {"CASCAD (HE) [01]DW4[24:24] = ",
       {4, 24, 24},
       {},
       "Indicates the peer supports cascading sequence."},
      {"LDPC_HT [01]DW4[25:25] = ", {4, 25, 25}, CodingTexts, "LDPC for HT rate"},
      {"LDPC_VHT [01]DW4[26:26] = ", {4, 26, 26}, CodingTexts, "LDPC for VHT rate"},
      {"LDPC_HE [01]DW4[27:27] = ", {4, 27, 27}, CodingTexts, "LDPC for HE rate"},
      {"DIS_RHTR [01]DW4[28:28] = ",
       {4, 28, 28},
       {{1, 1,
         "  >> Disable RX header translation WTBL overwrites this setting by DIS_RHTR = 1 when "
         "MPDU is a fragment with cipher suit = TKIPMIC & WTBLOFF.DISABLE_RHTR_FOR_FRAG_TKIP = 1."},
        {0, 0,
         "  >> Not disable RX header translation, please refer RX Translation Rule of TX-RX Header "
         "Translation Datasheet about RX header translation enable conditions."}},
       "Disable RX Header Translation function"},
      // The bit for multi-station block ack has the same name as the one before it.
      {"DIS_RHTR [01]DW4[29:29] = ",
       {4, 29, 29},
       {},
       "Indicates whether the STA supports reception of a Multi-STA Block-Ack frame under the all "
       "ack context."},
      {"Drop [01]DW4[30:30] = ",
       {4, 30, 30},
       {},
       "Drop packets for this peer (RX). DMA should drop the packet of this peer."},
      {"ACK_EN [01]DW4[31:31] = ",
       {4, 31, 31},
       {},
       "Zero Handoff ACK Enable. This peer should reply ACK to those who transmits PPDU to me, if "
       "WTBLOFF.ACK_CTRL_EN = 0, this flag is useless."}}},
    {"[05]",
     {{"AF [03]DW5[02:00] = ",
       {5, 2, 0},
       {},
       "A-MPDU Factor. indicates the maximum length of A-MPDU to peer node. 0~3 : for HT/VHT, 4~7 "
       ": for VHT only"},
      {"AF [02]DW5[04:03] = ",
       {5, 4, 3},
       {{0, 0, "  >> refer to AF."},
        {1, 3,
         "  >> VHT = 1 & AF = 7 => (2(20+AF_HE))-1 bytes, VHT = 0 & AF = 3 => (2(16+AF_HE))-1 "
         "bytes."}},
       "A-MPDU Factor for HE. indicates the maximum length of A-MPDU to peer node."},
      {"RTS [01]DW5[05:05] = ",
       {5, 5, 5},
       {{1, 1, "  >> enable."}, {0, 0, "  >> disable."}},
       "enable RTS on Non-QoS or QoS Data frame."},
      {"SMPS [01]DW5[06:06] = ",
       {5, 6, 6},
       {{1, 1, "  >> Support."}, {0, 0, "  >> Not support."}},
       "Dynamic SM Power Save is supported."},
      {"DYN_BW [01]DW5[07:07] = ",
       {5, 7, 7},
       {},
       "Format of VHT/HE SU dynamic bandwidth for RTS. A VHT/HE SU STA transmitting an RTS frame "
       "carried in non-HT or non-HT duplicate format and address to a VHT/HE Su STA."},
      {"MMSS [03]DW5[10:08] = ",
       {5, 10, 8},
       {{0, 0, "  >> no restriction."},
        {1, 1, "  >> 0.25 us."},
        {2, 2, "  >> 0.5 us."},
        {3, 3, "  >> 1 us."},
        {4, 4, "  >> 2 us."},
        {5, 5, "  >> 4 us."},
        {6, 6, "  >> 8 us."},
        {7, 7, "  >> 16 us."}},
       "Minimum MPDU Start Spacing to peer node."},
      {"USR [01]DW5[11:11] = ",
       {5, 11, 11},
       {},
       "This peer is able to transmit PPDU with an un-defined rate in 802.11 spec. MAC "
       "automatically applies lower rate if this function is disabled and an un-defined rate is "
       "specified.."},
      {"SR_R [03]DW5[14:12] = ",
       {5, 14, 12},
       {{0, 7, "  >> offset %d."}},
       "SR rate offset. Indicate SR rate offset in SR period."},
      // Always shown as 0, also if the bit is set.
      {.header = "SRabort (HE) [01]DW5[15:15] = ",
       .bits = {5, 15, 15},
       .texts = {{0, 1, "  >> not abort."}},
       .explanation = "Spatial Reuse abort. TX should abort this peer\xA1\xA6s traffic when "
                      "detecting the event of spatial reuse.",
       .number = "0x0"},
      {"TX Power Offset [06]DW5[21:16] = ",
       {5, 21, 16},
       {},
       "The power offset is in 0.25dbm unit and varies from -15.5dbm ~ +0dbm using 2\xA1\xA6s "
       "complement. 6\xA1\xA6"
       "b000000: 0db  6\xA1\xA6"
       "b111111: -0.25db  6\xA1\xA6"
       "b111110: -0.5db  6\xA1\xA6"
       "b000001: -15.5db"},
      {"MPDU_SIZE(Beamforming) [02]DW5[23:22] = ",
       {5, 23, 22},
       {{0, 0, "  >> 3895 bytes."},
        {1, 1, "  >> 7991 bytes."},
        {2, 2, "  >> 11454 bytes."},
        {3, 3, "  >> refer to TXBFEE_CFG2.BFEE_SEG_MPDU_SIZE."}},
       "Max MPDU size. Hardware response frame should limit its MPDU size by this value "
       "(Beamforming)."},
      {"PE (HE) [02]DW5[25:24] = ",
       {5, 25, 24},
       {{0, 0, "  >> 0us, TPE: 0us (no Packet Extension)."},
        {1, 1, "  >> 8us, TPE:  0us, 4us, 8us."},
        {2, 2, "  >> 16us, TPE:  4us, 8us, 12us and 16us."},
        {3, 3, "  >> reserved."}},
       "(Packet Extension), Maximum PE capabilities defined in HE Capabilities field, which are "
       "factors of NSS, RU and Constellation Index."},
      {"DOPPL (HE) [01]DW5[26:26] = ",
       {5, 26, 26},
       {{1, 1, "  >> mobility environment."}, {0, 0, "  >> not mobility environment."}},
       "Doppler. All users are with midamble or none of them with midamble."},
      {"TXOP_PS_CAP [01]DW5[27:27] = ",
       {5, 27, 27},
       {{1, 1, "  >> support."}, {0, 0, "  >> not support."}},
       "TXOP PowerSaving Capability."},
      {"DU_I_PSM [01]DW5[28:28] = ",
       {5, 28, 28},
       {{1, 1, "  >> I_PSM changed by WTBL is disabled."},
        {0, 0, "  >> I_PSM changed by WTBL automatically is enabled."}},
       "Do not Update I_PSM."},
      {"I_PSM [01]DW5[29:29] = ",
       {5, 29, 29},
       {{1, 1, "  >> ignore the PSM value."}, {0, 0, "  >> follow PSM value."}},
       "ignore the peer\xA1\xA6s PSM. The related packet is able to transmit. If WTBL detects the "
       "power save mode of peer is changed, it resets I_PSM to 0"},
      {"PSM [01]DW5[30:30] = ",
       {5, 30, 30},
       {{1, 1, "  >> Peer is in power saving mode."}, {0, 0, "  >> Peer is in active mode."}},
       "Power Saving Mode. User can ONLY modify PSM value by mask update. WTBL updates this flag "
       "when receiving a unicast data frame / unicast management frame (action / de-authentication "
       "/ disassociation)"},
      {"SKIP_TX [01]DW5[31:31] = ",
       {5, 31, 31},
       {{1, 1, "  >> skip TX descritor of this entry."},
        {0, 0, "  >> Tx descriptor of this entry is active."}},
       "Force HW to skip TX for this peer."}}},
    {"[06]",
     {{"BA_WIN_SIZE (TID0) [04]DW6[03:00] = ", {6, 3, 0}, BaWindowTexts, "BA window size index."},
      {"BA_WIN_SIZE (TID1) [04]DW6[07:04] = ", {6, 7, 4}, BaWindowTexts, "BA window size index."},
      {"BA_WIN_SIZE (TID2) [04]DW6[11:08] = ", {6, 11, 8}, BaWindowTexts, "BA window size index."},
      {"BA_WIN_SIZE (TID3) [04]DW6[15:12] = ", {6, 15, 12}, BaWindowTexts, "BA window size index."},
      {"BA_WIN_SIZE (TID4) [04]DW6[19:16] = ", {6, 19, 16}, BaWindowTexts, "BA window size index."},
      {"BA_WIN_SIZE (TID5) [04]DW6[23:20] = ", {6, 23, 20}, BaWindowTexts, "BA window size index."},
      {"BA_WIN_SIZE (TID6) [04]DW6[27:24] = ", {6, 27, 24}, BaWindowTexts, "BA window size index."},
      {"BA_WIN_SIZE (TID7) [04]DW6[31:28] = ",
       {6, 31, 28},
       BaWindowTexts,
       "BA window size index."}}},
    {"[07]",
     {{"CBRN [03]DW7[02:00] = ",
       {7, 2, 0},
       {},
       "Change BW after rateN. if rate_idx > CBRN then current_BW = FCAP \xA1V 1 (BW / 2) else "
       "current_BW = FCAP."},
      {"DBNSS_EN: (VHT/HE SU) [01]DW7[03:03] = ",
       {7, 3, 3},
       {},
       "Enable the capacity of transmitting BW80 2SS packets under BW80_80(Fast Channel BandWidth "
       "switch) When peer supports the capacity of BW80_80, MAC is able to change the rate to BW80 "
       "2SS when one of 80MHz channel is not clear."},
      {"BAF_EN [01]DW7[04:04] = ",
       {7, 4, 4},
       {{1, 1, "  >> BAF in Tx status means BA aggregation fail."},
        {0, 0, "  >> BAF in Tx status is always 0."}},
       "BA Fail ENable. enable BA Fail report in Tx status."},
      {"RDGBA [01]DW7[05:05] = ",
       {7, 5, 5},
       {{1, 1, "  >> Enable."}, {0, 0, "  >> Disable."}},
       "Aggregate BA and Data frames to an AMPDU frame under RDG responder mode."},
      {"R [01]DW7[06:06] = ",
       {7, 6, 6},
       {{1, 1, "  >> RDG to this peer is present."},
        {0, 0, "  >> RDG to this peer is not allowed."}},
       "Reverse Direction Grant capability."},
      {"SPE_IDX [05]DW7[11:07] = ",
       {7, 11, 7},
       {},
       "Spatial Extension Index. The index of the setting in PHY for spatial extension."},
      {"G2 [01]DW7[12:12] = ",
       {7, 12, 12},
       GuardTexts,
       "GI mode when TX BW20 HT/VHT rate to peer node."},
      {"G4 [01]DW7[13:13] = ",
       {7, 13, 13},
       GuardTexts,
       "GI mode when TX BW40 HT/VHT rate to peer node."},
      {"G8 [01]DW7[14:14] = ",
       {7, 14, 14},
       GuardTexts,
       "GI mode when TX BW80 VHT/TVWS rate to peer node."},
      {"G16 [01]DW7[15:15] = ",
       {7, 15, 15},
       GuardTexts,
       "GI mode when TX BW160/BW80+80 VHT/TVWS rate to peer node."},
      {"G2_LTF [02]DW7[17:16] = ",
       {7, 17, 16},
       LtfTexts,
       "LTF mode when TX BW20 HE rate to peer node."},
      {"G4_LTF [02]DW7[19:18] = ",
       {7, 19, 18},
       LtfTexts,
       "LTF mode when TX BW40 HE rate to peer node."},
      {"G8_LTF [02]DW7[21:20] = ",
       {7, 21, 20},
       LtfTexts,
       "LTF mode when TX BW80 HE rate to peer node."},
      {"G16_LTF [02]DW7[23:22] = ",
       {7, 23, 22},
       LtfTexts,
       "LTF mode when TX BW160/BW80+80 HE rate to peer node."},
      {"G2_HE [02]DW7[25:24] = ",
       {7, 25, 24},
       HeGuardTexts,
       "GI mode when TX BW20 HE rate to peer node."},
      {"G4_HE [02]DW7[27:26] = ",
       {7, 27, 26},
       HeGuardTexts,
       "GI mode when TX BW40 HE rate to peer node."},
      {"G8_HE [02]DW7[29:28] = ",
       {7, 29, 28},
       HeGuardTexts,
       "GI mode when TX BW80 HE rate to peer node."},
      {"G16_HE [02]DW7[31:30] = ",
       {7, 31, 30},
       HeGuardTexts,
       "GI mode when TX BW160/BW80+80 HE rate to peer node."}}},
    {"[08]",
     {{"RTS_FAIL_CNT_AC0 [05]DW8[04:00] = ",
       {8, 4, 0},
       {},
       "RTS fail counter for AC0. For HW use only"},
      {"RTS_FAIL_CNT_AC1 [05]DW8[09:05] = ",
       {8, 9, 5},
       {},
       "RTS fail counter for AC1. For HW use only"},
      {"RTS_FAIL_CNT_AC2 [05]DW8[14:10] = ",
       {8, 14, 10},
       {},
       "RTS fail counter for AC2. For HW use only"},
      {"RTS_FAIL_CNT_AC3 [05]DW8[19:15] = ",
       {8, 19, 15},
       {},
       "RTS fail counter for AC3. For HW use only"},
      {"PartialAID [09]DW8[28:20] = ",
       {8, 28, 20},
       {},
       "It should be calculated by the following rule. (see WTBL spec)"},
      {"CHK_PER [01]DW8[31:31] = ",
       {8, 31, 31},
       {},
       "Check Packet Error Rate (PER). (see WTBL spec)"}}},
    {"[09]",
     {{"RX_AVG_MPDU_SIZE [14]DW9[13:00] = ",
       {9, 13, 0},
       {},
       "The average MPDU size(bytes) of this peer. (see WTBL spec)"},
      {"PRITX_SW_MODE(HE) [01]DW9[16:16] = ",
       {9, 16, 16},
       {{1, 1, "  >> only SW can update PRITX_*."}, {0, 0, "  >> SW/HW can update PRITX_*."}},
       "SW control mode for PRITX_*."},
      {"PRITX_PLR(HE) [01]DW9[17:17] = ",
       {9, 17, 17},
       {},
       "The recent successfully transmitted PPDU is PLR rate (do not include frame with no ack "
       "policy) For HW use only, SW can set PRITX_SW_MODE to prevent HW from updating it"},
      {"PRITX_DCM(HE) [01]DW9[18:18] = ",
       {9, 18, 18},
       {},
       "The recent successfully transmitted PPDU is DCM rate (do not include frame with no ack "
       "policy) For HW use only, SW can set PRITX_SW_MODE to prevent HW from updating it"},
      {"PRITX_ER106T(HE) [01]DW9[19:19] = ",
       {9, 19, 19},
       {},
       "The recent successfully transmitted PPDU is HE_ER_SU_106Tone (do not include frame with no "
       "ack policy) For HW use only, SW can set PRITX_SW_MODE to prevent HW from updating it"},
      {"PRITX_ERSU(HE) [01]DW9[20:20] = ",
       {9, 20, 20},
       {},
       "The recent successfully transmitted PPDU is HE_ER_SU (do not include frame with no ack "
       "policy) For HW use only, SW can set PRITX_SW_MODE to prevent HW from updating it "},
      {"FCAP [02]DW9[22:21] = ",
       {9, 22, 21},
       {{0, 0, "  >> 20MHz."},
        {1, 1, "  >> 20/40MHz."},
        {2, 2, "  >> 20/40/80MHz."},
        {3, 3, "  >> 20/40/80/160/80+80MHz."}},
       "Frequency capability (This setting is limited by AGG.RF_BW)."},
      {"MPDU_FAIL_CNT [03]DW9[25:23] = ",
       {9, 25, 23},
       {},
       "The failed MPDU count of the rate indicated by Rate_Idx[1:0]. For HW use only, reset when "
       "rate table is changed"},
      {"MPDU_OK_CNT [03]DW9[28:26] = ",
       {9, 28, 26},
       {},
       "The succeed TX MPDU count of the rate indicated by Rate_Idx[1:0]. For HW use only, reset "
       "when rate table is changed"},
      {"Rate_Idx [03]DW9[31:29] = ",
       {9, 31, 29},
       {{0, 7, "  >> Rate%d.", 1}},
       "The Rate index indicates the target rate for next  transmission. For HW use only, reset "
       "when rate table is changed."}}},
    {"[10]",
     {{.header = "Rate1 [14]DW10[13:00] = ",
       .bits = {10, 13, 0},
       .explanation = "auto TX Rate1",
       .formatter = DecodeWtblRate},
      {.header = "Rate2 [14]DW10[29:16] = ",
       .bits = {10, 29, 16},
       .explanation = "auto TX Rate2",
       .formatter = DecodeWtblRate}}},
    {"[11]",
     {{.header = "Rate3 [14]DW11[13:00] = ",
       .bits = {11, 13, 0},
       .explanation = "auto TX Rate3",
       .formatter = DecodeWtblRate},
      {.header = "Rate4 [14]DW11[29:16] = ",
       .bits = {11, 29, 16},
       .explanation = "auto TX Rate4",
       .formatter = DecodeWtblRate}}},
    // Word 12. Its banner names word 10.
    {"[10]",
     {{.header = "Rate5 [14]DW12[13:00] = ",
       .bits = {12, 13, 0},
       .explanation = "auto TX Rate5",
       .formatter = DecodeWtblRate},
      {.header = "Rate6 [14]DW12[29:16] = ",
       .bits = {12, 29, 16},
       .explanation = "auto TX Rate6",
       .formatter = DecodeWtblRate}}},
    {"[13]",
     {{.header = "Rate7 [14]DW13[13:00] = ",
       .bits = {13, 13, 0},
       .explanation = "auto TX Rate7",
       .formatter = DecodeWtblRate},
      {.header = "Rate8 [14]DW13[29:16] = ",
       .bits = {13, 29, 16},
       .explanation = "auto TX Rate8",
       .formatter = DecodeWtblRate}}},
    {"[14][15][16][17]",
     {{"RATE1_TX_CNT [16]DW14[15:00] = ",
       {14, 15, 0},
       {},
       "TX packet(MPDU) counter for rate1 (initial rate)"},
      {"RATE1_FAIL_CNT [16]DW14[31:16] = ",
       {14, 31, 16},
       {},
       "TX fail packet(MPDU) counter for rate1 (initial rate)"},
      {"RATE2_OK_CNT [16]DW15[15:00] = ",
       {15, 15, 0},
       {},
       "TX packet(MPDU) counter for rate 2 (success)"},
      {"RATE3_OK_CNT [16]DW15[31:16] = ",
       {15, 31, 16},
       {},
       "TX packet(MPDU) counter for rate 3 (success)"},
      {"CURRENT_BW_TX_CNT [16]DW16[15:00] = ",
       {16, 15, 0},
       {},
       "TX packet(MPDU) count when BW is the same as FCAP value"},
      {"CURRENT_BW_FAIL_CNT [16]DW16[31:16] = ",
       {16, 31, 16},
       {},
       "TX fail packet(MPDU) count when BW is the same as FCAP value"},
      {"OTHER_BW_OK_CNT [16]DW17[15:00] = ",
       {17, 15, 0},
       {},
       "TX packet(MPDU) count when BW is the same as FCAP value"},
      {"OTHER_BW_FAIL_CNT [16]DW17[31:16] = ",
       {17, 31, 16},
       {},
       "TX fail packet(MPDU) count when BW is the same as FCAP value"}}},
    {"[18][19]",
     {{"RTS_OK_CNT [16]DW18[15:00] = ", {18, 15, 0}, {}, "RTS ok counter for SU"},
      {"RTS_FAIL_CNT [16]DW18[31:16] = ", {18, 31, 16}, {}, "RTS fail counter for SU"},
      {"DATA_RETRY_CNT [16]DW19[15:00] = ", {19, 15, 0}, {}, "Retry Counter for Data frame"},
      {"MGNT_RETRY_CNT [16]DW19[31:16] = ",
       {19, 31, 16},
       {},
       "Retry Counter for Management frame"}}},
    {"[20][21][22][23][24][25][26][27]",
     {{"AC0  [32]DW20[31:00] = ",
       {20, 31, 0},
       {},
       "AC0_CTT(1us)/AC0_CDT(1us)/AC0_CRB(Byte), see spec. "},
      {"AC0  [32]DW21[31:00] = ",
       {21, 31, 0},
       {},
       "AC0_CTB(Byte)/AC0_CRT(1us)/AC0_CTB(Byte), see spec. "},
      {"AC1  [32]DW22[31:00] = ",
       {22, 31, 0},
       {},
       "AC1_CTT(1us)/AC1_CDT(1us)/AC1_CRB(Byte), see spec. "},
      {"AC1  [32]DW23[31:00] = ",
       {23, 31, 0},
       {},
       "AC1_CTB(Byte)/AC1_CRT(1us)/AC1_CTB(Byte), see spec. "},
      {"AC2  [32]DW24[31:00] = ",
       {24, 31, 0},
       {},
       "AC2_CTT(1us)/AC2_CDT(1us)/AC2_CRB(Byte), see spec. "},
      {"AC2  [32]DW25[31:00] = ",
       {25, 31, 0},
       {},
       "AC2_CTB(Byte)/AC2_CRT(1us)/AC2_CTB(Byte), see spec. "},
      {"AC3  [32]DW26[31:00] = ",
       {26, 31, 0},
       {},
       "AC3_CTT(1us)/AC3_CDT(1us)/AC3_CRB(Byte), see spec. "},
      {"AC3  [32]DW27[31:00] = ",
       {27, 31, 0},
       {},
       "AC3_CTB(Byte)/AC3_CRT(1us)/AC3_CTB(Byte), see spec. "}}},
    {"[28]",
     {{"OM_info [12]DW28[11:00] = ",
       {28, 11, 0},
       {},
       "Operating mode info in HE variant HT control field"},
      {"RXD_DUP_OM_CHG [01]DW28[12:12] = ",
       {28, 12, 12},
       {{1, 1, "  >> duplicate RXD when detecting OM change event."}, {0, 0, "  >> disable."}},
       "RXD duplicated mode for OM(Operating mode) change"}}},
    {"[29]",
     {{"User RSSI [09]DW29[08:00] = ",
       {29, 8, 0},
       {},
       "2's complement. RSSI = (RSSI >= 256) ? (RSSI-512) : RSSI.   RSSI_dBm = RSSI/2"},
      {"User SNR [06]DW29[14:09] = ",
       {29, 14, 9},
       {},
       "only for OFDM modulation. 0~63 mapping to -16~47.   64~255 is reserved"},
      {"Rapid Reaction Rate [11]DW29[26:16] = ",
       {29, 26, 16},
       {},
       "The best rate reported from PHY (ONLY for full RU). This field is suggested to be "
       "READ-ONLY. see spec"},
      {"HT_AMSDU [101]DW29[30:30] = ",
       {29, 30, 30},
       {},
       "AMSDU > HT rate (Read only). This flag indicates the previous PPDU is an AMSDU with higher "
       "than HT rate, it is for detecting AMSDU_cross_LG event and is used by WTBL only. For HW "
       "use only"},
      {"AMSDU_cross_LG [101]DW29[31:31] = ",
       {29, 31, 31},
       {},
       "AMSDU cross Legacy stop flag. set when a AMSDU cross the rate from HT to LG. ex: PPDU0(HT, "
       "AMSDU) -> PPDU1(Legacy), The rate of AMSDU cannot fallback to Legacy(Legacy don't support "
       "AMSDU)"}}},
    {"[30]",
     {{"Resp_RCPI0 [08]DW30[07:00] = ",
       {30, 7, 0},
       {},
       "the average value of RCPI(measured in preamble) of RX stream 0. WTBL loads RCPI from RXV "
       "without any calculation when this value is 0xFF."},
      {"Resp_RCPI1 [08]DW30[15:08] = ",
       {30, 15, 8},
       {},
       "the average value of RCPI(measured in preamble) of RX stream 1. WTBL loads RCPI from RXV "
       "without any calculation when this value is 0xFF."},
      {"Resp_RCPI2 [08]DW30[23:16] = ",
       {30, 23, 16},
       {},
       "the average value of RCPI(measured in preamble) of RX stream 2. WTBL loads RCPI from RXV "
       "without any calculation when this value is 0xFF."},
      {"Resp_RCPI3 [08]DW30[31:24] = ",
       {30, 31, 24},
       {},
       "the average value of RCPI(measured in preamble) of RX stream 3. WTBL loads RCPI from RXV "
       "without any calculation when this value is 0xFF."}}},
    {"[31]",
     {{"SNR_RX0 [06]DW31[05:00] = ",
       {31, 5, 0},
       {},
       "the average value of SNR of RX stream 0 (unit: 1dBm). 0~63 mapping to -16~47.   64~255 is "
       "reserved."},
      // Six bits. The range in the name is wrong.
      {"SNR_RX1 [06]DW31[10:06] = ",
       {31, 11, 6},
       {},
       "the average value of SNR of RX stream 1 (unit: 1dBm). 0~63 mapping to -16~47.   64~255 is "
       "reserved."},
      {"SNR_RX2 [06]DW31[17:12] = ",
       {31, 17, 12},
       {},
       "the average value of SNR of RX stream 2 (unit: 1dBm). 0~63 mapping to -16~47.   64~255 is "
       "reserved."},
      {"SNR_RX3 [06]DW31[23:18] = ",
       {31, 23, 18},
       {},
       "the average value of SNR of RX stream 3 (unit: 1dBm). 0~63 mapping to -16~47.   64~255 is "
       "reserved."}}},
};

// The command.
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

  RegAccessParam param = {};  // the next read sends what the last reply left here
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
