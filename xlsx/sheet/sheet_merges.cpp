// Merged blocks and page breaks.
#include "engine/failure/vlerror.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"

namespace vellum {
namespace {

void giveRange(const CellRange& range, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    if (rowFirst) *rowFirst = static_cast<int>(range.rowFirst);
    if (rowLast) *rowLast = static_cast<int>(range.rowLast);
    if (colFirst) *colFirst = static_cast<int>(range.colFirst);
    if (colLast) *colLast = static_cast<int>(range.colLast);
}

}  // namespace

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::mergeAt(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        const auto found = _merges.find(row, col);
        if (!found) throw vlerror(xlsx::msg::notMerged);
        giveRange(*found, rowFirst, rowLast, colFirst, colLast);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::addMerge(int rowFirst, int rowLast, int colFirst, int colLast) {
    return guard(false, [&] {
        for (const int col : {colFirst, colLast}) {
            if (static_cast<std::uint32_t>(col) >= sheetColumns) throw vlerror(xlsx::msg::colTooGreat);
        }
        const CellRange range{checkedRow(rowFirst), checkedRow(rowLast), checkedCol(colFirst), checkedCol(colLast)};
        if (range.rowFirst > range.rowLast) throw vlerror(xlsx::msg::rowsReversed);
        if (range.colFirst > range.colLast) throw vlerror(xlsx::msg::colsReversed);
        _merges.add(range);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeMergeAt(int row, int col) {
    return guard(false, [&] {
        if (!_merges.removeAt(row, col)) throw vlerror(xlsx::msg::notMerged);
        return true;
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::mergeTotal() {
    return guard(-1, [&] { return static_cast<int>(_merges.total()); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::mergeByIndex(int index, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        giveRange(_merges.at(index), rowFirst, rowLast, colFirst, colLast);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeMergeByIndex(int index) {
    return guard(false, [&] {
        _merges.remove(index);
        return true;
    });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::rowBreakAt(int index) {
    return guard(-1, [&] { return static_cast<int>(_rowBreaks.at(index)); });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::rowBreakTotal() {
    return guard(-1, [&] { return static_cast<int>(_rowBreaks.total()); });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::columnBreakAt(int index) {
    return guard(-1, [&] { return static_cast<int>(_columnBreaks.at(index)); });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::columnBreakTotal() {
    return guard(-1, [&] { return static_cast<int>(_columnBreaks.total()); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setRowBreak(int row, bool enable) {
    return guard(false, [&] {
        const std::uint32_t at = checkedRow(row);
        if (enable) {
            _rowBreaks.add(at);
        } else {
            _rowBreaks.remove(at);
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setColumnBreak(int col, bool enable) {
    return guard(false, [&] {
        const std::uint32_t at = checkedCol(col);
        if (enable) {
            _columnBreaks.add(at);
        } else {
            _columnBreaks.remove(at);
        }
        return true;
    });
}

}  // namespace vellum
