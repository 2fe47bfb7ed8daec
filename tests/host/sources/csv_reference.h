// What a csv text holds, found one character at a time and with nothing but strtod: slow, plain, and in no code common
// with the loader, which must agree with it.
#pragma once
#include <map>
#include <string>
#include <utility>

#include "host/sources/csv_table.h"

namespace quillet {

struct ReferenceCell {
    int kind = 0;  // as cellKind of the table operations gives it
    double number = 0;
    int boolean = 0;
    std::string text;
};

struct ReferenceTable {
    bool loaded = true;
    int overflowLine = 0;  // where a field did not fit, 0: nowhere
    std::map<std::pair<int, int>, ReferenceCell> cells;
};

/// Reads `text` with the separators, boolean texts and buffer size of `settings`.
ReferenceTable readByReference(const std::string& text, const CsvTable& settings, bool allText);

/// What is wrong with a loaded table, "" for nothing: its cells, its bounds and the memory that it tells.
std::string differenceFrom(const ReferenceTable& reference, CsvTable& table);

}  // namespace quillet
