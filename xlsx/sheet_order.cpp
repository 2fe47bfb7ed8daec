// Rows and cells that do not say where they stand, or stand in the wrong order.
#include <algorithm>
#include <iterator>
#include <map>
#include <memory>

#include "xlsx/sheet.h"
#include "xlsx/sheet_messages.h"
#include "xlsx/sheet_walk.h"

namespace vellum {

/// Cells of rows that call themselves row 0 go to the rows that their references name.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::splitZeroRows() {
    std::map<std::uint32_t, Cells> byRow;
    std::size_t count = 0;
    for (; count < _rows->size() && (*_rows)[count].isset_r() && (*_rows)[count].r() == 0; ++count) {
        for (Cell& cell : (*_rows)[count].c()) byRow[cell.row()].push_back(std::move(cell));
    }
    _rows->erase(0, count);
    std::size_t at = 0;
    for (auto& [row, cells] : byRow) {
        Row& made = _rows->insert(at++);
        made.r(row + 1);
        made.c() = std::move(cells);
    }
    _zeroRows = false;
}

/// What has no number gets the one behind its neighbour's.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::numberAll() {
    if (_numbered) return;
    if (_zeroRows) splitZeroRows();
    auto next = static_cast<std::uint32_t>(_firstLoadedRow);
    bool sorted = true;
    for (Row& row : *_rows) {
        if (!row.isset_r()) row.r(next + 1);
        sorted = sorted && row.r() > next;
        next = row.r();
        std::uint32_t col = 0;
        for (Cell& cell : row.c()) {
            if (!cell.hasReference()) cell.setReference(row.r() - 1, col);
            sorted = sorted && cell.column() >= col;
            col = cell.column() + 1;
        }
    }
    _numbered = true;
    _rowPlaces.clear();
    _areasDirty = true;
    if (!sorted) sortAll();
}

template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::sortAll() {
    std::vector<std::unique_ptr<Row>> sorted;
    sorted.reserve(_rows->size());
    for (Row& row : *_rows) sorted.push_back(std::make_unique<Row>(std::move(row)));
    _rows->clear();
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return a->r() < b->r(); });
    for (auto& row : sorted) {
        if (!_rows->empty() && _rows->back().r() == row->r()) {
            Cells& cells = _rows->back().c();
            cells.insert(cells.end(), std::make_move_iterator(row->c().begin()),
                         std::make_move_iterator(row->c().end()));
        } else {
            _rows->addNode(row.release());
        }
    }
    for (Row& row : *_rows) {
        std::stable_sort(row.c().begin(), row.c().end(),
                         [](const Cell& a, const Cell& b) { return a.column() < b.column(); });
    }
    _areasDirty = true;
    _mastersKnown = false;
}

template class XMLSheetImplT<char, excelNormal_tag>;
template class XMLSheetImplT<char, excelStrict_tag>;
template class XMLSheetImplT<wchar_t, excelNormal_tag>;
template class XMLSheetImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
