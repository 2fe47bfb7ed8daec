// Loading the text of a csv file into its table.
#pragma once

#include "host/sources/csv_scan.h"

namespace quillet {

class CsvTable;

/// Reads the context's open input stream to its end. False after a failing read, a field that does not fit the line
/// buffer (reported with its line) or want of memory. `allText` leaves every field a text. The table is empty before.
bool loadCsv(CsvTable& table, bool allText);

/// The same by a given scan; by none, every field goes through the state machine one character at a time.
bool loadCsvBy(CsvScan scan, CsvTable& table, bool allText);

}  // namespace quillet
