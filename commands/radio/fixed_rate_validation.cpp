#include "commands/radio/fixed_rate_validation.h"

#include <cstddef>

#include "app/console/print.h"

namespace {

// The rate word, from the least significant bit up. Some fields of HE modes overlap those of other
// modes.
constexpr uint32_t ShortPreambleBit = 1U << 2;  // CCK: a bit of the rate index
constexpr uint32_t ErDcmIndex = 0x13;      // HE extended range: combined with the rate index by or
constexpr uint32_t Er106ToneIndex = 0x14;  // the same
constexpr uint32_t ModeShift = 6;
constexpr uint32_t ModeMask = 0x7;
constexpr uint32_t HeModeMask = 0x1F;
constexpr uint32_t StreamShift = 9;
constexpr uint32_t StreamMask = 0x3;
constexpr uint32_t StbcBit = 1U << 11;
constexpr uint32_t HeStreamShift = 12;
constexpr uint32_t HeStreamMask = 0x7;
constexpr uint32_t HeLtfShift = 15;
constexpr uint32_t HeLtfMask = 0x3;
constexpr uint32_t HeGuardIntervalShift = 17;
constexpr uint32_t HeBit = 1U << 23;
constexpr uint32_t BandwidthShift = 26;
constexpr uint32_t SpatialExtensionBit = 1U << 28;
constexpr uint32_t LdpcBit = 1U << 29;
constexpr uint32_t ShortGuardIntervalBit = 1U << 30;
constexpr uint32_t FixedRateBit = 1U << 31;

constexpr uint32_t BandwidthCount = 4;
constexpr uint32_t HeGuardIntervalCount = 3;
constexpr uint32_t HtDuplicateMcs = 32;  // one stream, sent twice over 40 MHz
constexpr uint32_t HtMcsPerStream = 8;

struct ModeRow {
  uint32_t mcsLimit;  // the first rate index that is too large
  const char* name;
};

constexpr ModeRow ModeRows[] = {
    {4, "CCK"},     // 0
    {8, "OFDM"},    // 1
    {33, "MM"},     // 2
    {33, "GF"},     // 3
    {10, "VHT"},    // 4
    {2, "PLR"},     // 5
    {0, "N/A"},     // 6
    {0, "N/A"},     // 7
    {12, "HE_SU"},  // 8
    {12, "HE_ER"},  // 9
    {12, "HE_TRIG"}, {12, "HE_MU"},
};
constexpr uint32_t ModeCount = sizeof(ModeRows) / sizeof(ModeRows[0]);

// The SIGNAL rate codes of 6, 9, 12, 18, 24, 36, 48 and 54 Mbit/s.
constexpr uint8_t OfdmRateCodes[] = {0xB, 0xF, 0xA, 0xE, 0x9, 0xD, 0x8, 0xC};

constexpr uint32_t ModeBit(uint32_t mode) {
  return 1U << mode;
}

constexpr uint32_t SingleUser = ModeBit(TxModeHeSu) | ModeBit(TxModeHeErSu);
constexpr uint32_t Triggered = ModeBit(TxModeHeTrig);
constexpr uint32_t MultiUser = ModeBit(TxModeHeMu);

struct HeLtfRow {
  uint32_t ltf;
  uint32_t guardInterval;
  uint32_t modes;  // a bit for each mode that allows the pair
};

constexpr HeLtfRow HeLtfRows[] = {
    {0, 0, SingleUser},
    {0, 1, Triggered},
    {1, 0, SingleUser | MultiUser},
    {1, 1, SingleUser | Triggered | MultiUser},
    {2, 0, SingleUser | MultiUser},
    {2, 2, SingleUser | Triggered | MultiUser},
};

bool IsHeMode(uint32_t mode) {
  return mode >= TxModeHeSu;
}

bool AddCckRate(const FixedRateParam& param, uint32_t* word) {
  *word |= param.u4Mcs;
  if (param.u4Preamble == 0) {
    *word &= ~ShortPreambleBit;
    return true;
  }
  if (param.u4Mcs == 0) {
    ConsolePrintf("Error: SP but MCS=0!\n");
    return false;
  }
  *word |= ShortPreambleBit;
  return true;
}

bool AddOfdmRate(const FixedRateParam& param, uint32_t* word) {
  if (param.u4Mcs >= sizeof(OfdmRateCodes)) {
    ConsolePrintf("Error: OFDM mode but wrong MCS!\n");
    return false;
  }
  *word |= OfdmRateCodes[param.u4Mcs];
  return true;
}

bool AddRate(const FixedRateParam& param, uint32_t* word) {
  if (param.u4Mode == TxModeCck) return AddCckRate(param, word);
  if (param.u4Mode == TxModeOfdm) return AddOfdmRate(param, word);
  *word |= param.u4Mcs;
  return true;
}

// The number of spatial streams. For VHT and HE it is the number that was typed, unchecked.
uint32_t StreamCount(const FixedRateParam& param) {
  uint32_t streams = 1;
  if (param.u4Mode == TxModeHt || param.u4Mode == TxModeGreenfield) {
    if (param.u4Mcs == HtDuplicateMcs) return 1;
    streams = param.u4Mcs / HtMcsPerStream + 1;
  } else if (param.u4Mode == TxModeVht || IsHeMode(param.u4Mode)) {
    streams = param.u4VhtNss;
  } else {
    return 1;
  }
  return param.u4STBC != 0 && streams == 1 ? 2 : streams;
}

}  // namespace

