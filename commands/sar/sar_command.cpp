#include "commands/sar/sar_command.h"

#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/sar/sar_views.h"

namespace {

constexpr uint32_t ErrorMoreData = 234;

struct Subcommand {
  const char* word;
  int (*show)(const SarLayout& layout);
  uint32_t shortestRecord;  // drivers with shorter records do not have the table
};

constexpr Subcommand Subcommands[] = {
    {"get_sar_table", ShowSarTable, 0},
    {"get_siso_sar_table", ShowSisoSarTable, 0},
    {"get_geo_table", ShowGeoTable, 0},
    {"get_country_list", ShowCountryList, 0},
    {"get_TxMaxPower_table", ShowTxMaxPowerTable, 0},
    {"get_sensor_info", ShowSensorInfo, 0},
    {"get_country_code", ShowCountryCode, 0},
    {"get_FlagTable", ShowFlagTable, Layout368.recordLength},
};

// A driver refuses records of any other length than its own with "more data". Any other refusal
// means that the length is right.
bool DriverTakesLength(uint32_t recordLength) {
  AcpiTableQuery record = {};
  return OidRequest(OidAcpiTable, record.bytes, recordLength) || DeviceError() != ErrorMoreData;
}

}  // namespace

const SarLayout& DetectSarLayout() {
  if (DriverTakesLength(Layout368.recordLength)) return Layout368;
  if (DriverTakesLength(Layout184.recordLength)) return Layout184;
  return Layout176;
}

int RunSarSubcommand(const SarLayout& layout, int argc, char** argv) {
  if (argc == 3) {
    for (const Subcommand& subcommand : Subcommands) {
      if (layout.recordLength >= subcommand.shortestRecord &&
          EqualsIgnoreCase(argv[2], subcommand.word)) {
        return subcommand.show(layout);
      }
    }
  }
  return PrintIncorrectParameters();
}

int HandleSarCommand(int argc, char** argv) {
  return RunSarSubcommand(DetectSarLayout(), argc, argv);
}
