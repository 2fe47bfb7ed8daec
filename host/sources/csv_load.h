// Loading the text of a csv file into its table.
#pragma once

namespace quillet {

class CsvTable;

/// Reads the context's open input stream to its end. False after a failing read, a field that does not fit the line
/// buffer (reported with its line) or want of memory. `allText` leaves every field a text.
bool loadCsv(CsvTable& table, bool allText);

}  // namespace quillet
