// Sorts the rows of a filter.
#pragma once
#include <cstdint>
#include <vector>

#include "engine/facts/cell_address.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/filters/data_rows.h"
#include "xlsx/filters/filter_value.h"
#include "xlsx/filters/sort_state.h"

namespace vellum::xlsx {

/// Puts the cells of `data` in the order of the keys: numbers, texts, booleans, errors, or the other way round, and
/// blank cells last in either direction. What is equal by one key goes by the next, and stays as it was after the
/// last. Cells beside the block and what else is said of rows stay where they are. Rows from `endRow` on have no cells.
/// No cell of the block may share a formula. The answer tells which row's cells each row got; nothing when none moved.
template <class Tag>
std::vector<std::uint32_t> sortRows(Rows<Tag>& rows, const CellRange& data, std::uint32_t endRow,
                                    const std::vector<SortKey>& keys, FilterBook& book);

}  // namespace vellum::xlsx
