// The tables of a sheet, which are read out of kept records.
#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "biff/cells/placed_records.h"
#include "biff/cells/sheet_records.h"

namespace vellum::biff {

struct TableFacts {
    std::wstring name;
    CellRange area;  // with headers and totals
    int headerRows = 0, totalsRows = 0;
};

/// Throws "List12 size is incorrect" and its like for a record of tables or filters that is too short for its head.
void checkListRecord(std::uint16_t id, std::size_t size);

std::size_t tableTotal(const PlacedRecords& kept);
/// Throws "index is out of range", and what is wrong with a table's record.
TableFacts tableAt(const PlacedRecords& kept, std::size_t index);

}  // namespace vellum::biff
