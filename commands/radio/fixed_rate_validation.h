// The rules of a fixed transmit rate, and the rate word that the driver takes.
#pragma once

#include <cstdint>

// The transmit modes. 6 and 7 have no rates. From HE_SU on all are HE modes.
enum TxMode : uint32_t {
  TxModeCck = 0,
  TxModeOfdm = 1,
  TxModeHt = 2,
  TxModeGreenfield = 3,
  TxModeVht = 4,
  TxModePlr = 5,
  TxModeHeSu = 8,
  TxModeHeErSu = 9,
  TxModeHeTrig = 10,
  TxModeHeMu = 11,
};

struct FixedRateParam {
  uint32_t u4Mode = 0;      // TxMode
  uint32_t u4Bw = 0;        // 0 20 MHz, 1 40 MHz, 2 80 MHz, 3 160 MHz
  uint32_t u4Mcs = 0;       // rate index, below the mode's limit
  uint32_t u4VhtNss = 0;    // spatial streams, VHT and HE only
  uint32_t u4GI = 0;        // HE: 0 0.8 us, 1 1.6 us, 2 3.2 us; others: 0 long, else short
  uint32_t u4Preamble = 0;  // CCK: 0 long, else short
  uint32_t u4STBC = 0;      // 0 off, else on
  uint32_t u4LDPC = 0;      // 0 BCC, else LDPC
  uint32_t u4SpeEn = 0;     // 0 off, else one transmit chain is duplicated to two
  uint32_t u4HeLTF = 0;     // HE training field: 0 1X, 1 2X, 2 4X
  uint32_t u4HeErDCM = 0;   // HE extended range: dual carrier modulation, 0 off, else on
  uint32_t u4HeEr106t = 0;  // HE extended range: 106-tone resource unit, 0 off, else on
};

// Returns 1 when the mode allows the training field with the guard interval, else 0. Modes other
// than HE allow everything.
int nicRateHeLtfCheckGi(const FixedRateParam& param);

// Builds the rate word. Returns 1 and writes it when the parameters are valid; otherwise prints
// why they are not and returns 0.
int nicSetFixedRateData(const FixedRateParam& param, uint32_t* rateWord);
