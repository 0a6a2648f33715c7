// Compares the argument scanner with the C library's sscanf, for every format that the tool uses:
// the counts and the values are equal. The first byte chooses the format, the rest is the text.
//
// Comparable() leaves out what the two define differently.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "app/console/scan.h"

namespace {

constexpr const char* Formats[] = {
    "%d",
    "%x",
    "0x%x",
    "0x%08x",
    "%hd",
    "%hhu",
    "%2hhd",
    "%3hhd",
    "%2hhd-%2hhd",
    "%2hhd-%2hhd-%2hhd-%2hhd",
    "%d-%d-%d-%d-%d-%d-%d-%d-%d-%d-%d-%d-%d",
    "%2hhd-%2hhd-%2hhd-%2hhd-%hd-%hd-%hd-%hx-%hx-%hx-%hd",
    "%s",
};
constexpr size_t FormatCount = sizeof(Formats) / sizeof(Formats[0]);
constexpr int MostFields = 13;
constexpr size_t WordSize = 16;

struct Targets {
  uint64_t fields[MostFields];
};

int ScanWith(int (*scan)(const char*, const char*, ...), const char* text, const char* format,
             Targets* targets) {
  memset(targets, 0xA5, sizeof(*targets));
  uint64_t* field = targets->fields;
  return scan(text, format, &field[0], &field[1], &field[2], &field[3], &field[4], &field[5],
              &field[6], &field[7], &field[8], &field[9], &field[10], &field[11], &field[12]);
}

// "0x" without a digit after it is not a number here, but the C library reads it as one.
bool Comparable(const char* format, const char* text) {
  if (strchr(format, 'x') == nullptr) return true;
  for (const char* at = text; (at = strpbrk(at, "xX")) != nullptr; at++) {
    if (strspn(at + 1, "0123456789abcdefABCDEF") == 0) return false;
  }
  return true;
}

void CompareWords(const char* text) {
  char ours[WordSize] = "before";
  char* theirs = static_cast<char*>(malloc(strlen(text) + 1));
  const int expected = sscanf(text, "%s", theirs);
  const int found = ScanArgument(text, "%s", ours, static_cast<unsigned>(WordSize));
  const bool fits = expected == 1 && strlen(theirs) < WordSize;
  const char* word = fits ? theirs : "before";
  if (found != (expected == 1 && !fits ? 0 : expected) || strcmp(ours, word) != 0) abort();
  free(theirs);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const char* format = Formats[data[0] % FormatCount];
  char* text = static_cast<char*>(malloc(size));
  memcpy(text, data + 1, size - 1);
  text[size - 1] = 0;
  if (strcmp(format, "%s") == 0) {
    CompareWords(text);
  } else if (Comparable(format, text)) {
    Targets ours;
    Targets theirs;
    const int found = ScanWith(ScanArgument, text, format, &ours);
    const int expected = ScanWith(sscanf, text, format, &theirs);
    if (found != expected || memcmp(&ours, &theirs, sizeof(ours)) != 0) {
      fprintf(stderr, "\"%s\" by %s: %d, expected %d\n", text, format, found, expected);
      abort();
    }
  }
  free(text);
  return 0;
}
