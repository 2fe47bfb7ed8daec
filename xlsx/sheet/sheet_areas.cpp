// The used and the filled area, and the walk over the cells.
#include <algorithm>

#include "engine/api/enums.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_walk.h"

namespace vellum {

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isFilled(const Cell& cell) {
    return cell.hasText() || cell.hasFormula() || cell.inlineString();
}

/// Writers extend both areas as they go, which is exact while nothing is taken away: a number that becomes a blank
/// stays within the filled area, as users of the interface expect of one that they just wrote to. What moves or drops
/// cells marks the areas dirty, and the next question counts anew. In rows that are sorted the first and the last cell
/// tell the used area; for the filled one, blanks at both ends are passed over.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::updateAreas() {
    if (!_areasDirty) return;
    _used = _filled = {};
    _areasDirty = false;
    if (!_numbered) {
        eachCell([&](CellPlace at, const Cell& cell) {
            if (at.row >= sheetRows || at.col >= sheetColumns) return;
            _used.add(static_cast<int>(at.row), static_cast<int>(at.col));
            if (isFilled(cell)) fill(at);
        });
        return;
    }
    for (const Row& row : *_rows) {
        const Cells& cells = row.c();
        if (cells.empty() || row.r() > sheetRows) continue;
        const int at = static_cast<int>(row.r()) - 1;
        _used.add(at, static_cast<int>(cells.front().column()), static_cast<int>(cells.back().column()));
        const auto first = std::find_if(cells.begin(), cells.end(), isFilled);
        if (first == cells.end()) continue;
        const auto last = std::find_if(cells.rbegin(), cells.rend(), isFilled);
        _filled.add(at, static_cast<int>(first->column()), static_cast<int>(last->column()));
    }
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::firstRow() {
    return guard(0, [&] { return used().rowFirst; });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::lastRow() {
    return guard(0, [&] { return used().rowEnd; });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::firstCol() {
    return guard(0, [&] { return used().colFirst; });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::lastCol() {
    return guard(0, [&] { return used().colEnd; });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::firstFilledRow() {
    return guard(0, [&] { return filled().rowFirst; });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::lastFilledRow() {
    return guard(0, [&] { return filled().rowEnd; });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::firstFilledColumn() {
    return guard(0, [&] { return filled().colFirst; });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::lastFilledColumn() {
    return guard(0, [&] { return filled().colEnd; });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::cellFrom(int* row, int* col) {
    return guard(false, [&] {
        const auto fromRow = static_cast<std::uint32_t>(std::max(*row, 0));
        const auto fromCol = static_cast<std::uint32_t>(std::max(*col, 0));
        const auto findIn = [&](const Row& element, std::uint32_t atRow) {
            const Cells& cells = element.c();
            for (std::size_t k = atRow == fromRow ? cellAt(cells, fromCol) : 0; k < cells.size(); ++k) {
                if (cells[k].column() >= sheetColumns) break;
                if (kindOf(cells[k]) == cellEmpty) continue;
                *row = static_cast<int>(atRow);
                *col = static_cast<int>(cells[k].column());
                return true;
            }
            return false;
        };
        if (!_numbered) {
            unnumberedRow(0);  // makes the list of places
            auto next = std::lower_bound(_rowPlaces.begin(), _rowPlaces.end(), fromRow,
                                         [](const auto& known, std::uint32_t wanted) { return known.first < wanted; });
            for (; next != _rowPlaces.end() && next->first < sheetRows; ++next) {
                if (findIn(*next->second, next->first)) return true;
            }
            return false;
        }
        if (const Row* const known = rowOfLastCall(fromRow); known && findIn(*known, fromRow)) return true;
        for (RowPlace next = rowAt(fromRow); next != _rows->end() && next->r() <= sheetRows; ++next) {
            if (findIn(*next, next->r() - 1)) return true;
        }
        return false;
    });
}

}  // namespace vellum
