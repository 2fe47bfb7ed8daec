// Blocks of cells: merging and clearing.
#include <algorithm>

#include "biff/container/messages.h"
#include "biff/sheet/sheet_change.h"
#include "biff/strings/str_map.h"

namespace vellum {
template <class CharT>
bool SheetImplT<CharT>::mergeAt(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        const auto& merges = parts().merges;
        const auto found =
            std::ranges::find_if(merges, [&](const biff::CellRange& range) { return range.holds(at.row, at.col); });
        if (found == merges.end()) throw vlerror(biff::msg::notMerged);
        biff::giveRange(*found, rowFirst, rowLast, colFirst, colLast);
        return true;
    });
}

// All cells of the block get the first one's format; empty ones become blanks.
template <class CharT>
void SheetImplT<CharT>::mergeBlock(const biff::CellRange& block) {
    const CellSlot corner = slotAt({block.rowFirst, block.colFirst});
    const std::uint16_t ixfe = corner.occupied() ? parts().cells.ixfe(corner) : defaultCellXf;
    for (std::uint32_t row = block.rowFirst; row <= block.rowLast; ++row) {
        for (std::uint32_t col = block.colFirst; col <= block.colLast; ++col) {
            const CellPlace at{static_cast<std::uint16_t>(row), static_cast<std::uint16_t>(col)};
            if (const CellSlot slot = slotAt(at); slot.occupied()) {
                setIxfe(slot, ixfe);
            } else {
                putBlank(at, ixfe);
            }
        }
    }
    edit().merges.push_back(block);
}

template <class CharT>
bool SheetImplT<CharT>::addMerge(int rowFirst, int rowLast, int colFirst, int colLast) {
    return guard(false, [&] {
        mergeBlock(checkedRange(rowFirst, rowLast, colFirst, colLast));
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::removeMergeAt(int row, int col) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        if (std::erase_if(edit().merges, [&](const biff::CellRange& range) { return range.holds(at.row, at.col); }) ==
            0) {
            throw vlerror(biff::msg::notMerged);
        }
        return true;
    });
}

template <class CharT>
int SheetImplT<CharT>::mergeTotal() {
    return ask(0, [](const SheetParts& p) { return static_cast<int>(p.merges.size()); });
}

template <class CharT>
bool SheetImplT<CharT>::mergeByIndex(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        if (index < 0 || index >= mergeTotal()) throw vlerror(biff::msg::indexOutOfRange);
        biff::giveRange(parts().merges[static_cast<std::size_t>(index)], rowFirst, rowLast, colFirst, colLast);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::removeMergeByIndex(int index) {
    return guard(false, [&] {
        if (index < 0 || index >= mergeTotal()) throw vlerror(biff::msg::indexOutOfRange);
        edit().merges.erase(edit().merges.begin() + index);
        return true;
    });
}

template <class CharT>
void SheetImplT<CharT>::eraseCells(CellPlace first, CellPlace last) {
    SheetIndex& index = edit().cells.index();
    for (auto row = index.nextRow(first.row); row <= last.row; row = index.nextRow(row + 1)) {
        const auto rw = static_cast<std::uint16_t>(row);
        for (std::uint32_t col = first.col; col <= last.col; ++col) eraseCell({rw, static_cast<std::uint16_t>(col)});
        index.freeRowIfEmpty(rw);
    }
}

template <class CharT>
bool SheetImplT<CharT>::clearRange(int rowFirst, int rowLast, int colFirst, int colLast) {
    return guard(false, [&] {
        if (rowFirst > rowLast) throw vlerror(biff::msg::rowOrder);
        if (colFirst > colLast) throw vlerror(biff::msg::colOrder);
        constexpr int lastRowOfAll = SheetIndex::rowLimit - 1, lastColOfAll = SheetIndex::colLimit - 1;
        const CellPlace first{static_cast<std::uint16_t>(std::clamp(rowFirst, 0, lastRowOfAll)),
                              static_cast<std::uint16_t>(std::clamp(colFirst, 0, lastColOfAll))};
        const CellPlace last{static_cast<std::uint16_t>(std::clamp(rowLast, 0, lastRowOfAll)),
                             static_cast<std::uint16_t>(std::clamp(colLast, 0, lastColOfAll))};
        eraseCells(first, last);
        std::erase_if(edit().merges, [&](const biff::CellRange& range) {
            return first.row <= range.rowFirst && range.rowLast <= last.row && first.col <= range.colFirst &&
                   range.colLast <= last.col;
        });
        edit().boundsDirty = true;
        return true;
    });
}

}  // namespace vellum
