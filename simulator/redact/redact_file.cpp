#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "simulator/host_program.h"
#include "simulator/redact/redact.h"
#include "simulator/redact/whole_file.h"

namespace {

constexpr int Done = 0;
constexpr int Failed = 1;
constexpr int WrongWords = -1;

// What the words ask for.
struct Request {
  bool keepTexts;
  TextView* words;
  uint32_t wordCount;
  char** names;  // of the traces, then of the report
  uint32_t traceCount;
};

// Prints bytes so that different ones look different. Zeros, as of 16-bit texts, are left out.
void PrintBytes(const uint8_t* bytes, uint32_t size, const char* lineEnd) {
  for (uint32_t i = 0; i < size; i++) {
    if (bytes[i] == '\n') {
      printf("%s", lineEnd);
    } else if (bytes[i] != 0 && (bytes[i] < ' ' || bytes[i] > '~')) {
      printf("\\x%02x", bytes[i]);
    } else if (bytes[i] != 0) {
      printf(bytes[i] == '\\' || bytes[i] == '"' ? "\\%c" : "%c", bytes[i]);
    }
  }
}

void PrintValue(ValueKind kind, const uint8_t* bytes, uint32_t length) {
  if (kind == ValueKind::Name) {
    printf("\"");
    PrintBytes(bytes, length, "\\n");
    printf("\"");
  } else if (kind == ValueKind::Register) {
    printf("0x%02x%02x%02x%02x", bytes[3], bytes[2], bytes[1], bytes[0]);
  } else {
    for (uint32_t i = 0; i < length; i++) printf("%s%02x", i > 0 ? "-" : "", bytes[i]);
  }
}

void PrintReplaced(const Redaction* redaction) {
  const char* const names[] = {"address", "register", "name"};
  const KnownValues* known = &redaction->known;
  for (uint32_t i = 1; i < known->count; i++) {
    const KnownValue* value = &known->values[i];
    if (value->kind > ValueKind::Name) continue;
    uint8_t standIn[MostNameBytes];
    WriteStandIn(value, standIn);
    printf("%s ", names[static_cast<uint32_t>(value->kind)]);
    PrintValue(value->kind, known->bytes + value->start, value->length);
    printf(" is now ");
    PrintValue(value->kind, standIn, value->length);
    printf(", places: %u\n", value->places);
  }
  if (redaction->efuseBytes > 0) {
    printf("bytes of the efuse, each now the end of its address: %u\n", redaction->efuseBytes);
  }
  if (redaction->maskedTexts > 0) {
    printf("texts, now without letters and digits: %u\n", redaction->maskedTexts);
  }
}

// Prints the texts that the user should read before the report is handed on.
void PrintStaying(const KnownValues* known) {
  const char* heading = "texts that stay:\n";
  for (uint32_t i = 1; i < known->count; i++) {
    const KnownValue* value = &known->values[i];
    if (value->kind != ValueKind::StayingText) continue;
    printf("%s  ", heading);
    heading = "";
    PrintBytes(known->bytes + value->start, value->length, "\n  ");
    printf("\n");
  }
}

// Returns false, after a message, if not all could be printed.
bool PrintSummary(const Redaction* redaction) {
  PrintReplaced(redaction);
  PrintStaying(&redaction->known);
  printf("requests left out, of a code or length that is not known: %u\n",
         redaction->requestsLeftOut);
  printf("comments left out: %u\n", redaction->commentsLeftOut);
  printf("This list is private: it tells what the report does not.\n");
  if (fflush(stdout) == 0 && ferror(stdout) == 0) return true;
  ReportFileFailure("standard output");
  return false;
}

// Reads a file to its end. Returns false, after a message, if it cannot or has too little room.
bool ReadTrace(const char* name, char* bytes, uint32_t room, TextView* text) {
  *text = {bytes, 0};
  if (!ReadTextFile(name, bytes, room, &text->size)) return false;
  if (text->size < room) return true;
  ReportFile(name, "the traces are larger than 16 MiB");
  return false;
}

bool ReadTraces(const Request* request, char* bytes, TextView* traces) {
  const char* report = request->names[request->traceCount];
  uint32_t used = 0;
  for (uint32_t i = 0; i < request->traceCount; i++) {
    if (IsSameFile(request->names[i], report)) {
      ReportFile(report, "the report would take the place of the trace");
      return false;
    }
    // Reads one byte more than a scenario may have, so that a longer file is refused.
    if (!ReadTrace(request->names[i], bytes + used, MaxScenarioBytes + 1 - used, &traces[i])) {
      return false;
    }
    used += traces[i].size;
  }
  return true;
}

int Redact(const Request* request, const TextView* traces) {
  Redaction redaction = RedactTraces(traces, request->traceCount, request->words,
                                     request->wordCount, request->keepTexts);
  const uint32_t wrong = redaction.errorText;
  int result = Failed;
  if (redaction.error.what != nullptr) {
    ReportInFile(request->names[wrong], redaction.error, traces[wrong].bytes);
  } else if (WriteWholeFile(request->names[request->traceCount], redaction.report,
                            redaction.size)) {
    result = PrintSummary(&redaction) ? Done : Failed;
  }
  ReleaseRedaction(&redaction);
  return result;
}

// Takes the words. Returns false for words that RunRedact does not take.
bool TakeWords(int count, char** words, Request* request) {
  int next = 0;
  for (; next < count && strncmp(words[next], "--", 2) == 0; next++) {
    if (strcmp(words[next], "--keep-texts") == 0) {
      request->keepTexts = true;
    } else if (strcmp(words[next], "--word") == 0 && next + 1 < count) {
      const size_t size = strlen(words[++next]);
      if (size == 0 || size > MostNameBytes) return false;
      request->words[request->wordCount++] = {words[next], static_cast<uint32_t>(size)};
    } else {
      return false;
    }
  }
  if (count - next < 2) return false;
  request->names = words + next;
  request->traceCount = static_cast<uint32_t>(count - next - 1);
  return true;
}

}  // namespace

int RunRedact(int count, char** words) {
  Request request = {};
  // For the traces, then for the words to replace.
  auto* texts =
      static_cast<TextView*>(calloc(2 * static_cast<size_t>(count) + 1, sizeof(TextView)));
  char* bytes = static_cast<char*>(malloc(MaxScenarioBytes + size_t{1}));
  int result = Failed;
  if (texts == nullptr || bytes == nullptr) {
    Report("not enough memory");
  } else {
    request.words = texts + count;
    result = WrongWords;
    if (TakeWords(count, words, &request)) {
      result = ReadTraces(&request, bytes, texts) ? Redact(&request, texts) : Failed;
    }
  }
  free(texts);
  free(bytes);
  return result;
}
