// The walk over all cells of a sheet; for the sheet's own sources.
#pragma once
#include "xlsx/sheet.h"

namespace vellum {

/// A row or cell without a number stands behind the one before it; in rows that call themselves row 0 the cells know.
template <class CharT, class Tag>
template <class Visit>
void XMLSheetImplT<CharT, Tag>::eachCell(Visit&& visit) {
    auto next = static_cast<std::uint32_t>(_firstLoadedRow);
    bool zeroRow = _zeroRows;
    for (Row& row : *_rows) {
        zeroRow = zeroRow && row.isset_r() && row.r() == 0;
        const std::uint32_t at = row.isset_r() && row.r() != 0 ? row.r() - 1 : next;
        std::uint32_t col = 0;
        for (Cell& cell : row.c()) {
            if (cell.hasReference()) col = cell.column();
            visit(CellPlace{zeroRow ? cell.row() : at, col}, cell);
            ++col;
        }
        if (!zeroRow) next = at + 1;
    }
}

}  // namespace vellum
