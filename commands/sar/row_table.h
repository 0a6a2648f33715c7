// Tables of power rows: what the SAR and geographic views print alike.
#pragma once

#include "commands/sar/sar_query.h"

// One edition of a table. A row is one byte that is not shown, then the power bytes of each of its
// lines. Offsets are the record's.
struct RowTable {
  uint32_t length;        // of the table with all its rows
  uint32_t rowCountAt;    // one byte
  uint32_t firstRowAt;    // row r follows at r row lengths
  uint32_t linesPerRow;   // a line for each antenna, where they have limits of their own
  uint32_t bytesPerLine;  // one for each shown value
  const char* firstHead;  // what the table's first byte is
  const char* kind;
  const char* listHead;
  const char* lineNames[2];
};

// The power bytes of row `row`: those of its first line, then those of its second.
const uint8_t* RowPowers(const RowTable& table, const AcpiTableQuery& record, uint32_t row);

// Prints the head of the table and its rows, as many as lie inside the record. Row `current` is
// marked.
void PrintRowTable(const SarLayout& layout, const RowTable& table, const AcpiTableQuery& record,
                   uint32_t current);

// A power in decibels, with its one decimal.
struct DecibelText {
  char text[8];
};

// A power byte counts half-decibels.
DecibelText Decibels(int halfDecibels);
