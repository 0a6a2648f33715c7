// The signal check that `rf` and `export_rssi_report` share. The driver scans for one network and
// returns ten readings of each antenna. Their average is compared with a threshold.
#pragma once

#include <cstddef>
#include <cstdint>

// The request's error code when no network of that name is found.
constexpr uint32_t ErrorNetworkNotFound = 31;

enum RssiBand : uint8_t { RssiBandAll = 0, RssiBand2G = 1, RssiBand5G = 2, RssiBand6G = 3 };

constexpr size_t RssiReadingCount = 10;

struct RssiCheckRequest {
  uint32_t u4Reserved;
  char acSsid[32];  // ends with a zero in the request; a reply may lack the zero
  uint8_t aucBssid[6];
  uint8_t ucChannel;
  int8_t acMainRssi[RssiReadingCount];  // dBm
  int8_t acSubRssi[RssiReadingCount];   // dBm
  uint8_t ucBand;                       // RssiBand
  uint32_t u4Reserved1;
};
static_assert(sizeof(RssiCheckRequest) == 68);
static_assert(offsetof(RssiCheckRequest, acSsid) == 4);
static_assert(offsetof(RssiCheckRequest, aucBssid) == 36);
static_assert(offsetof(RssiCheckRequest, ucChannel) == 42);
static_assert(offsetof(RssiCheckRequest, acMainRssi) == 43);
static_assert(offsetof(RssiCheckRequest, acSubRssi) == 53);
static_assert(offsetof(RssiCheckRequest, ucBand) == 63);

// Reads a threshold in dBm, without its sign. Returns false if it is not a number from 0 to 127.
bool ParseRssiThreshold(const char* text, int* threshold);

// Returns false if the keyword names no band.
bool RssiBandFromKeyword(const char* keyword, uint8_t* band);

// The average of an antenna's readings, rounded toward zero.
int AverageRssi(const int8_t (&readings)[RssiReadingCount]);

// Returns true if the average reaches or equals the threshold.
bool RssiPasses(int average, int negatedThreshold);
