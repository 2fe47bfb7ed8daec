// Rows and cells, when rows or columns come or go.
#pragma once
#include "xlsx/features/moved_range.h"
#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

/// The cells of a worksheet, all of them numbered and in order.
template <class Tag>
class MovedCells {
public:
    using Row = typename Sml<Tag>::c_CT_Row;
    using Cell = typename Sml<Tag>::c_CT_Cell;
    using Rows = ooxml::RowList<Row>;

    explicit MovedCells(Rows& rows) : _rows(rows) {}

    /// Whether an insertion would push a cell off the sheet. Rows without cells may go.
    [[nodiscard]] bool pushesOff(const CellMove& move) const;
    /// Ranges of formulas follow the cells; their texts stay. To be called before the cells move: a shared formula of
    /// which some cells move and others do not becomes a formula of its own in each.
    void moveFormulas(const CellMove& move);
    void move(const CellMove& move);

private:
    void moveRows(const CellMove& move);
    void moveColumns(const CellMove& move);

    Rows& _rows;
};

extern template class MovedCells<ooxml::excelNormal_tag>;
extern template class MovedCells<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
