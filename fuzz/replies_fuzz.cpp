// Hostile replies: runs the whole tool, from its entry, over a device. The input chooses every
// answer of the device. It holds
//
//   byte   the command's row; past the table's end an unknown word. The high bit: rates are
//          fixed by WCID
//   byte   flags, see below
//   text   the arguments, divided by blanks, up to a line end
//   bytes  the answers, see Answer(); after the last one requests succeed unchanged, then fail
//
// These are findings, too: memory or a file is not released, the closed device is used, a command
// does not end.
#include <sanitizer/asan_interface.h>

#include <csetjmp>
#include <cstdint>
#include <cstring>

#include "app/command_table.h"
#include "channel/driver_channel.h"
#include "commands/radio/radio_commands.h"
#include "device/device.h"
#include "fuzz/host.h"
#include "platform/process.h"

namespace {

constexpr uint8_t OpenFails = 1;
constexpr uint8_t OpenYieldsNull = 2;
constexpr uint8_t CloseFails = 4;
constexpr uint8_t NoMemory = 8;
constexpr uint8_t NoFile = 16;
constexpr uint8_t WritesFail = 32;
constexpr uint8_t WordIsArgument = 64;  // the first argument stands in place of the row's word
constexpr uint8_t PathIsArgument = 128;

constexpr int MostWords = 40;
constexpr int MostRequests = 4000;
constexpr int AnsweredWithoutInput = 600;  // more than any command sends to a good device
constexpr int MostBlocks = 8;
constexpr size_t LargestBlock = 1 << 20;

struct Run {
  const uint8_t* next;
  const uint8_t* end;
  uint8_t flags;
  bool open;
  int requests;
  int withoutInput;
  uint32_t lastError;
  int blockCount;
  void* blocks[MostBlocks];
  FILE* file;
  int wordCount;
  char* words[MostWords + 1];
  jmp_buf ended;
};

Run* Current() {
  static Run run;
  return &run;
}

void Require(bool holds) {
  if (!holds) abort();
}

uint8_t NextByte(Run* run) {
  return run->next < run->end ? *run->next++ : 0;
}

uint32_t NextNumber(Run* run, int bytes) {
  uint32_t number = 0;
  for (int i = 0; i < bytes; i++) number |= static_cast<uint32_t>(NextByte(run)) << (8 * i);
  return number;
}

// Writes `count` bytes of the input, or fewer at its end, at an offset of the payload.
void WriteAnswer(Run* run, uint8_t* payload, uint32_t length, uint32_t offset, uint32_t count) {
  for (uint32_t i = 0; i < count && run->next < run->end; i++, run->next++) {
    if (offset + i < length) payload[offset + i] = *run->next;
  }
}

// Fills in an answer by the next bytes. The low bits of the first byte choose how the payload
// changes, the high ones the outcome. Returns whether the request succeeds.
bool Answer(Run* run, uint8_t* payload, uint32_t length, uint32_t* returned) {
  constexpr uint32_t Errors[] = {5, 31, 50, 87, 234, 0xFFFFFFFF};
  const uint8_t control = NextByte(run);
  switch (control & 7) {
    case 0:
      break;
    case 1:  // a few bytes at an offset
      for (int patches = NextByte(run) & 7; patches >= 0; patches--) {
        const uint32_t offset = NextNumber(run, 2);
        WriteAnswer(run, payload, length, offset, NextByte(run) & 15U);
      }
      break;
    case 2:  // a prefix
      WriteAnswer(run, payload, length, 0, NextNumber(run, 2));
      break;
    case 3:  // one byte all over
      memset(payload, NextByte(run), length);
      break;
    case 4:  // one byte all over, then a few at an offset
      memset(payload, NextByte(run), length);
      WriteAnswer(run, payload, length, NextNumber(run, 2), NextByte(run) & 63U);
      break;
    case 5:  // a text without a zero after a prefix
      memset(payload, 'A', length);
      WriteAnswer(run, payload, length, 0, NextByte(run));
      break;
    default:
      WriteAnswer(run, payload, length, NextByte(run), NextByte(run));
      break;
  }
  *returned = (control & 8) != 0 ? NextNumber(run, 4) : length;
  if ((control & 0xC0) != 0xC0) return true;
  const uint8_t error = NextByte(run);
  run->lastError = error < 6 ? Errors[error] : error;
  return false;
}

ssize_t WriteReport(void* /*cookie*/, const char* /*bytes*/, size_t size) {
  return (Current()->flags & WritesFail) != 0 ? 0 : static_cast<ssize_t>(size);
}

// A copy in a block of its own, so that a read past its end is seen.
void AddWord(Run* run, const char* text, size_t length) {
  if (run->wordCount == MostWords) return;
  char* copy = static_cast<char*>(malloc(length + 1));
  memcpy(copy, text, length);
  copy[length] = 0;
  run->words[run->wordCount++] = copy;
}

void ReadWords(Run* run) {
  const uint8_t first = NextByte(run);
  const int row = first & 127;
  fgIsUseWCID = first >> 7;
  run->flags = NextByte(run);
  if ((run->flags & PathIsArgument) == 0) AddWord(run, R"(C:\wlanx.exe)", 12);
  const bool named = (run->flags & WordIsArgument) == 0;
  const char* word = row < CommandCount ? CommandTable[row].Name : "unknown";
  // A path from the arguments comes first, then the word.
  bool wordDue = named;
  if (wordDue && run->wordCount == 1) {
    AddWord(run, word, strlen(word));
    wordDue = false;
  }
  while (run->next < run->end && *run->next != '\n') {
    const uint8_t* start = run->next;
    while (run->next < run->end && *run->next != ' ' && *run->next != '\n' && *run->next != 0) {
      run->next++;
    }
    AddWord(run, reinterpret_cast<const char*>(start), static_cast<size_t>(run->next - start));
    if (run->next < run->end && *run->next != '\n') run->next++;
    if (wordDue) AddWord(run, word, strlen(word));
    wordDue = false;
  }
  if (run->next < run->end) run->next++;
  if (run->wordCount == 0) AddWord(run, "", 0);
  run->words[run->wordCount] = nullptr;
}

void GiveBack(Run* run) {
  while (run->wordCount > 0) free(run->words[--run->wordCount]);
  while (run->blockCount > 0) free(run->blocks[--run->blockCount]);
  if (run->file != nullptr) (void)fclose(run->file);
}

}  // namespace

