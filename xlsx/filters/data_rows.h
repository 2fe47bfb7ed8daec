// The rows of a sheet, as filters and sorts go through them.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/dialect.h"

namespace vellum::xlsx {

/// Rows with their numbers, in order.
template <class Tag>
using Rows = ooxml::RowList<typename ooxml::dialect<Tag>::sml::c_CT_Row>;

/// Adds a row, counted from 0, that is not there yet.
template <class Row>
Row& addRow(ooxml::RowList<Row>& rows, std::uint32_t row) {
    Row& added = *rows.insert(rows.firstFrom(row));
    added.r(row + 1);
    return added;
}

/// The first cell that does not lie before `col`. `hint` is where it stood in the last row.
template <class Cell>
std::size_t firstCellFrom(const std::vector<Cell>& cells, std::uint32_t col, std::size_t hint);
/// Null when the row has no such cell. `hint` follows.
template <class Cell>
const Cell* cellOf(const std::vector<Cell>& cells, std::uint32_t col, std::size_t& hint);

}  // namespace vellum::xlsx
