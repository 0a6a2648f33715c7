// Makes reports of traces. What is known to be harmless stays, and everything else gets stand-ins.
// A value gets the same stand-in of the same length everywhere, so that the report replays.
#pragma once

#include <cstdint>

#include "simulator/redact/known_values.h"
#include "simulator/scenario.h"

// All texts together have at most MaxScenarioBytes.
struct TextView {
  const char* bytes;
  uint32_t size;
};

struct Redaction {
  KnownValues known;     // what was replaced, and the texts that stay
  uint32_t efuseBytes;   // replaced
  uint32_t maskedTexts;  // their letters and digits were replaced
  uint32_t requestsLeftOut;
  uint32_t commentsLeftOut;
  char* report;
  uint32_t size;
  ScenarioError error;
  uint32_t errorText;  // index of the text with the error
};

// Redacts traces into one report. `error` tells what is wrong with them. The `words`, of 1 to
// MostNameBytes bytes, are replaced like names, wherever they stand in texts. Without `keepTexts`
// the letters and digits of texts are masked. The caller releases the result with ReleaseRedaction.
Redaction RedactTraces(const TextView* texts, uint32_t count, const TextView* words,
                       uint32_t wordCount, bool keepTexts);

void ReleaseRedaction(Redaction* redaction);

// Runs "[--keep-texts] [--word WORD]... IN... OUT". Returns the exit status, or -1 if
// the words do not fit.
int RunRedact(int count, char** words);
