#ifndef _WIN32

#include "platform/trace_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

void WriteMessage(const char* text) {
  WriteAll(STDERR_FILENO, text, strlen(text));
}

// Creates the file. Where a standard stream is closed its number stays free, so that the tool's own
// output never ends up in the trace. Returns -1 on failure.
int CreateFileFor(const char* name) {
  const int file = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0 || file > STDERR_FILENO) return file;
  const int moved = fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  close(file);
  return moved;
}

bool TakePiece(void* context, const char* bytes, uint32_t size) {
  auto* trace = static_cast<TraceFile*>(context);
  if (size > sizeof(trace->line) - trace->used) return false;
  memcpy(trace->line + trace->used, bytes, size);
  trace->used += size;
  return true;
}

// Ends the recording. What could not be written as a whole is taken back where the file allows it.
void EndFile(TraceFile* trace) {
  const int ended = ftruncate(trace->file, off_t{trace->trace.bytes});
  (void)ended;
  close(trace->file);
  trace->file = -1;
  trace->trace.stopped = true;
}

// Writes the line and the comment on what is left out, which the next line takes the place of.
void WriteLine(void* context, bool kept) {
  auto* trace = static_cast<TraceFile*>(context);
  const uint32_t lineBytes = kept ? trace->used : 0;
  uint32_t size = lineBytes;
  trace->used = 0;
  if (trace->file < 0) return;
  if (trace->trace.leftOut > 0) {
    size += FormatLeftOut(trace->trace.leftOut, trace->line + lineBytes);
  }
  if (!WriteAll(trace->file, trace->line, size)) {
    ReportFileError(trace->name);
    EndFile(trace);
  } else if (size > lineBytes) {
    lseek(trace->file, off_t{trace->trace.bytes} + lineBytes, SEEK_SET);
  }
}

}  // namespace

bool CreateTraceFile(TraceFile* trace, const char* name) {
  trace->name = name;
  trace->file = CreateFileFor(name);
  trace->used = 0;
  TraceStart(&trace->trace, {TakePiece, WriteLine, trace});
  if (trace->file < 0) ReportFileError(name);
  return trace->file >= 0;
}

bool WriteAll(int file, const char* bytes, size_t size) {
  while (size > 0) {
    const ssize_t written = write(file, bytes, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes += written;
    size -= static_cast<size_t>(written);
  }
  return true;
}

void ReportFileError(const char* name) {
  const char* reason = strerror(errno);
  WriteMessage("a8000: ");
  WriteMessage(name);
  WriteMessage(":0: ");
  WriteMessage(reason);
  WriteMessage("\n");
}

#endif
