// The tables of a sheet, which are parts of their own.
#pragma once
#include <string>

#include "engine/facts/cell_address.h"
#include "ooxml/generated/dialect.h"

namespace vellum::xlsx {

/// How many tables a worksheet says that it has; its own count is believed.
template <class Worksheet>
int tableTotal(const Worksheet& worksheet);
/// The Id of the relationship that leads to a table. Throws for an index that is out of range.
template <class Worksheet>
const std::string& tableId(const Worksheet& worksheet, int index);

/// What the interface tells of a table.
struct TableFacts {
    std::wstring name;
    CellRange range;
    int headerRows = 1, totalsRows = 0;
};
/// Throws for a table without a range.
template <class Table>
TableFacts tableFacts(const Table& table);

}  // namespace vellum::xlsx
