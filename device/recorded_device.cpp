// Passes the calls on to the driver unchanged. If A8000_TRACE names a file, they are recorded there
// with the driver's answers.
#include "device/device.h"
#include "device/kernel_calls.h"
#include "device/trace_file.h"

namespace {

struct Recorder {
  bool tracing;
  TraceFile file;
};

Recorder* State() {
  static Recorder recorder;
  return &recorder;
}

CallResult ResultOf(bool succeeded, DWORD error) {
  if (succeeded) return {Outcome::Succeeds, 0};
  return {Outcome::Fails, error};
}

}  // namespace

bool DeviceOpen(void** device) {
  Recorder* recorder = State();
  const char* name = HostVariable("A8000_TRACE");
  if (name == nullptr) return KernelOpen(device);
  recorder->tracing = CreateTraceFile(&recorder->file, name);
  if (!recorder->tracing) {
    SetLastError(ERROR_INVALID_DATA);
    return false;
  }
  const bool opened = KernelOpen(device);
  const DWORD error = GetLastError();
  CallResult result = ResultOf(opened, error);
  if (*device == nullptr) result.outcome = Outcome::YieldsNull;
  TraceOpen(&recorder->file.trace, result);
  SetLastError(error);
  return opened;
}

bool DeviceRequest(void* device, uint32_t oid, void* payload, uint32_t length, uint32_t* returned) {
  Recorder* recorder = State();
  if (!recorder->tracing) return KernelRequest(device, oid, payload, length, returned);
  Trace* trace = &recorder->file.trace;
  const auto* bytes = static_cast<const uint8_t*>(payload);
  TraceSent(trace, oid, bytes, length);
  TraceRequest(trace, oid, bytes, length);
  const bool accepted = KernelRequest(device, oid, payload, length, returned);
  const DWORD error = GetLastError();
  const RequestResult result = {ResultOf(accepted, error), *returned, false};
  TraceAnswer(trace, &result, bytes, length);
  SetLastError(error);
  return accepted;
}

bool DeviceClose(void* device) {
  Recorder* recorder = State();
  const bool closed = KernelClose(device);
  if (!recorder->tracing) return closed;
  const DWORD error = GetLastError();
  TraceClose(&recorder->file.trace, ResultOf(closed, error));
  SetLastError(error);
  return closed;
}

uint32_t DeviceError() {
  return GetLastError();
}
