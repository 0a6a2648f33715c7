#include "simulator/windows/service_control.h"

#include <windows.h>

#include <cstdio>
#include <cstring>

#include "simulator/host_program.h"

namespace {

enum class DriverState {
  Unknown,  // no rights to ask
  NotInstalled,
  Foreign,  // another program's service, which has been said
  Stopped,
  StopPending,  // stops once the last program has closed the device
  Running,
};

constexpr char ServiceName[] = "a8000sim";
constexpr char DisplayName[] = "Simulated A8000 adapter";

constexpr DWORD ErrorInvalidImageHash = 577;
constexpr DWORD SaidAlready = 0xFFFFFFFF;  // no code of the system

// How long to wait and how often to look, in milliseconds.
constexpr DWORD StopWait = 5000;
constexpr DWORD StopStep = 20;
constexpr DWORD DeletionWait = 2000;
constexpr DWORD DeletionStep = 100;
constexpr DWORD TurnWait = 30000;

bool ReportFailure(const char* what) {
  Report(what);
  return false;
}

bool ReportFailureCode(const char* what, DWORD error) {
  switch (error) {
    case SaidAlready:
      return false;
    case ERROR_ACCESS_DENIED:
      return ReportFailure("no rights; run as administrator");
    case ERROR_BUSY:
      return ReportFailure("the driver is in use; close the programs that have the device open");
    case ERROR_ALREADY_EXISTS:
      return ReportFailure(
          "another driver has the name A8000; disable the adapter that it belongs to");
    case ERROR_SERVICE_DOES_NOT_EXIST:
      return ReportFailure("the driver is not installed; run a8000ctl install");
    case ERROR_SERVICE_MARKED_FOR_DELETE:
      return ReportFailure(
          "the driver is still being removed; close the programs that have the device open, and "
          "the Services console");
    case ErrorInvalidImageHash:
      return ReportFailure("the driver's signature is not accepted; see driver-readme.md");
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

// Opens the service. Returns null, with a last-error code, on failure.
SC_HANDLE OpenDriver(DWORD access) {
  SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT);
  if (manager == nullptr) return nullptr;
  SC_HANDLE service = OpenServiceA(manager, ServiceName, access);
  const DWORD error = GetLastError();
  CloseServiceHandle(manager);
  SetLastError(error);
  return service;
}

// Creates the service or opens the existing one. Returns null, with a last-error code, on failure.
SC_HANDLE CreateDriver(const char* path, bool* created) {
  SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CREATE_SERVICE);
  if (manager == nullptr) return nullptr;
  SC_HANDLE service =
      CreateServiceA(manager, ServiceName, DisplayName, SERVICE_ALL_ACCESS, SERVICE_KERNEL_DRIVER,
                     SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL, path, nullptr, nullptr, nullptr,
                     nullptr, nullptr);
  DWORD error = GetLastError();
  *created = service != nullptr;
  if (service == nullptr && error == ERROR_SERVICE_EXISTS) {
    service = OpenServiceA(manager, ServiceName, SERVICE_ALL_ACCESS);
    error = GetLastError();
  }
  CloseServiceHandle(manager);
  SetLastError(error);
  return service;
}

// The steps below return a last-error code, 0 on success.

// Checks that a service is a kernel driver from a file of the simulated adapter's name.
DWORD CheckOwner(SC_HANDLE service) {
  constexpr DWORD MostBytes = 8192;  // of a configuration
  alignas(QUERY_SERVICE_CONFIGA) static char record[MostBytes];
  auto* config = reinterpret_cast<QUERY_SERVICE_CONFIGA*>(record);
  DWORD needed = 0;
  if (!QueryServiceConfigA(service, config, MostBytes, &needed)) return GetLastError();
  const char* image = config->lpBinaryPathName != nullptr ? config->lpBinaryPathName : "";
  const char* folderEnd = strrchr(image, '\\');
  if (config->dwServiceType == SERVICE_KERNEL_DRIVER &&
      _stricmp(folderEnd != nullptr ? folderEnd + 1 : image, DriverFile) == 0) {
    return 0;
  }
  fprintf(stderr, "a8000: the service %s is another program's: %s\n", ServiceName, image);
  return SaidAlready;
}

DWORD StopDriver(SC_HANDLE service) {
  SERVICE_STATUS status = {};
  const DriverState state = StateOf(service);
  if (state == DriverState::Stopped) return 0;
  // A service that is stopping takes no second request.
  if (state != DriverState::StopPending &&
      !ControlService(service, SERVICE_CONTROL_STOP, &status) &&
      GetLastError() != ERROR_SERVICE_NOT_ACTIVE) {
    return GetLastError();
  }
  for (DWORD waited = 0; waited < StopWait; waited += StopStep) {
    if (StateOf(service) == DriverState::Stopped) return 0;
    Sleep(StopStep);
  }
  return ERROR_BUSY;
}

DWORD StartDriverFile(SC_HANDLE service, const char* path) {
  DWORD error = CheckOwner(service);
  if (error == 0) error = StopDriver(service);
  if (error != 0) return error;
  if (!ChangeServiceConfigA(service, SERVICE_KERNEL_DRIVER, SERVICE_DEMAND_START,
                            SERVICE_ERROR_NORMAL, path, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr) ||
      !StartServiceA(service, 0, nullptr)) {
    return GetLastError();
  }
  return 0;
}

// After a first installation that failed there is no service.
DWORD InstallOnce(const char* path) {
  bool created = false;
  SC_HANDLE service = CreateDriver(path, &created);
  if (service == nullptr) return GetLastError();
  const DWORD error = StartDriverFile(service, path);
  if (error != 0 && created) DeleteService(service);
  CloseServiceHandle(service);
  return error;
}

// A deleted service stays, marked as deleted, until the last handle to it is closed.
DWORD WaitUntilGone() {
  for (DWORD waited = 0; waited < DeletionWait; waited += DeletionStep) {
    SC_HANDLE service = OpenDriver(SERVICE_QUERY_STATUS);
    if (service == nullptr) {
      const DWORD error = GetLastError();
      return error == ERROR_SERVICE_DOES_NOT_EXIST ? 0 : error;
    }
    CloseServiceHandle(service);
    Sleep(DeletionStep);
  }
  return ERROR_SERVICE_MARKED_FOR_DELETE;
}

// Also deletes a driver that does not stop. It is removed when the last program closes the device.
DWORD StopAndDelete(SC_HANDLE service) {
  const DWORD error = CheckOwner(service);
  if (error != 0) return error;
  const DWORD stopError = StopDriver(service);
  if (!DeleteService(service) && GetLastError() != ERROR_SERVICE_MARKED_FOR_DELETE) {
    return GetLastError();
  }
  return stopError;
}

// Only one a8000ctl installs or removes at a time. Returns null if another one does not end.
HANDLE TakeTurn() {
  HANDLE turn = CreateMutexA(nullptr, FALSE, "Global\\a8000ctl");
  if (turn == nullptr) {
    ReportFailureCode("cannot tell whether another a8000ctl is running", GetLastError());
    return nullptr;
  }
  const DWORD waited = WaitForSingleObject(turn, TurnWait);
  if (waited == WAIT_OBJECT_0 || waited == WAIT_ABANDONED) return turn;
  ReportFailure("another a8000ctl does not end");
  CloseHandle(turn);
  return nullptr;
}

void EndTurn(HANDLE turn) {
  ReleaseMutex(turn);
  CloseHandle(turn);
}

DriverState QueryDriver() {
  SC_HANDLE service = OpenDriver(SERVICE_QUERY_STATUS | SERVICE_QUERY_CONFIG);
  if (service == nullptr) {
    return GetLastError() == ERROR_SERVICE_DOES_NOT_EXIST ? DriverState::NotInstalled
                                                          : DriverState::Unknown;
  }
  const DriverState state =
      CheckOwner(service) == SaidAlready ? DriverState::Foreign : StateOf(service);
  CloseServiceHandle(service);
  return state;
}

}  // namespace

