#include "commands/internal/internal_row.h"

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "channel/little_endian.h"
#include "channel/refusals.h"
#include "commands/internal/value_names.h"

namespace {

// One run of a row.
struct Run {
  int argc;
  char** argv;
  alignas(uint64_t) uint8_t payload[LongestRowPayload];
};

// The argument as typed; an empty text if there is no such argument.
const char* ArgumentText(int argc, char** argv, int index) {
  return index < argc ? argv[index] : "";
}

// The field of an argument that is missing or does not convert stays zero.
void ConvertArguments(const InternalRow& row, Run* run) {
  for (const ArgumentField& field : row.fields) {
    if (field.format == nullptr) return;
    if (field.argument >= run->argc) continue;
    ScanArgument(run->argv[field.argument], field.format, run->payload + field.offset);
  }
}

template <size_t Count>
void PrintValues(const PrintedValue (&values)[Count], const Run& run) {
  for (const PrintedValue& value : values) {
    if (value.format == nullptr) return;
    const uint8_t* field = run.payload + value.at;
    switch (value.kind) {
      case ValueKind::Argument:
        ConsolePrintf(value.format, ArgumentText(run.argc, run.argv, static_cast<int>(value.at)));
        break;
      case ValueKind::Byte:
        ConsolePrintf(value.format, *field);
        break;
      case ValueKind::Number:
        ConsolePrintf(value.format, ReadU32(field));
        break;
      case ValueKind::CategoryName:
        ConsolePrintf(value.format, DebugCategoryName(ReadU32(field)));
        break;
      case ValueKind::LevelName:
        ConsolePrintf(value.format, DebugLevelName(ReadU32(field)));
        break;
    }
  }
}

}  // namespace

int RunInternalRow(const InternalRow& row, int argc, char** argv) {
  Run run = {argc, argv, {}};
  if (row.echo != nullptr) {
    // A format with fewer conversions ignores the last arguments.
    ConsolePrintf(row.echo, argv[0], ArgumentText(argc, argv, 1), ArgumentText(argc, argv, 2));
  }
  if (row.countCheckedLate) {
    ConvertArguments(row, &run);
    PrintValues(row.before, run);
  }
  if (row.count != AnyCount && argc != row.count) {
    return PrintInvalidParameters(row.wrongCountResult);
  }
  if (!row.countCheckedLate) {
    ConvertArguments(row, &run);
    PrintValues(row.before, run);
  }
  if (!OidRequest(row.oid, run.payload, row.length)) {
    return row.failureEndsLine ? PrintRequestErrorLine(0) : PrintRequestError(0);
  }
  PrintValues(row.after, run);
  return 1;
}
