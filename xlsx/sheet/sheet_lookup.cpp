// Finding and making cells.
#include <algorithm>
#include <charconv>

#include "engine/failure/vlerror.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/styles/styles.h"

namespace vellum {

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::place(int row, int col) -> CellPlace {
    const CellPlace at{static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(col)};
    if (at.col >= sheetColumns) throw vlerror(xlsx::msg::colOutOfRange);
    if (at.row >= sheetRows) throw vlerror(xlsx::msg::rowOutOfRange);
    return at;
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::rowAt(std::uint32_t row) -> RowPlace {
    Rows& rows = *_rows;
    const std::uint32_t r = row + 1;
    // The row of the last call and the one behind it are what is asked for nearly always.
    RowPlace at = _rowHint;
    for (int i = 0; i < 2 && rows.holds(at); ++i, ++at) {
        if (at->r() == r) return _rowHint = at;
    }
    if (rows.empty() || rows.back().r() < r) return rows.end();
    return _rowHint = rows.firstFrom(row);
}

template <class CharT, class Tag>
std::size_t XMLSheetImplT<CharT, Tag>::cellAt(const Cells& cells, std::uint32_t col) {
    const std::size_t size = cells.size();
    for (std::size_t at = _cellHint; at < std::min(_cellHint + 2, size); ++at) {
        if (cells[at].column() == col) return _cellHint = at;
    }
    if (size == 0 || cells.back().column() < col) return size;
    const auto found = std::lower_bound(cells.begin(), cells.end(), col,
                                        [](const Cell& cell, std::uint32_t wanted) { return cell.column() < wanted; });
    return _cellHint = static_cast<std::size_t>(found - cells.begin());
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::findRow(std::uint32_t row) -> Row* {
    if (Row* const known = rowOfLastCall(row)) return known;
    if (!_numbered) return unnumberedRow(row);
    const RowPlace at = rowAt(row);
    if (at == _rows->end() || at->r() != row + 1) return nullptr;
    _lastRow = &*at;
    _lastRowRemovals = _rows->removals();
    return _lastRow;
}

/// Null when it was another row, or when any row has gone since.
template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::rowOfLastCall(std::uint32_t row) const -> Row* {
    const bool holds = _numbered && _lastRow && _lastRowRemovals == _rows->removals();
    return holds && _lastRow->r() == row + 1 ? _lastRow : nullptr;
}

/// A row without a number stands behind the one before it.
template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::unnumberedRow(std::uint32_t row) -> Row* {
    if (_rowPlaces.empty()) {
        auto next = static_cast<std::uint32_t>(_firstLoadedRow);
        for (Row& element : *_rows) {
            const std::uint32_t at = element.isset_r() ? element.r() - 1 : next;
            _rowPlaces.emplace_back(at, &element);
            next = at + 1;
        }
    }
    const auto found = std::lower_bound(_rowPlaces.begin(), _rowPlaces.end(), row,
                                        [](const auto& known, std::uint32_t wanted) { return known.first < wanted; });
    return found != _rowPlaces.end() && found->first == row ? found->second : nullptr;
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::findCellInRow(Row& row, std::uint32_t col) -> Cell* {
    Cells& cells = row.c();
    const std::size_t at = cellAt(cells, col);
    return at < cells.size() && cells[at].column() == col ? &cells[at] : nullptr;
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::findCell(CellPlace at) -> Cell* {
    Row* const row = findRow(at.row);
    return row ? findCellInRow(*row, at.col) : nullptr;
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::findCell(int row, int col) -> Cell* {
    const CellPlace at{static_cast<std::uint32_t>(row), static_cast<std::uint32_t>(col)};
    return at.row < sheetRows && at.col < sheetColumns ? findCell(at) : nullptr;
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::requireCell(int row, int col) -> Cell& {
    Cell* const cell = findCell(row, col);
    if (!cell) throw vlerror(xlsx::msg::cellNotFound);
    return *cell;
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::ensureRow(std::uint32_t row) -> Row& {
    numberAll();
    const RowPlace at = rowAt(row);
    if (at != _rows->end() && at->r() == row + 1) return *at;
    _rowHint = _rows->insert(at);
    _rowHint->r(row + 1);
    _cellHint = 0;
    return *_rowHint;
}

/// Whether the row's `spans`, such as "1:3 7:9", leave the column out.
template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::leavesSpans(const Row& row, std::uint32_t col) {
    const std::string& spans = row.spans();
    const char* at = spans.data();
    const char* const end = at + spans.size();
    while (at != end) {
        std::uint32_t first = 0, last = 0;
        const auto toFirst = std::from_chars(at, end, first);
        if (toFirst.ptr == end || *toFirst.ptr != ':') return true;
        const auto toLast = std::from_chars(toFirst.ptr + 1, end, last);
        if (col + 1 >= first && col + 1 <= last) return false;
        at = toLast.ptr;
        if (at != end && *at++ != ' ') return true;
    }
    return true;
}

template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::ensureCell(CellPlace at, Format* format, bool reset) -> Cell& {
    const std::size_t style = format ? book().ensureStyles().formatIndexOf(format) : 0;
    Row& row = ensureRow(at.row);
    Cells& cells = row.c();
    const std::size_t place = cellAt(cells, at.col);
    if (place == cells.size() || cells[place].column() != at.col) {
        if (row.isset_spans() && leavesSpans(row, at.col)) row.unset_spans();
        if (place == cells.size()) {
            cells.emplace_back();
        } else {
            cells.emplace(cells.begin() + static_cast<std::ptrdiff_t>(place));
        }
        cells[place].setReference(at.row, at.col);
        _cellHint = place;
    } else if (reset) {
        if (isMaster(cells[place])) handOverMaster(at, cells[place]);
        cells[place].clearContent();
    }
    Cell& cell = cells[place];
    if (format) {
        cell.setStyle(static_cast<std::uint32_t>(style));
    } else if (!cell.hasStyle() && at.col < _columnStyle.size() && _columnStyle[at.col] != 0) {
        cell.setStyle(_columnStyle[at.col]);
    }
    _used.add(static_cast<int>(at.row), static_cast<int>(at.col));
    _changed = true;
    return cell;
}

}  // namespace vellum
