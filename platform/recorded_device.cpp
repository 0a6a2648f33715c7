#ifdef _WIN32

#include "platform/recorded_device.h"

#include <cstring>

#include "platform/trace_file.h"

namespace {

struct Recorder {
  bool started;  // the variable has been read
  bool tracing;
  bool unusable;  // the file could not be created
  TraceFile file;
};

Recorder* State() {
  static Recorder recorder;
  return &recorder;
}

// Reads the variable at the first call that touches the device.
void Start(Recorder* recorder) {
  if (recorder->started) return;
  recorder->started = true;
  const char* name = HostVariable("A8000_TRACE");
  if (name == nullptr) return;
  recorder->tracing = CreateTraceFile(&recorder->file, name);
  recorder->unusable = !recorder->tracing;
}

CallResult ResultOf(BOOL succeeded, DWORD error) {
  if (succeeded) return {Outcome::Succeeds, 0};
  return {Outcome::Fails, error};
}

}  // namespace

HANDLE RecordedCreateFileA(const char* path, DWORD access, DWORD sharing,
                           SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD attributes,
                           HANDLE templateFile) {
  Recorder* recorder = State();
  DWORD error = GetLastError();
  Start(recorder);
  SetLastError(recorder->unusable ? ERROR_INVALID_DATA : error);
  if (recorder->unusable) return INVALID_HANDLE_VALUE;
  HANDLE device =
      CreateFileA(path, access, sharing, security, disposition, attributes, templateFile);
  if (!recorder->tracing) return device;
  error = GetLastError();
  CallResult result = ResultOf(device != INVALID_HANDLE_VALUE, error);
  if (device == nullptr) result.outcome = Outcome::YieldsNull;
  TraceOpen(&recorder->file.trace, result);
  SetLastError(error);
  return device;
}

BOOL RecordedDeviceIoControl(HANDLE device, DWORD controlCode, void* input, DWORD inputLength,
                             void* output, DWORD outputLength, DWORD* bytesReturned,
                             OVERLAPPED* overlapped) {
  Recorder* recorder = State();
  uint32_t oid = 0;
  if (!recorder->tracing || inputLength != sizeof(oid)) {
    return DeviceIoControl(device, controlCode, input, inputLength, output, outputLength,
                           bytesReturned, overlapped);
  }
  Trace* trace = &recorder->file.trace;
  const auto* payload = static_cast<const uint8_t*>(output);
  memcpy(&oid, input, sizeof(oid));
  TraceRequest(trace, oid, payload, outputLength);
  const BOOL succeeded = DeviceIoControl(device, controlCode, input, inputLength, output,
                                         outputLength, bytesReturned, overlapped);
  const DWORD error = GetLastError();
  const RequestResult result = {ResultOf(succeeded, error), *bytesReturned, false};
  TraceAnswer(trace, &result, payload, outputLength);
  SetLastError(error);
  return succeeded;
}

BOOL RecordedCloseHandle(HANDLE device) {
  Recorder* recorder = State();
  const BOOL succeeded = CloseHandle(device);
  if (!recorder->tracing) return succeeded;
  const DWORD error = GetLastError();
  TraceClose(&recorder->file.trace, ResultOf(succeeded, error));
  SetLastError(error);
  return succeeded;
}

#endif
