// Tables of power rows, which the SAR and the geographic views print in the same way.
#pragma once

#include "commands/sar/sar_query.h"

// One edition of a table. A row is one byte that is not shown, then the power bytes of each of its
// lines. Offsets count from the start of the record.
struct RowTable {
  uint32_t length;        // of the table with all its rows
  uint32_t rowCountAt;    // one byte
  uint32_t firstRowAt;    // row r begins r row lengths later
  uint32_t linesPerRow;   // one for both antennas, or one for each
  uint32_t bytesPerLine;  // one for each shown value, in half decibels
  const char* firstHead;  // the heading of the table's first byte
  const char* kind;
  const char* listHead;
  const char* lineNames[2];
};

// The power bytes of row `row`: those of its first line, then those of its second.
const uint8_t* RowPowers(const RowTable& table, const AcpiTableQuery& record, uint32_t row);

// Prints the head of the table and the rows that lie inside the record. Row `current` is marked.
void PrintRowTable(const SarLayout& layout, const RowTable& table, const AcpiTableQuery& record,
                   uint32_t current);
