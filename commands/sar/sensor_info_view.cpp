// `sar get_sensor_info`: the state of the SAR sensor.
#include "app/console/print.h"
#include "channel/little_endian.h"
#include "commands/sar/sar_views.h"
#include "platform/clock.h"

namespace {

// Where the fields stand behind SarLayout::sensorAt.
constexpr uint32_t VersionAt = 0;
constexpr uint32_t AvailableAt = 4;
constexpr uint32_t CallbackStatusAt = 8;  // 0: the driver's sensor callback succeeded
constexpr uint32_t ModeIndexAt = 12;

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

  const uint8_t* sensor = record.bytes + layout.sensorAt;
  ConsolePrintf("Sensor Available             [0x%x]\n", ReadU32(sensor + AvailableAt));
  ConsolePrintf("Sensor Version               [0x%X]\n", ReadU32(sensor + VersionAt));
  ConsolePrintf("Sensor Mode Index            [0x%X]\n", ReadU32(sensor + ModeIndexAt));
  if (layout.updateTimeAt != 0) PrintUpdateTime(ReadU64(record.bytes + layout.updateTimeAt));

  uint32_t callbackStatus = ReadU32(sensor + CallbackStatusAt);
  if (callbackStatus == 0) {
    ConsolePrintf("Sensor CB Status Successful.");
  } else {
    ConsolePrintf("Sensor CB Status Failed.     [0x%X]\n", callbackStatus);
    ConsolePrintf(
        "Sensor Callback function is failure. Please collect the driver log to VLR. Thanks!!\n");
  }
  return 0;
}
