// Which rows pass a filter, and hiding the others.
#pragma once
#include <cstdint>
#include <vector>

#include "engine/facts/cell_address.h"
#include "ooxml/generated/dialect.h"
#include "xlsx/filters/data_rows.h"
#include "xlsx/filters/filter_value.h"

namespace vellum::xlsx {

/// Which rows behind the header pass, in their order.
struct Judgement {
    std::vector<bool> passes;
    bool isPartial = false;  // a column that is not judged here may hide more
};

/// Judges the rows of `range` behind its header, the first row, by the columns of the filter. Rows that are not there
/// are blank; those from `endRow` on have no cells and are left alone.
template <class Tag>
Judgement judgeRows(typename ooxml::dialect<Tag>::sml::c_CT_AutoFilter& filter, const CellRange& range,
                    const Rows<Tag>& rows, std::uint32_t endRow, FilterBook& book);

/// Hides the rows that do not pass, which are made for that when they are not there, and shows the others; where the
/// judgement is partial those stay as they are. `order` tells which row's cells each row got since they were judged;
/// it is empty when none moved.
template <class Tag>
void showRows(const Judgement& judgement, const std::vector<std::uint32_t>& order, const CellRange& range,
              Rows<Tag>& rows);

}  // namespace vellum::xlsx
