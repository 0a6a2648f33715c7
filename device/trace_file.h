// A trace that is written into a file while the calls are made.
#pragma once

#include "platform/host_file.h"
#include "simulator/trace.h"

struct TraceFile {
  Trace trace;
  const char* name;
  HostFile file;  // NoHostFile: nothing is recorded
  bool seeks;     // a pipe does not, and gets no comments that a line would overwrite
  uint32_t used;  // of the line
  uint32_t end;   // of the file
  char line[MaxLineBytes + 1 + LeftOutLineBytes];
};

// Creates or empties the file and starts the trace. On failure prints a message and returns false.
// Each line is in the file before its call returns, and the comment of TraceSent before the request
// is sent. If one cannot be written, a message is printed once and the recording ends.
bool CreateTraceFile(TraceFile* trace, const char* name);
