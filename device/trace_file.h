// A trace that is written into a file while the calls are made.
#pragma once

#include "platform/host_file.h"
#include "simulator/trace.h"

struct TraceFile {
  Trace trace;
  const char* name;
  HostFile file;  // NoHostFile: nothing is recorded
  bool seeks;     // a pipe does not, and gets no comment whose place a line would take
  uint32_t used;  // of the line
  uint32_t end;   // of the file
  char line[MaxLineBytes + 1 + LeftOutLineBytes];
};

// Creates or empties the file and starts the trace. Returns false, after a message, on failure.
// Each line is in the file before the call that it records returns, and what TraceSent says before
// the request goes; where one cannot be written, that is said once and the recording ends.
bool CreateTraceFile(TraceFile* trace, const char* name);
