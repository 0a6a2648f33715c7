// `sar get_sensor_info`: the state of the SAR sensor.
#include "app/console/print.h"
#include "channel/little_endian.h"
#include "commands/sar/sar_views.h"
#include "platform/clock.h"

namespace {

constexpr uint64_t TicksPerSecond = 10000000;  // a tick is 100 nanoseconds
constexpr int64_t SecondsFrom1601To1970 = 11644473600;

// `ticks` counts from 1601-01-01 00:00:00 UTC.
void PrintUpdateTime(uint64_t ticks) {
  CalendarTime time =
      LocalCalendarTime(static_cast<int64_t>(ticks / TicksPerSecond) - SecondsFrom1601To1970);
  ConsolePrintf("Last Sensor update time is %04d/%02d/%2d %02d:%02d:%02d\n", time.year, time.month,
                time.day, time.hour, time.minute, time.second);
}

}  // namespace

int ShowSensorInfo(const SarLayout& layout) {
  AcpiTableQuery record = {};
  if (!FetchSarTable(layout, &record, SarView::SensorInfo)) return 1;

  const uint8_t* bytes = record.bytes;
  ConsolePrintf("Sensor Available             [0x%x]\n", ReadU32(bytes + layout.sensorAvailableAt));
  ConsolePrintf("Sensor Version               [0x%X]\n", ReadU32(bytes + layout.sensorVersionAt));
  ConsolePrintf("Sensor Mode Index            [0x%X]\n", ReadU32(bytes + layout.sensorModeIdxAt));
  if (layout.updateTimeAt != NoUpdateTime) PrintUpdateTime(ReadU64(bytes + layout.updateTimeAt));

  uint32_t callbackStatus = ReadU32(bytes + layout.sensorCbStatusAt);
  if (callbackStatus == 0) {
    ConsolePrintf("Sensor CB Status Successful.");
  } else {
    ConsolePrintf("Sensor CB Status Failed.     [0x%X]\n", callbackStatus);
    ConsolePrintf(
        "Sensor Callback function is failure. Please collect the driver log to VLR. Thanks!!\n");
  }
  return 0;
}
