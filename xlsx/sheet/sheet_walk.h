// The walk over all cells of a sheet; for the sheet's own sources.
#pragma once
#include "xlsx/sheet/sheet.h"

namespace vellum {

/// A row or cell without a number stands behind the one before it.
template <class CharT, class Tag>
template <class Visit>
void XMLSheetImplT<CharT, Tag>::eachCell(Visit&& visit) {
    auto next = static_cast<std::uint32_t>(_firstLoadedRow);
    for (Row& row : *_rows) {
        const std::uint32_t at = row.isset_r() ? row.r() - 1 : next;
        std::uint32_t col = 0;
        for (Cell& cell : row.c()) {
            if (cell.hasReference()) col = cell.column();
            visit(CellPlace{at, col}, cell);
            ++col;
        }
        next = at + 1;
    }
}

}  // namespace vellum
