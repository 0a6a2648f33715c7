#include "device/trace_file.h"

#include <cstring>

#include "simulator/host_program.h"

namespace {

void ReportTraceError(const char* name) {
  char reason[FileErrorSize];
  LastFileError(reason);
  ReportFile(name, reason);
}

bool TakePiece(void* context, const char* bytes, uint32_t size) {
  auto* trace = static_cast<TraceFile*>(context);
  if (size > sizeof(trace->line) - trace->used) return false;
  memcpy(trace->line + trace->used, bytes, size);
  trace->used += size;
  return true;
}

// Writes the line, then the comment on calls left out, which the next line overwrites. The comment
// on a request that is on its way comes last. It is on the disk before the request is sent.
void WriteLine(void* context, LineEnd end) {
  auto* trace = static_cast<TraceFile*>(context);
  const uint32_t lineBytes = end == LineEnd::Dropped ? 0 : trace->used;
  const uint32_t kept = end == LineEnd::Kept ? lineBytes : 0;
  const uint32_t start = trace->trace.bytes;
  trace->used = 0;
  if (trace->file == NoHostFile || (end == LineEnd::Replaced && !trace->seeks)) return;
  uint32_t size = lineBytes;
  if (trace->trace.leftOut > 0) {
    char comment[LeftOutLineBytes];
    const uint32_t commentBytes = FormatLeftOut(trace->trace.leftOut, comment);
    memmove(trace->line + kept + commentBytes, trace->line + kept, size - kept);
    memcpy(trace->line + kept, comment, commentBytes);
    size += commentBytes;
  }
  // A shorter line is never followed by the rest of a longer one.
  if (trace->end > start + size) CutHostFile(trace->file, start);
  if (!WriteHostFile(trace->file, trace->line, size)) {
    // A part of a line is removed from the file.
    ReportTraceError(trace->name);
    EndHostFile(trace->file, start);
    trace->file = NoHostFile;
    trace->trace.stopped = true;
    return;
  }
  trace->end = start + size;
  if (size > kept) SeekHostFile(trace->file, start + kept);
  if (end == LineEnd::Replaced) SaveHostFile(trace->file);
}

}  // namespace

bool CreateTraceFile(TraceFile* trace, const char* name) {
  trace->name = name;
  trace->file = CreateHostFile(name);
  trace->used = 0;
  trace->end = 0;
  trace->seeks = trace->file != NoHostFile && SeekHostFile(trace->file, 0);
  TraceStart(&trace->trace, {TakePiece, WriteLine, trace});
  if (trace->file == NoHostFile) ReportTraceError(name);
  return trace->file != NoHostFile;
}
