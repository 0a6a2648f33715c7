#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "simulator/redact/redact.h"
#include "simulator/scenario.h"
#include "simulator/scenario_error.h"

namespace {

constexpr int Done = 0;
constexpr int Failed = 1;

int FailFile(const char* name) {
  (void)fprintf(stderr, "a8000: %s:0: %s\n", name, strerror(errno));
  return Failed;
}

void PrintAddress(const uint8_t* address) {
  for (int i = 0; i < 6; i++) printf("%s%02x", i > 0 ? "-" : "", address[i]);
}

void PrintValue(Secret kind, const uint8_t* bytes, uint32_t length) {
  char name[MostShown + 1];
  uint32_t number = 0;
  switch (kind) {
    case Secret::MacAddress:
      PrintAddress(bytes);
      break;
    case Secret::Ssid:
      CopyWord(reinterpret_cast<const char*>(bytes), length, name);
      printf("%s", name);
      break;
    case Secret::Register:
    case Secret::EfuseByte:
      memcpy(&number, bytes, length);
      printf("0x%0*x", static_cast<int>(2 * length), number);
      break;
  }
}

// Says what stands for what, so that the words of the command can be replaced too.
void PrintRedaction(const Redaction* redaction) {
  const char* const names[] = {"MAC address", "SSID", "register content", "efuse byte"};
  uint32_t places = 0;
  for (uint32_t i = 0; i < redaction->count; i++) {
    const Replacement* replacement = &redaction->replacements[i];
    if (replacement->places == 0) continue;
    printf("%s ", names[static_cast<uint32_t>(replacement->kind)]);
    PrintValue(replacement->kind, replacement->value, replacement->length);
    printf(" is now ");
    PrintValue(replacement->kind, replacement->standIn, replacement->length);
    printf(", places: %u\n", replacement->places);
    places += replacement->places;
  }
  if (places == 0) printf("Nothing was replaced.\n");
}

int WriteText(const char* name, const char* text, size_t size) {
  FILE* file = fopen(name, "wb");
  if (file == nullptr) return FailFile(name);
  const bool written = fwrite(text, 1, size, file) == size;
  const int error = errno;
  if (fclose(file) == 0 && written) return Done;
  if (!written) errno = error;
  const int result = FailFile(name);
  // A part of it could be taken for a report. A device is not removed.
  struct stat made = {};
  if (stat(name, &made) == 0 && S_ISREG(made.st_mode)) (void)remove(name);
  return result;
}

int FailText(const char* name, const char* text, const ScenarioError* error) {
  (void)fprintf(stderr, "a8000: %s:%u: %s", name, error->line, error->what);
  if (error->wordLength > 0) {
    char word[MostShown + 1];
    CopyWord(text + error->wordStart, error->wordLength, word);
    (void)fprintf(stderr, ": %s", word);
  }
  (void)fprintf(stderr, "\n");
  return Failed;
}

int RedactStream(FILE* file, const char* name, const char* redactedName, char* text) {
  // One byte more than a scenario may have is read, to be refused.
  const size_t size = fread(text, 1, MaxScenarioBytes + size_t{1}, file);
  if (ferror(file) != 0) return FailFile(name);
  Redaction redaction = RedactText(text, static_cast<uint32_t>(size));
  const int result = redaction.error.what != nullptr ? FailText(name, text, &redaction.error)
                                                     : WriteText(redactedName, text, size);
  if (result == Done) PrintRedaction(&redaction);
  ReleaseRedaction(&redaction);
  return result;
}

}  // namespace

int RedactFile(const char* name, const char* redactedName) {
  FILE* file = fopen(name, "rb");
  if (file == nullptr) return FailFile(name);
  char* text = static_cast<char*>(malloc(MaxScenarioBytes + size_t{1}));
  int result = Failed;
  if (text == nullptr) {
    (void)fprintf(stderr, "a8000: not enough memory\n");
  } else {
    result = RedactStream(file, name, redactedName, text);
  }
  free(text);
  (void)fclose(file);
  return result;
}
