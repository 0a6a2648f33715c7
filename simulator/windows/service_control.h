// The driver as an entry of the service control manager. On failure each
// function prints on standard error what went wrong and returns false.
#pragma once

// The driver file beside the control program. A service with another image is not touched.
constexpr char DriverFile[] = "a8000sim.sys";

// Installs the driver file, or replaces the one that is installed, and starts it.
bool InstallDriver(const char* path);

// Stops the driver and removes it.
bool RemoveDriver();

// Prints why the driver cannot be reached, from the last-error code of the attempt.
void ReportUnreachable(unsigned long error);
