// The uniform commands of the engineering edition. Each is one row, and one function runs any row:
// it prints the echo, checks the count, converts the arguments into the cleared payload, prints the
// line before, sends one request and prints the line after.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr int AnyCount = 0;
constexpr size_t LongestRowPayload = 264;

// An argument and the payload field that it is converted into.
struct ArgumentField {
  const char* format;  // of ScanArgument; null after the row's last field
  int argument;        // index into argv
  size_t offset;       // into the payload
};

enum class ValueKind : uint8_t {
  Argument,      // the argument at an index of argv, as typed
  Byte,          // 8 bits of the payload
  Number,        // 32 bits of the payload
  CategoryName,  // the name of the debug category in 32 bits of the payload
  LevelName,     // the name of the debug level in 32 bits of the payload
};

// A part of a printed line, with one value at its end.
struct PrintedValue {
  const char* format;  // null after the row's last value
  ValueKind kind;
  size_t at;  // index into argv or offset into the payload
};

struct InternalRow {
  uint32_t oid = 0;
  uint32_t length = 0;            // payload bytes
  int count = 0;                  // the argument count that the command takes
  int wrongCountResult = 0;       // the result for any other count
  bool countCheckedLate = false;  // `fields` and `before` come before the count check
  bool failureEndsLine = false;   // the report of a refused request has a line end
  const char* echo = nullptr;     // printed first, with argv[0], argv[1] and argv[2]
  ArgumentField fields[2] = {};
  PrintedValue before[3] = {};  // printed before the request
  PrintedValue after[4] = {};   // printed after the request, from the reply
};

int RunInternalRow(const InternalRow& row, int argc, char** argv);

// The CommandHandler of a row.
template <const InternalRow& row>
int HandleInternalRow(int argc, char** argv) {
  return RunInternalRow(row, argc, argv);
}
