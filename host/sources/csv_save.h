// Writing the table of a csv source as text.
#pragma once

namespace quillet {

class CsvTable;

/// Prints all rows from 0 to the last to the context's open output stream, reals by the table's `realFormat`. False
/// when a number could not be printed; its row ends there.
bool saveCsv(const CsvTable& table);

}  // namespace quillet
