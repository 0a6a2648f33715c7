// Takes out of a trace what tells whose adapter and network it was recorded with: MAC addresses,
// network names, the contents of registers and of the efuse. The same value gets the same stand-in
// of the same length everywhere, so that the trace still replays.
#pragma once

#include <cstddef>
#include <cstdint>

#include "simulator/scenario.h"

enum class Secret : uint8_t {
  MacAddress,
  Ssid,
  Register,
  EfuseByte,
};

struct Replacement {
  Secret kind;
  uint8_t length;
  uint8_t value[32];
  uint8_t standIn[32];
  uint32_t places;  // where it was replaced
};

// What was replaced, in the order of its first place; to be given back with ReleaseRedaction.
struct Redaction {
  Replacement* replacements;
  uint32_t count;
  ScenarioError error;
};

// Redacts a trace's text in place.
Redaction RedactText(char* text, uint32_t size);

void ReleaseRedaction(Redaction* redaction);

// Redacts a file into another one and says what was replaced. Returns the exit status.
int RedactFile(const char* name, const char* redactedName);
