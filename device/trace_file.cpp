#include "device/trace_file.h"

#include <cstring>

namespace {

bool TakePiece(void* context, const char* bytes, uint32_t size) {
  auto* trace = static_cast<TraceFile*>(context);
  if (size > sizeof(trace->line) - trace->used) return false;
  memcpy(trace->line + trace->used, bytes, size);
  trace->used += size;
  return true;
}

// Writes the line and the comment on what is left out, which the next line takes the place of.
void WriteLine(void* context, bool kept) {
  auto* trace = static_cast<TraceFile*>(context);
  const uint32_t lineBytes = kept ? trace->used : 0;
  uint32_t size = lineBytes;
  trace->used = 0;
  if (trace->file == NoHostFile) return;
  if (trace->trace.leftOut > 0) {
    size += FormatLeftOut(trace->trace.leftOut, trace->line + lineBytes);
  }
  if (!WriteHostFile(trace->file, trace->line, size)) {
    // What could not be written as a whole is taken back.
    ReportFileError(trace->name);
    EndHostFile(trace->file, trace->trace.bytes);
    trace->file = NoHostFile;
    trace->trace.stopped = true;
  } else if (size > lineBytes) {
    SeekHostFile(trace->file, trace->trace.bytes + lineBytes);
  }
}

}  // namespace

bool CreateTraceFile(TraceFile* trace, const char* name) {
  trace->name = name;
  trace->file = CreateHostFile(name);
  trace->used = 0;
  TraceStart(&trace->trace, {TakePiece, WriteLine, trace});
  if (trace->file == NoHostFile) ReportFileError(name);
  return trace->file != NoHostFile;
}
