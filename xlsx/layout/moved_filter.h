// Filters and sorted ranges, when rows or columns come or go.
#pragma once
#include "xlsx/features/moved_range.h"
#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

/// Moves the range of a filter, its columns and its sort state; columns that go take theirs along. False when nothing
/// is left of the range.
template <class Tag>
bool moveFilter(typename Sml<Tag>::c_CT_AutoFilter& filter, const CellMove& move);

/// The same for a filter or a sort state that is kept as it came, and for all elements in it that have a range.
bool moveKeptRanges(bindery::c_raw_node& element, const CellMove& move);

}  // namespace vellum::xlsx
