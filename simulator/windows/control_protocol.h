// What a8000ctl.exe and the driver say to each other over the driver's control device. Every
// record and text travels in the one buffer of a METHOD_BUFFERED request.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr char ControlDevicePath[] = R"(\\.\A8000Control)";

// Device type 0x8000 (a vendor's), read and write access, functions 0x800 and up.
constexpr uint32_t ControlCode(uint32_t function) {
  return 0x8000U << 16 | 3U << 14 | function << 2;
}

// In: the scenario's text. Out: a LoadReply. After a refused scenario the one before stays in
// force. An accepted one starts a new trace.
constexpr uint32_t ControlLoadScenario = ControlCode(0x800);
// The same for the built-in scenario, with nothing in and out.
constexpr uint32_t ControlLoadBuiltin = ControlCode(0x801);
// In: a FetchTrace. Out: the trace from that offset on, as much as fits; nothing at its end.
constexpr uint32_t ControlFetchTrace = ControlCode(0x802);
// Out: a SimulatorStatus.
constexpr uint32_t ControlQueryStatus = ControlCode(0x803);
// In: the name under which the status shows the scenario until another one is loaded.
constexpr uint32_t ControlNameScenario = ControlCode(0x804);

struct LoadReply {
  uint32_t line;        // of the error; 0 if the text as a whole is at fault
  uint32_t wordStart;   // the word at fault, as an index into the text
  uint32_t wordLength;  // 0: no word to show
  char what[64];        // what is wrong; empty: nothing
};
static_assert(sizeof(LoadReply) == 76 && offsetof(LoadReply, what) == 12);

struct FetchTrace {
  uint32_t offset;  // bytes from the trace's start
};
static_assert(sizeof(FetchTrace) == 4);

struct SimulatorStatus {
  uint32_t builtin;     // 1: the built-in scenario is in force
  uint32_t rules;       // of the scenario
  uint32_t registers;   // of the scenario
  uint32_t requests;    // answered since the scenario was loaded
  uint32_t opened;      // handles open now
  uint32_t traceBytes;  // recorded
  uint32_t leftOut;     // calls that found no room in the trace
  uint32_t loads;       // scenarios loaded; shows that one was loaded while a trace is fetched
  char name[256];       // the scenario's, or the end of a longer one; empty if none was given
};
static_assert(sizeof(SimulatorStatus) == 288);
