#include "xlsx/layout/moved_cells.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "xlsx/cells/shifted_formula.h"

namespace vellum::xlsx {
namespace {

enum Side : unsigned { stays = 1, goes = 2, moves = 4 };

Side sideOf(std::uint32_t at, const CellMove& move) {
    if (at < move.first) return stays;
    return !move.isInsert && at <= move.last ? goes : moves;
}

/// The cells that share a number, which name one text.
struct Group {
    unsigned sides = 0;
    bool hasText = false;
    std::uint32_t row = 0, col = 0;  // of the first cell with a text
    std::wstring text;

    [[nodiscard]] bool isParted() const { return (sides & (sides - 1)) != 0; }
};

template <class Cell>
auto firstFrom(std::vector<Cell>& cells, std::uint32_t col) {
    return std::lower_bound(cells.begin(), cells.end(), col,
                            [](const Cell& cell, std::uint32_t wanted) { return cell.column() < wanted; });
}

}  // namespace

template <class Tag>
bool MovedCells<Tag>::pushesOff(const CellMove& move) const {
    const std::uint32_t past = move.limit() - move.count();  // what stands there or behind would leave
    for (auto row = _rows.end(); row != _rows.begin();) {
        --row;
        if (row->c().empty()) continue;
        const std::uint32_t at = move.isRow ? row->r() - 1 : row->c().back().column();
        if (at >= past && at >= move.first) return true;
        if (move.isRow) return false;
    }
    return false;
}

template <class Tag>
void MovedCells<Tag>::moveFormulas(const CellMove& move) {
    std::unordered_map<std::uint32_t, Group> groups;
    std::vector<std::pair<Cell*, Side>> members;
    for (Row& row : _rows) {
        for (Cell& cell : row.c()) {
            const auto formula = cell.formula();
            if (!formula) continue;
            const Side side = sideOf(move.isRow ? cell.row() : cell.column(), move);
            if (formula->isset_si() && formula->isset_t()) {
                Group& group = groups[formula->si()];
                group.sides |= side;
                if (!group.hasText && formula->hasText()) {
                    group.hasText = true;
                    group.row = cell.row();
                    group.col = cell.column();
                    group.text = formula->text();
                }
                if (formula->t() == "shared") members.emplace_back(&cell, side);
            }
            if (side == goes || !formula->isset_ref()) continue;
            auto ref = movedRef(formula->ref(), move);
            if (!ref) ref = movedRef(cellAddressText(cell.row(), cell.column()), move);  // it was no range of its cell
            if (ref) cell.makeFormula().ref(std::move(*ref));
        }
    }
    for (const auto& [cell, side] : members) {
        const Group& group = groups[cell->formula()->si()];
        if (side == goes || !group.isParted()) continue;
        std::wstring text = cell->formula()->text();
        if (text.empty() && !group.hasText) continue;
        if (text.empty()) {
            text = translateFormula(group.text, std::int64_t{cell->row()} - group.row,
                                    std::int64_t{cell->column()} - group.col);
        }
        cell->setFormula(text);
    }
}

template <class Tag>
void MovedCells<Tag>::move(const CellMove& move) {
    if (move.isRow) {
        moveRows(move);
    } else {
        moveColumns(move);
    }
}

template <class Tag>
void MovedCells<Tag>::moveRows(const CellMove& move) {
    auto row = _rows.firstFrom(move.first);
    if (!move.isInsert) row = _rows.erase(row, _rows.firstFrom(move.last + 1));
    const std::int64_t count = move.isInsert ? std::int64_t{move.count()} : -std::int64_t{move.count()};
    for (; row != _rows.end(); ++row) {
        const std::int64_t number = row->r() + count;  // a file may number rows up to the last of 32 bits
        if (number > sheetRows) break;
        row->r(static_cast<std::uint32_t>(number));
        for (Cell& cell : row->c()) cell.setReference(row->r() - 1, cell.column());
    }
    _rows.erase(row, _rows.end());
}

template <class Tag>
void MovedCells<Tag>::moveColumns(const CellMove& move) {
    const std::uint32_t count = move.isInsert ? move.count() : 0 - move.count();
    for (Row& row : _rows) {
        auto& cells = row.c();
        if (cells.empty() || cells.back().column() < move.first) continue;
        row.unset_spans();
        auto cell = firstFrom(cells, move.first);
        if (!move.isInsert) cell = cells.erase(cell, firstFrom(cells, move.last + 1));
        for (; cell != cells.end(); ++cell) cell->setReference(cell->row(), cell->column() + count);
    }
}

template class MovedCells<ooxml::excelNormal_tag>;
template class MovedCells<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