bool InstallDriver(const char* path) {
  HANDLE turn = TakeTurn();
  if (turn == nullptr) return false;
  DWORD error = InstallOnce(path);
  for (DWORD waited = 0; error == ERROR_SERVICE_MARKED_FOR_DELETE && waited < DeletionWait;
       waited += DeletionStep) {
    Sleep(DeletionStep);
    error = InstallOnce(path);
  }
  EndTurn(turn);
  return error == 0 || ReportFailureCode("cannot install the driver", error);
}

bool RemoveDriver() {
  HANDLE turn = TakeTurn();
  if (turn == nullptr) return false;
  SC_HANDLE service =
      OpenDriver(SERVICE_QUERY_STATUS | SERVICE_QUERY_CONFIG | SERVICE_STOP | DELETE);
  DWORD error = GetLastError();
  if (service != nullptr) {
    error = StopAndDelete(service);
    CloseServiceHandle(service);
    if (error == 0) error = WaitUntilGone();
  }
  EndTurn(turn);
  return error == 0 || ReportFailureCode("cannot remove the driver", error);
}

void ReportUnreachable(unsigned long error) {
  if (error != ERROR_FILE_NOT_FOUND) {
    ReportFailureCode("the driver does not answer", error);
    return;
  }
  switch (QueryDriver()) {
    case DriverState::NotInstalled:
      ReportFailureCode("", ERROR_SERVICE_DOES_NOT_EXIST);
      break;
    case DriverState::Foreign:
      break;
    case DriverState::Stopped:
    case DriverState::StopPending:
      ReportFailure("the driver is not started; run a8000ctl install");
      break;
    default:
      ReportFailureCode("the driver does not answer", error);
      break;
  }
}