int nicRateHeLtfCheckGi(const FixedRateParam& param) {
  if (!IsHeMode(param.u4Mode)) return 1;
  if (param.u4Mode >= ModeCount) return 0;
  for (const HeLtfRow& row : HeLtfRows) {
    if (row.ltf == param.u4HeLTF && row.guardInterval == param.u4GI) {
      return (row.modes & ModeBit(param.u4Mode)) != 0 ? 1 : 0;
    }
  }
  return 0;
}

int nicSetFixedRateData(const FixedRateParam& param, uint32_t* rateWord) {
  const bool he = IsHeMode(param.u4Mode);
  uint32_t word = he ? FixedRateBit | HeBit : FixedRateBit;

  if (!he) {
    if (param.u4GI != 0) word |= ShortGuardIntervalBit;
  } else if (param.u4GI < HeGuardIntervalCount) {
    word |= param.u4GI << HeGuardIntervalShift;
  } else {
    ConsolePrintf("Error: Wrong HE GI! SGI=0, MGI=1, LGI=2\n");
  }
  if (param.u4LDPC != 0) word |= LdpcBit;
  if (param.u4SpeEn != 0) word |= SpatialExtensionBit;

  if (param.u4Bw >= BandwidthCount) {
    ConsolePrintf("Error: Wrong BW! BW20=0, BW40=1, BW80=2,BW160=3\n");
    return 0;
  }
  if (param.u4STBC != 0) word |= StbcBit;
  word |= param.u4Bw << BandwidthShift;

  if (param.u4Mode >= ModeCount) {
    ConsolePrintf("Error: Wrong TxMode! CCK=0, OFDM=1, HT=2, GF=3, VHT=4");
    ConsolePrintf("Error: HE_SU=8, HE_ER_SU=9, HE_TRIG=10, HE_MU=11\n");
    return 0;
  }
  word |= (param.u4Mode & (he ? HeModeMask : ModeMask)) << ModeShift;

  const ModeRow& mode = ModeRows[param.u4Mode];
  if (param.u4Mcs >= mode.mcsLimit) {
    ConsolePrintf("Error: %s mode but wrong MCS(=%d)!\n", mode.name, param.u4Mcs);
    return 0;
  }
  if (!AddRate(param, &word)) return 0;

  // Zero streams wrap to the largest value that the field holds.
  const uint32_t extraStreams = StreamCount(param) - 1;
  if (he) {
    word |= (extraStreams & HeStreamMask) << HeStreamShift;
    word |= (param.u4HeLTF & HeLtfMask) << HeLtfShift;
  } else {
    word |= (extraStreams & StreamMask) << StreamShift;
  }
  if (param.u4Mode == TxModeHeErSu) {
    if (param.u4HeErDCM != 0) word |= ErDcmIndex;
    if (param.u4HeEr106t != 0) word |= Er106ToneIndex;
  }
  *rateWord = word;
  return 1;
}
