#include "commands/internal/wtbl_rate.h"

#include "app/console/print.h"
#include "commands/internal/wtbl_field.h"

namespace {

// Codes that stand in no row print no rate.
constexpr WtblValueTexts CckRates = {{0, 0, "/long preamble 1M"},   {1, 1, "/long preamble 2M"},
                                     {2, 2, "/long preamble 5.5M"}, {3, 3, "/long preamble 11M"},
                                     {5, 5, "/short preamble 2M"},  {6, 6, "/short preamble 5.5M"},
                                     {7, 7, "/short preamble 11M"}};
constexpr WtblValueTexts OfdmRates = {{8, 8, "/48M"},   {9, 9, "/24M"},   {10, 10, "/12M"},
                                      {11, 11, "/6M"},  {12, 12, "/54M"}, {13, 13, "/36M"},
                                      {14, 14, "/18M"}, {15, 15, "/9M"}};
constexpr WtblValueTexts McsRates = {{0, 63, "/MCS%d"}};

struct RateMode {
  const char* name = nullptr;
  WtblValueTexts rates;
};

// By the word's four mode bits.
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
  const uint32_t stbc = WtblBits(value, 13, 13);
  const uint32_t streams = WtblBits(value, 12, 10);
  const RateMode& mode = RateModes[WtblBits(value, 9, 6)];
  char rate[32];
  FormatWtblValueText(rate, sizeof(rate), mode.rates, WtblBits(value, 5, 0));
  BoundedPrintf(text, size, "  >> STBC(%u)/Nsts(%u)%s%s", stbc, streams, mode.name, rate);
}
