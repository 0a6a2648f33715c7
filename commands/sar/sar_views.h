// The views of the `sar` command: each asks the driver for one table of the platform firmware,
// checks its length and prints it. All return 0 when shown, 1 after printing what failed.
#pragma once

#include "commands/sar/sar_query.h"

int ShowSarTable(const SarLayout& layout);         // ZWDS: SAR power limits
int ShowSisoSarTable(const SarLayout& layout);     // ZWSS: SAR power limits by antenna
int ShowGeoTable(const SarLayout& layout);         // ZWGS: power limits by region
int ShowCountryList(const SarLayout& layout);      // ZWCL: countries that allow 6 GHz
int ShowTxMaxPowerTable(const SarLayout& layout);  // ZWPL: power limits by channel
int ShowSensorInfo(const SarLayout& layout);       // the SAR sensor's state
int ShowCountryCode(const SarLayout& layout);      // ZWCC: country imposed by the platform
int ShowFlagTable(const SarLayout& layout);        // ZWFG: flags
