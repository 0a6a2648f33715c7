#include "simulator/windows/service_control.h"

#include <windows.h>

#include <cstdio>

namespace {

enum class DriverState {
  Unknown,  // no rights to ask
  NotInstalled,
  Stopped,
  StopPending,  // stops once the last program has closed the device
  Running,
};

constexpr char ServiceName[] = "A8000";
constexpr char DisplayName[] = "Simulated A8000 adapter";

constexpr DWORD ErrorInvalidImageHash = 577;
constexpr DWORD StopWait = 5000;  // milliseconds
constexpr DWORD StopStep = 20;

bool Fail(const char* what) {
  fprintf(stderr, "a8000: %s\n", what);
  return false;
}

bool FailWithCode(const char* what, DWORD error) {
  switch (error) {
    case ERROR_ACCESS_DENIED:
      return Fail("no rights; run as administrator");
    case ERROR_SERVICE_DOES_NOT_EXIST:
      return Fail("the driver is not installed; run a8000ctl install");
    case ERROR_SERVICE_MARKED_FOR_DELETE:
      return Fail("the driver is being removed; close the programs that have the device open");
    case ErrorInvalidImageHash:
      return Fail("the driver's signature is not accepted; see driver-readme.md");
    default:
      fprintf(stderr, "a8000: %s: error %lu\n", what, error);
      return false;
  }
}

DriverState StateOf(SC_HANDLE service) {
  SERVICE_STATUS status = {};
  if (!QueryServiceStatus(service, &status)) return DriverState::Unknown;
  switch (status.dwCurrentState) {
    case SERVICE_STOPPED:
      return DriverState::Stopped;
    case SERVICE_STOP_PENDING:
      return DriverState::StopPending;
    default:
      return DriverState::Running;
  }
}

// Opens the service; null, with a last-error code, where that fails.
SC_HANDLE OpenDriver(DWORD access) {
  SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT);
  if (manager == nullptr) return nullptr;
  SC_HANDLE service = OpenServiceA(manager, ServiceName, access);
  const DWORD error = GetLastError();
  CloseServiceHandle(manager);
  SetLastError(error);
  return service;
}

// Creates the service, or points the one that exists to `path`; null where that fails.
SC_HANDLE CreateDriver(const char* path) {
  SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE);
  if (manager == nullptr) return nullptr;
  SC_HANDLE service =
      CreateServiceA(manager, ServiceName, DisplayName, SERVICE_ALL_ACCESS, SERVICE_KERNEL_DRIVER,
                     SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL, path, nullptr, nullptr, nullptr,
                     nullptr, nullptr);
  DWORD error = GetLastError();
  if (service == nullptr && error == ERROR_SERVICE_EXISTS) {
    service = OpenServiceA(manager, ServiceName, SERVICE_ALL_ACCESS);
    error = GetLastError();
  }
  CloseServiceHandle(manager);
  SetLastError(error);
  return service;
}

bool StopService(SC_HANDLE service) {
  SERVICE_STATUS status = {};
  const DriverState state = StateOf(service);
  if (state == DriverState::Stopped) return true;
  // One that is stopping already takes no second request.
  if (state != DriverState::StopPending &&
      !ControlService(service, SERVICE_CONTROL_STOP, &status) &&
      GetLastError() != ERROR_SERVICE_NOT_ACTIVE) {
    return FailWithCode("cannot stop the driver", GetLastError());
  }
  for (DWORD waited = 0; waited < StopWait; waited += StopStep) {
    if (StateOf(service) == DriverState::Stopped) return true;
    Sleep(StopStep);
  }
  return Fail("the driver is in use; close the programs that have the device open");
}

bool StartDriverFile(SC_HANDLE service, const char* path) {
  if (!StopService(service)) return false;
  if (!ChangeServiceConfigA(service, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, path,
                            nullptr, nullptr, nullptr, nullptr, nullptr, nullptr)) {
    return FailWithCode("cannot install the driver", GetLastError());
  }
  if (StartServiceA(service, 0, nullptr)) return true;
  return FailWithCode("cannot start the driver", GetLastError());
}

DriverState QueryDriver() {
  SC_HANDLE service = OpenDriver(SERVICE_QUERY_STATUS);
  if (service == nullptr) {
    return GetLastError() == ERROR_SERVICE_DOES_NOT_EXIST ? DriverState::NotInstalled
                                                          : DriverState::Unknown;
  }
  const DriverState state = StateOf(service);
  CloseServiceHandle(service);
  return state;
}

}  // namespace

bool InstallDriver(const char* path) {
  SC_HANDLE service = CreateDriver(path);
  if (service == nullptr) return FailWithCode("cannot install the driver", GetLastError());
  const bool started = StartDriverFile(service, path);
  CloseServiceHandle(service);
  return started;
}

bool RemoveDriver() {
  SC_HANDLE service = OpenDriver(SERVICE_QUERY_STATUS | SERVICE_STOP | DELETE);
  if (service == nullptr) return FailWithCode("cannot remove the driver", GetLastError());
  // Also where it does not stop: it is then gone once the last program has closed the device.
  const bool stopped = StopService(service);
  const bool removed = DeleteService(service) != 0;
  const DWORD error = GetLastError();
  CloseServiceHandle(service);
  if (!removed) return FailWithCode("cannot remove the driver", error);
  return stopped;
}

void ReportUnreachable(unsigned long error) {
  if (error != ERROR_FILE_NOT_FOUND) {
    FailWithCode("the driver does not answer", error);
    return;
  }
  switch (QueryDriver()) {
    case DriverState::NotInstalled:
      FailWithCode("", ERROR_SERVICE_DOES_NOT_EXIST);
      break;
    case DriverState::Stopped:
    case DriverState::StopPending:
      Fail("the driver is not started; run a8000ctl install");
      break;
    default:
      FailWithCode("the driver does not answer", error);
      break;
  }
}
