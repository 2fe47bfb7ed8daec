// Tables, when rows or columns come or go.
#pragma once
#include "xlsx/features/moved_range.h"
#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

/// Throws where a table would not be whole afterwards: without its header or totals row, without data rows, or with
/// other columns. Applications would repair such a file.
template <class Tag>
void checkTable(const typename Sml<Tag>::c_CT_Table& table, const CellMove& move);

/// Moves its range, and those of its filter and its sort state.
template <class Tag>
void moveTable(typename Sml<Tag>::c_CT_Table& table, const CellMove& move);

}  // namespace vellum::xlsx
