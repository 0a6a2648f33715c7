#include "commands/rssi_country/rssi_check.h"

#include "app/console/scan.h"
#include "app/console/text.h"

namespace {

constexpr int LargestThreshold = 127;

struct BandKeyword {
  const char* keyword;
  RssiBand band;
};

constexpr BandKeyword BandKeywords[] = {
    {"2.4g", RssiBand2G}, {"5g", RssiBand5G}, {"6g", RssiBand6G}, {"all_freq", RssiBandAll}};

}  // namespace

bool ParseRssiThreshold(const char* text, int* threshold) {
  return ScanArgument(text, "%d", threshold) == 1 && *threshold >= 0 &&
         *threshold <= LargestThreshold;
}

bool RssiBandFromKeyword(const char* keyword, uint8_t* band) {
  for (const BandKeyword& row : BandKeywords) {
    if (EqualsIgnoreCase(keyword, row.keyword)) {
      *band = row.band;
      return true;
    }
  }
  return false;
}

int AverageRssi(const int8_t (&readings)[RssiReadingCount]) {
  int sum = 0;
  for (const int8_t reading : readings) sum += reading;
  return sum / static_cast<int>(RssiReadingCount);
}

bool RssiPasses(int average, int negatedThreshold) {
  return average >= negatedThreshold;
}
