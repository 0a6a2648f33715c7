#include "commands/sar/row_table.h"

#include "app/console/print.h"

namespace {

uint32_t RowLength(const RowTable& table) {
  return 1 + table.linesPerRow * table.bytesPerLine;
}

void PrintRow(const RowTable& table, const uint8_t* powers, uint32_t number) {
  for (uint32_t line = 0; line < table.linesPerRow; line++) {
    ConsolePrintf("Index%d%s:", static_cast<int>(number), table.lineNames[line]);
    for (uint32_t i = 0; i < table.bytesPerLine; i++) ConsolePrintf(" 0x%.2X", *powers++);
    ConsolePrintf("\n");
  }
}

}  // namespace

const uint8_t* RowPowers(const RowTable& table, const AcpiTableQuery& record, uint32_t row) {
  return &record.bytes[table.firstRowAt + row * RowLength(table) + 1];
}

void PrintRowTable(const SarLayout& layout, const RowTable& table, const AcpiTableQuery& record,
                   uint32_t current) {
  uint32_t count = record.bytes[table.rowCountAt];
  ConsolePrintf("%s: %d\n", table.firstHead, record.bytes[TableFieldsAt]);
  ConsolePrintf("Total %s Table Index: %d\n", table.kind, static_cast<int>(count));
  ConsolePrintf("Current %s Table Index: %d\n", table.kind, static_cast<int>(current + 1));
  ConsolePrintf("\n");
  ConsolePrintf("%s\n", table.listHead);

  uint32_t rows = RowsInRecord(layout, table.firstRowAt, RowLength(table), count);
  for (uint32_t row = 0; row < rows; row++) {
    ConsolePrintf(row == current ? "**" : "  ");
    PrintRow(table, RowPowers(table, record, row), row + 1);
  }
}
