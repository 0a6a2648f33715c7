// `country`: the country in force, its power tables and the test modes.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/rssi_country/rssi_country_commands.h"

namespace {

constexpr uint32_t SubcommandNow = 0;
constexpr uint32_t SubcommandGetPowerTable = 1;
constexpr uint32_t SubcommandSetPowerTable = 2;
constexpr uint32_t SubcommandSetPowerTestMode = 4;
constexpr uint32_t SubcommandSetStaticPowerTable = 5;
constexpr uint32_t SubcommandSet6GTestMode = 6;

constexpr uint32_t ErrorAccessDenied = 5;  // the driver's smart country decision is off

struct CountryPowerRequest {
  uint32_t u4Subcommand;
  uint8_t aucCountry[2];  // two ASCII characters
  uint8_t aucUnused[2];
  int32_t i4Channel;
  char acRate[200];         // rate family in the request, first text in the reply
  char acSecondText[318];   // reply only; either text may lack its zero
  uint8_t ucPowerTestMode;  // 1 on, 0 off
  uint8_t uc6GTestMode;     // 1 on, 0 off
  uint8_t aucUnused1[240];
};
static_assert(sizeof(CountryPowerRequest) == 772);
static_assert(offsetof(CountryPowerRequest, aucCountry) == 4);
static_assert(offsetof(CountryPowerRequest, i4Channel) == 8);
static_assert(offsetof(CountryPowerRequest, acRate) == 12);
static_assert(offsetof(CountryPowerRequest, acSecondText) == 212);
static_assert(offsetof(CountryPowerRequest, ucPowerTestMode) == 530);
static_assert(offsetof(CountryPowerRequest, uc6GTestMode) == 531);

bool Send(uint32_t subcommand, CountryPowerRequest* request) {
  request->u4Subcommand = subcommand;
  return OidRequest(OidCountryPower, request);
}

// Prints the record's country between two texts.
void PrintCountry(const char* before, const CountryPowerRequest& request, const char* after) {
  const uint8_t* country = request.aucCountry;
  ConsolePrintf("%s%c%c (0x%x)%s\n", before, country[0], country[1],
                country[1] * 0x100 + country[0], after);
}

int ShowCountry() {
  CountryPowerRequest request = {};
  if (!Send(SubcommandNow, &request)) return PrintRequestError(1);
  PrintCountry("", request, "");
  return 0;
}

int SetPowerTable(uint32_t subcommand, const char* country, const char* done) {
  CountryPowerRequest request = {};
  for (size_t i = 0; i < sizeof(request.aucCountry) && country[i] != 0; i++) {
    request.aucCountry[i] = static_cast<uint8_t>(country[i]);
  }
  if (!Send(subcommand, &request)) {
    if (DeviceError() != ErrorAccessDenied) return PrintRequestError(1);
    ConsolePrintf("SmartCountryDecisionEn is disabled");
    return 1;
  }
  PrintCountry("Set ", request, done);
  return 0;
}

// Every text but "1" means off.
uint8_t TestMode(const char* text) {
  return EqualsIgnoreCase(text, "1") ? 1 : 0;
}

int SetPowerTestMode(const char* mode) {
  CountryPowerRequest request = {};
  request.ucPowerTestMode = TestMode(mode);
  if (!Send(SubcommandSetPowerTestMode, &request)) return PrintRequestError(1);
  ConsolePrintf("POWER_TEST_MODE %s\n", request.ucPowerTestMode != 0 ? "ON" : "OFF");
  return 0;
}

int Set6GTestMode(const char* mode) {
  CountryPowerRequest request = {};
  request.uc6GTestMode = TestMode(mode);
  if (!Send(SubcommandSet6GTestMode, &request)) return PrintRequestError(1);
  ConsolePrintf("6G_TEST_MODE %s\n", request.uc6GTestMode != 0 ? "ON" : "OFF");
  return 0;
}

// Asks for the current country first. The second question sends that reply back in all bytes that
// it does not set. If CHANNEL is not a number, the tool sends the channel of the first reply.
int ShowPowerTable(const char* rate, const char* channel) {
  CountryPowerRequest request = {};
  if (!Send(SubcommandNow, &request)) return PrintRequestError(1);
  ScanArgument(channel, "%d", &request.i4Channel);
  CopyText(request.acRate, sizeof(request.acRate), rate);
  if (!Send(SubcommandGetPowerTable, &request)) return PrintRequestError(1);
  PrintCountry("", request, " power table");
  ConsolePrintf("The unit of each TxPower value is 0.5dBm\n");
  ConsolePrintf("%.*s\n", static_cast<int>(sizeof(request.acRate)), request.acRate);
  ConsolePrintf("%.*s\n", static_cast<int>(sizeof(request.acSecondText)), request.acSecondText);
  return 0;
}

}  // namespace

int HandleCountryCommand(int argc, char** argv) {
  if (argc == 3 && EqualsIgnoreCase(argv[2], "now")) return ShowCountry();
  if (argc == 4) {
    if (EqualsIgnoreCase(argv[2], "set_pwr_tbl")) {
      return SetPowerTable(SubcommandSetPowerTable, argv[3], " power table DONE");
    }
    if (EqualsIgnoreCase(argv[2], "set_pwr_test_mode")) return SetPowerTestMode(argv[3]);
    if (EqualsIgnoreCase(argv[2], "set_6g_test_mode")) return Set6GTestMode(argv[3]);
    if (EqualsIgnoreCase(argv[2], "set_st_pwr_tbl")) {
      return SetPowerTable(SubcommandSetStaticPowerTable, argv[3], " static power table DONE");
    }
  }
  if (argc == 5 && EqualsIgnoreCase(argv[2], "get_pwr_tbl")) {
    return ShowPowerTable(argv[3], argv[4]);
  }
  return PrintIncorrectParameters();
}
