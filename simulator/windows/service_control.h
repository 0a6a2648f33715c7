// The driver as an entry of the service control manager. Each function says on standard error what
// went wrong and then returns false.
#pragma once

// Lies beside the control program. A service whose image has another name is left alone.
constexpr char DriverFile[] = "a8000sim.sys";

// Installs the driver file, in place of one that is installed already, and starts it.
bool InstallDriver(const char* path);

// Stops the driver and takes it away.
bool RemoveDriver();

// Says why the driver cannot be reached, with the last-error code that reaching it has met.
void ReportUnreachable(unsigned long error);