void* FuzzCalloc(size_t count, size_t size) {
  Run* run = Current();
  if ((run->flags & NoMemory) != 0 || size > LargestBlock) return nullptr;
  Require(run->blockCount < MostBlocks);
  void* block = calloc(count, size);
  run->blocks[run->blockCount++] = block;
  return block;
}

void FuzzFree(void* block) {
  Run* run = Current();
  if (block == nullptr) return;
  Require(run->blockCount > 0 && run->blocks[run->blockCount - 1] == block);
  run->blockCount--;
  free(block);
}

FILE* FuzzOpen(const char* path, const char* mode) {
  Run* run = Current();
  Require(run->file == nullptr && strlen(path) < SIZE_MAX && strcmp(mode, "w") == 0);
  if ((run->flags & NoFile) != 0) return nullptr;
  run->file = fopencookie(run, mode, {nullptr, WriteReport, nullptr, nullptr});
  return run->file;
}

int FuzzClose(FILE* file) {
  Run* run = Current();
  Require(file == run->file && file != nullptr);
  run->file = nullptr;
  return fclose(file);
}

void PrepareStandardOutput() {}

void FuzzExit(int status) {
  Require(status == 3);
  longjmp(Current()->ended, 1);
}

bool DeviceOpen(void** device) {
  Run* run = Current();
  Require(!run->open);
  run->lastError = 2;
  if ((run->flags & OpenFails) != 0) return false;
  run->open = (run->flags & OpenYieldsNull) == 0;
  *device = run->open ? run : nullptr;
  return true;
}

bool DeviceRequest(void* device, uint32_t oid, void* payload, uint32_t length, uint32_t* returned) {
  Run* run = Current();
  Require(device == run && run->open && oid != 0 && ++run->requests < MostRequests);
  Require(__asan_region_is_poisoned(payload, length) == nullptr);

  *returned = length;
  if (run->next < run->end) return Answer(run, static_cast<uint8_t*>(payload), length, returned);
  if (++run->withoutInput < AnsweredWithoutInput) return true;
  run->lastError = 31;
  return false;
}

bool DeviceClose(void* device) {
  Run* run = Current();
  Require(device == run && run->open);
  run->open = false;
  run->lastError = 6;
  return (run->flags & CloseFails) == 0;
}

uint32_t DeviceError() {
  return Current()->lastError;
}

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  setenv("TZ", "UTC", 1);
  // The output is formatted, but nobody reads it.
  return freopen("/dev/null", "w", stdout) != nullptr ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Run* run = Current();
  *run = {};
  run->next = data;
  run->end = data + size;
  ReadWords(run);
  DeviceHandle = nullptr;
  if (setjmp(run->ended) == 0) {
    char* words[MostWords + 1];
    memcpy(words, run->words, sizeof(words));
    ToolMain(run->wordCount, words);
    Require(!run->open && run->blockCount == 0 && run->file == nullptr && DeviceHandle == nullptr);
  }
  GiveBack(run);
  return 0;
}
