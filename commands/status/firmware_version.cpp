// `get_fw_ver`: the versions of the Wi-Fi and the Bluetooth firmware.
#include "commands/status/firmware_version.h"

#include "app/console/print.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "commands/refusals.h"
#include "commands/status/status_commands.h"

namespace {

// The driver is handed an odd number of bytes: 127 characters of 16 bits and one byte over.
constexpr uint32_t BluetoothVersionSize = 255;

}  // namespace

int HandleGetFwVerCommand(int argc, char** /*argv*/) {
  N9VersionInfo wifi = {};
  uint8_t bluetooth[BluetoothVersionSize + 1] = {};
  if (argc != 2) return InvalidParameters(1);
  if (!OidRequest(OidFirmwareVersion, &wifi)) return RequestRefused(0);
  ConsolePrintf("Wifi/BT FW Version\n");
  ConsolePrintf("FW Version (WIFI) = %.*s \n", N9VersionTextLimit, N9VersionText(wifi));
  if (!OidRequest(OidBluetoothVersion, bluetooth, BluetoothVersionSize)) return RequestRefused(0);
  // The odd byte is half a character: the text ends before it. %S reads bytes in pairs, whatever
  // the platform's own wide character is.
  bluetooth[BluetoothVersionSize - 1] = 0;
  ConsolePrintf("FW Version (BT) = %S \n", reinterpret_cast<const wchar_t*>(bluetooth));
  return 1;
}
