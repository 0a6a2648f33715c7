// The driver's logic on plain buffers: what it answers to programs that use the device and to the
// control program. Callers serialise the calls; nothing here touches the kernel.
#pragma once

#include <cstdint>

#include "simulator/adapter.h"
#include "simulator/windows/trace_store.h"

// NOLINTNEXTLINE(readability-identifier-naming): the name of the Windows headers.
constexpr uint32_t IOCTL_NDIS_QUERY_GLOBAL_STATS = 0x00170002;

struct DriverFront {
  HostMemory memory;
  void* scenarioMemory;  // the scenario in force, with its counters
  Adapter adapter;
  Trace trace;
  TraceStore traceStore;
  uint32_t requests;  // answered since the scenario was loaded
  uint32_t opened;    // handles open now
  uint32_t loads;     // scenarios put in force so far
  bool builtin;
  char name[256];  // of the scenario
};

// The largest payload that a request may have, far above what any command sends. A larger one is
// refused unread, so that no program can keep the driver busy for long.
constexpr uint32_t MaxPayloadBytes = 1024 * 1024;

// How a program asks to open the device: the parameters of the create request.
struct OpenTerms {
  uint32_t access;  // wanted rights
  uint32_t sharing;
  uint32_t options;  // create options, the disposition in the top byte
  uint32_t attributes;
};

// Reading and writing, as the kernel spells out what a program asks for.
constexpr uint32_t ReadAndWriteRights = 0x0012019F;

struct FrontReply {
  uint32_t error;     // last-error code; 0: the call succeeds
  uint32_t returned;  // the count to report back
  bool failed;        // fails even with error 0
};

// Starts with the built-in scenario. Returns false if there is no memory.
bool FrontStart(DriverFront* front, HostMemory memory);
void FrontStop(DriverFront* front);

FrontReply FrontOpen(DriverFront* front, OpenTerms terms);
FrontReply FrontClose(DriverFront* front);

// Handles one request of a program. The answer is written into the payload, also on failures. A
// payload above MaxPayloadBytes may be null.
FrontReply FrontRequest(DriverFront* front, uint32_t code, const void* input, uint32_t inputLength,
                        void* payload, uint32_t length);

// One request of the control program. `buffer` holds the input and takes the output.
FrontReply FrontControl(DriverFront* front, uint32_t code, void* buffer, uint32_t inputLength,
                        uint32_t outputLength);
