// Rows and cells that do not say where they stand, or stand in the wrong order.
#include <algorithm>
#include <iterator>
#include <memory>

#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/sheet/sheet_walk.h"

namespace vellum {

/// Some producers call all rows row 0. Where such rows lead, their cells go to the rows that their references name, in
/// front of what those hold.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::splitZeroRows() {
    const auto isZero = [](const Row& row) { return row.isset_r() && row.r() == 0; };
    if (_rows->empty() || !isZero(*_rows->begin())) return;
    std::vector<std::unique_ptr<Row>> split;
    bool leading = true;
    for (Row& row : *_rows) {
        auto current = std::make_unique<Row>(std::move(row));
        leading = leading && isZero(*current);
        if (!leading) {
            split.push_back(std::move(current));
            continue;
        }
        Cells cells;
        cells.swap(current->c());
        for (Cell& cell : cells) {
            if (current->r() != 0 && current->r() != cell.row() + 1) {
                split.push_back(std::move(current));
                current = std::make_unique<Row>();
            }
            current->r(cell.row() + 1);
            current->c().push_back(std::move(cell));
        }
        if (current->r() != 0) split.push_back(std::move(current));
    }
    _rows->clear();
    for (auto& row : split) _rows->append(std::move(row));
    _numbered = false;  // nor in order
}

/// What has no number gets the one behind its neighbour's. What would lie outside of a sheet then is left out: no
/// reader takes an address there.
template <class CharT, class Tag>
void XMLSheetImplT<CharT, Tag>::numberAll() {
    if (_numbered) return;
    auto next = static_cast<std::uint32_t>(_firstLoadedRow);
    bool sorted = true;
    for (Row& row : *_rows) {
        if (!row.isset_r()) row.r(next + 1);
        sorted = sorted && row.r() > next;
        next = std::min(row.r(), sheetRows);
        Cells& cells = row.c();
        if (row.r() > sheetRows) cells.clear();
        std::uint32_t col = 0;
        for (auto cell = cells.begin(); cell != cells.end(); ++cell) {
            const std::uint32_t at = cell->hasReference() ? cell->column() : col;
            if (at >= sheetColumns) {
                cells.erase(cell, cells.end());
                break;
            }
            cell->setReference(row.r() - 1, at);
            sorted = sorted && at >= col;
            col = at + 1;
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
            _rows->append(std::move(row));
        }
    }
    for (Row& row : *_rows) {
        std::stable_sort(row.c().begin(), row.c().end(),
                         [](const Cell& a, const Cell& b) { return a.column() < b.column(); });
    }
    _areasDirty = true;
    _mastersKnown = false;
}

}  // namespace vellum
