// The rows of a sheet, as filters and sorts go through them.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "bindery/values/holders.h"
#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/dialect.h"

namespace vellum::xlsx {

/// Rows with their numbers, in order.
template <class Tag>
using Rows = bindery::ct_non_pod_container<typename ooxml::dialect<Tag>::sml::c_CT_Row>;

/// The first element that does not lie before `row`, counted from 0.
template <class Row>
std::size_t firstRowFrom(const bindery::ct_non_pod_container<Row>& rows, std::uint32_t row);

/// Adds rows, counted from 0 and sorted, that are not there yet. Elements change their places.
template <class Row>
void addRows(bindery::ct_non_pod_container<Row>& rows, const std::vector<std::uint32_t>& missing);

/// The first cell that does not lie before `col`. `hint` is where it stood in the last row.
template <class Cell>
std::size_t firstCellFrom(const std::vector<Cell>& cells, std::uint32_t col, std::size_t hint);
/// Null when the row has no such cell. `hint` follows.
template <class Cell>
const Cell* cellOf(const std::vector<Cell>& cells, std::uint32_t col, std::size_t& hint);

}  // namespace vellum::xlsx
