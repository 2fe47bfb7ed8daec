// Hides the rows that do not pass a filter.
#pragma once
#include <cstdint>

#include "engine/facts/cell_address.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/filters/data_rows.h"
#include "xlsx/filters/filter_value.h"

namespace vellum::xlsx {

/// Judges the rows of `range` behind its header, the first row; those from `endRow` on have no cells and are left
/// alone. A row that one of the columns refuses is hidden, and made for that when it is not there; the others are
/// shown. Where a column cannot be judged here, a row that the others let pass stays as it is.
template <class Tag>
void runFilter(typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter& filter, const CellRange& range, Rows<Tag>& rows,
               std::uint32_t endRow, FilterBook& book);

}  // namespace vellum::xlsx
