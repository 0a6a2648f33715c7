// A trace that is written into a file while the calls are made, and what is said about files.
#pragma once

#include <cstddef>

#include "simulator/trace.h"

struct TraceFile {
  Trace trace;
  const char* name;
  int file;       // -1: nothing is recorded
  uint32_t used;  // of the line
  char line[MaxLineBytes + 1 + LeftOutLineBytes];
};

// Creates or empties the file and starts the trace. Returns false, after a message, on failure.
// Each line is in the file before the call that it records returns; where one cannot be written,
// that is said once and the recording ends.
bool CreateTraceFile(TraceFile* trace, const char* name);

// Writes to a file descriptor. Returns false where not all bytes could be written; errno says why.
bool WriteAll(int file, const char* bytes, size_t size);

// Says "a8000: FILE:0: what is wrong" on standard error, with the reason in errno.
void ReportFileError(const char* name);
