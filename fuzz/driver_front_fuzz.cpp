// Calls the driver's handlers with random codes, lengths, buffers and sequences. Every buffer is
// exactly as long as the handlers are told, so that the sanitizers see an access past its end.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "simulator/scenario_parser.h"
#include "simulator/windows/control_protocol.h"
#include "simulator/windows/driver_front.h"
#include "simulator/windows/nt_status.h"

namespace {

// What is left of the fuzzer's bytes.
struct Input {
  const uint8_t* next;
  size_t left;
};

struct HostState {
  uint32_t live;      // allocations not released
  uint32_t failures;  // allocations to fail from now on
};

HostState* State() {
  static HostState state;
  return &state;
}

void Require(bool holds) {
  if (!holds) abort();
}

void* Allocate(uint64_t size) {
  if (State()->failures > 0) {
    State()->failures--;
    return nullptr;
  }
  State()->live++;
  void* memory = malloc(size);
  Require(memory != nullptr);
  memset(memory, 0xA5, size);
  return memory;
}

void Release(void* memory) {
  Require(memory != nullptr);
  State()->live--;
  free(memory);
}

// The next bytes as a number; past the input's end they are zeros.
uint32_t Take(Input* input, size_t size) {
  uint32_t value = 0;
  const size_t count = size < input->left ? size : input->left;
  memcpy(&value, input->next, count);
  input->next += count;
  input->left -= count;
  return value;
}

// A buffer of `size` bytes that starts with the next `filled` ones of the input.
uint8_t* TakeBuffer(Input* input, size_t size, size_t filled) {
  auto* buffer = static_cast<uint8_t*>(malloc(size));
  Require(buffer != nullptr || size == 0);
  size_t count = filled < size ? filled : size;
  if (count > input->left) count = input->left;
  if (size > 0) memset(buffer, 0, size);
  if (count > 0) memcpy(buffer, input->next, count);
  input->next += count;
  input->left -= count;
  return buffer;
}

void CallRequest(DriverFront* front, Input* input) {
  const uint32_t choice = Take(input, 1);
  const uint32_t code = choice == 0 ? Take(input, 4) : IOCTL_NDIS_QUERY_GLOBAL_STATS;
  const uint32_t inputLength = choice == 1 ? Take(input, 1) : 4;
  const uint32_t length = choice < 128 ? Take(input, 1) : Take(input, 2) % 8193;
  uint8_t* oid = TakeBuffer(input, inputLength, inputLength);
  uint8_t* payload = TakeBuffer(input, length, choice % 16);
  const FrontReply reply = FrontRequest(front, code, oid, inputLength, payload, length);
  Require(reply.failed || (code == IOCTL_NDIS_QUERY_GLOBAL_STATS && inputLength == 4));
  const uint32_t status = StatusOfError(reply.error, reply.returned != 0);
  Require(!reply.failed || (status >> 31 == 1 && status != UINT32_MAX));
  free(payload);
  free(oid);
}

void CallControl(DriverFront* front, Input* input) {
  static const uint32_t codes[] = {ControlLoadScenario, ControlLoadBuiltin, ControlFetchTrace,
                                   ControlQueryStatus};
  const uint32_t choice = Take(input, 1);
  const uint32_t code = choice < 250 ? codes[choice % 4] : Take(input, 4);
  const uint32_t inputLength = Take(input, choice % 8 < 4 ? 1 : 2) % 4097;
  const uint32_t outputLength = Take(input, choice % 16 < 8 ? 1 : 2) % 4097;
  const uint32_t size = inputLength > outputLength ? inputLength : outputLength;
  uint8_t* buffer = TakeBuffer(input, size, inputLength);
  const FrontReply reply = FrontControl(front, code, buffer, inputLength, outputLength);
  Require(reply.returned <= outputLength);
  free(buffer);
}

void CallOne(DriverFront* front, Input* input) {
  const uint32_t call = Take(input, 1);
  switch (call % 8) {
    case 0:
      FrontOpen(front, {Take(input, 4), Take(input, 1), Take(input, 4), Take(input, 1)});
      break;
    case 1:
      FrontOpen(front, {ReadAndWriteRights, 0, 0x05000060, 0x80});
      break;
    case 2:
      FrontClose(front);
      break;
    case 3:
      State()->failures = Take(input, 1) % 4;
      break;
    case 4:
    case 5:
      CallControl(front, input);
      break;
    default:
      CallRequest(front, input);
      break;
  }
}

// The trace loads as a scenario, even if it had no room for some calls.
void CheckTrace(const DriverFront* front) {
  const uint32_t size = front->trace.bytes;
  auto* text = static_cast<char*>(malloc(size + size_t{1}));
  Require(TraceStoreRead(&front->traceStore, 0, text, size + 1) == size);
  ScenarioSizes sizes = {};
  Require(ParseScenario(text, size, nullptr, &sizes, nullptr).what == nullptr);
  Require(sizes.rules == front->trace.rules);
  free(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static DriverFront front;
  Input input = {data, size};
  *State() = {};
  Require(FrontStart(&front, {Allocate, Release}));
  front.traceStore.blockBytes = 64;  // 16 KiB in all, which are soon full
  while (input.left > 0) CallOne(&front, &input);
  CheckTrace(&front);
  FrontStop(&front);
  Require(State()->live == 0);
  return 0;
}
