// `get_fw_ver`: the versions of the Wi-Fi and the Bluetooth firmware.
#include "commands/status/firmware_version.h"

#include "app/console/print.h"
#include "channel/driver_channel.h"
#include "channel/little_endian.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/status/status_commands.h"

namespace {

// The driver gets an odd number of bytes: 127 characters of 16 bits and one more byte.
constexpr uint32_t BluetoothVersionSize = 255;

// Prints a text of 16-bit characters, up to a zero; what is not ASCII prints as a question mark.
void PrintWideText(const uint8_t* bytes, uint32_t size) {
  for (uint32_t i = 0; i + 1 < size; i += 2) {
    const uint16_t character = ReadU16(bytes + i);
    if (character == 0) return;
    ConsolePrintf("%c", character < 0x80 ? character : '?');
  }
}

}  // namespace

int HandleGetFwVerCommand(int argc, char** /*argv*/) {
  N9VersionInfo wifi = {};
  uint8_t bluetooth[BluetoothVersionSize] = {};
  if (argc != 2) return PrintInvalidParameters(1);
  if (!OidRequest(OidFirmwareVersion, &wifi)) return PrintRequestError(0);
  ConsolePrintf("Wifi/BT FW Version\n");
  ConsolePrintf("FW Version (WIFI) = %.*s \n", N9VersionTextLimit, N9VersionText(wifi));
  if (!OidRequest(OidBluetoothVersion, bluetooth, BluetoothVersionSize)) {
    return PrintRequestError(0);
  }
  ConsolePrintf("FW Version (BT) = ");
  PrintWideText(bluetooth, BluetoothVersionSize);
  ConsolePrintf(" \n");
  return 1;
}
