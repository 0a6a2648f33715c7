// The version record of the Wi-Fi firmware.
#pragma once

#include <cstddef>
#include <cstdint>

// The texts fill their fields and have no zero. Only the build version ends with one.
struct N9VersionInfo {
  uint8_t ucInfo;  // information number
  uint8_t ucEco;   // chip revision, counted from 0 (E1 is 0)
  uint8_t unused2;
  uint8_t ucTailerMajor;  // version of the firmware's trailer record
  uint8_t ucTailerMinor;
  uint8_t unused5[2];
  char aucPlatform[10];      // firmware platform name
  char aucVersion[19];       // build version, zero-terminated
  char aucManifestDate[16];  // release manifest
  char aucManifestPlatform[12];
  uint8_t unused64[4];
  char aucPatchDate[16];  // Bluetooth patch
  char aucPatchPlatform[12];
  uint8_t unused96[4];
};
static_assert(sizeof(N9VersionInfo) == 100);
static_assert(offsetof(N9VersionInfo, aucPlatform) == 7);
static_assert(offsetof(N9VersionInfo, aucVersion) == 17);
static_assert(offsetof(N9VersionInfo, aucManifestDate) == 36);
static_assert(offsetof(N9VersionInfo, aucManifestPlatform) == 52);
static_assert(offsetof(N9VersionInfo, aucPatchDate) == 68);
static_assert(offsetof(N9VersionInfo, aucPatchPlatform) == 84);

// The build version is printed up to its zero. A text without a zero continues into the fields
// after it and ends at the end of the record.
constexpr int N9VersionTextLimit = sizeof(N9VersionInfo) - offsetof(N9VersionInfo, aucVersion);

// The build version's first character, for printing with "%.*s" and N9VersionTextLimit.
inline const char* N9VersionText(const N9VersionInfo& info) {
  return reinterpret_cast<const char*>(&info) + offsetof(N9VersionInfo, aucVersion);
}
