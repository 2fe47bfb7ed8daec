#include "biff/features/moved_cells.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "biff/cells/cell_store.h"
#include "biff/cells/own_tokens.h"
#include "biff/cells/shared_tokens.h"
#include "biff/features/feature_messages.h"

namespace vellum::biff {
namespace {

template <class Cells, class Visit>
void forEachFormula(Cells& cells, Visit&& visit) {
    if (std::as_const(cells).template all<FormulaCell>().empty()) return;
    cells.index().forEach([&](std::uint32_t, std::uint32_t, CellSlot slot) {
        if (slot.kind() == SlotKind::formula) visit(cells.template get<FormulaCell>(slot));
    });
}

/// The range at the front of an Array or Table record: rows of 16 bits, columns of 8.
struct BlockRange {
    static constexpr std::size_t size = 6;

    static std::optional<CellRange> of(const FormulaCell& cell) {
        if (cell.tail == nullptr || cell.tail->followingId == 0 || cell.tail->following.size() < size) return {};
        const std::byte* const at = cell.tail->following.data();
        return CellRange{loadLe<std::uint16_t>(at), loadLe<std::uint16_t>(at + 2),
                         std::to_integer<std::uint16_t>(at[4]), std::to_integer<std::uint16_t>(at[5])};
    }
    static void store(FormulaCell& cell, const CellRange& range) {
        std::byte* const at = cell.tail->following.data();
        storeLe(at, range.rowFirst);
        storeLe(at + 2, range.rowLast);
        at[4] = static_cast<std::byte>(range.colFirst);
        at[5] = static_cast<std::byte>(range.colLast);
    }
};

/// The formula that a formula's tokens name; null when no formula stands there.
FormulaCell* anchorOf(CellStore& cells, const FormulaCell& cell) {
    const auto named = cell.anchor();
    if (!named || named->col >= SheetIndex::colLimit) return nullptr;
    const CellSlot slot = cells.at(named->row, named->col);
    return slot.occupied() && slot.kind() == SlotKind::formula ? &cells.get<FormulaCell>(slot) : nullptr;
}

FormulaCell::Anchor movedPlace(const MovedLines& moved, FormulaCell::Anchor at) {
    const bool rows = moved.axis == MovedLines::Axis::rows;
    std::uint16_t& line = rows ? at.row : at.col;
    if (const auto place = moved.placeOf(line)) line = static_cast<std::uint16_t>(*place);
    return at;
}

void giveTokensToMoving(CellStore& cells, StringPool& pool, const MovedLines& moved) {
    forEachFormula(cells, [&](FormulaCell& cell) {
        FormulaCell* const anchor = anchorOf(cells, cell);
        if (anchor == nullptr) return;
        if (anchor->tail != nullptr && anchor->tail->followingId != 0) {
            cell.setAnchor(movedPlace(moved, *cell.anchor()));
        } else if (moved.moves(cell.row, cell.col)) {
            giveOwnTokens(cell, *anchor, pool);
        }
    });
}

// Those that moved have their own by now.
void handOnToStaying(CellStore& cells, SharedTokens& shared, const MovedLines& moved) {
    std::vector<FormulaCell::Anchor> anchors;
    forEachFormula(cells, [&](const FormulaCell& cell) {
        if (cell.tail != nullptr && cell.tail->shared && moved.moves(cell.row, cell.col)) {
            anchors.push_back({cell.row, cell.col});
        }
    });
    for (const auto at : anchors) {
        shared.handOn(cells, at);
        cells.get<FormulaCell>(cells.at(at.row, at.col)).tail->shared.reset();
    }
    shared.settle(cells);
}

void moveRows(CellStore& cells, const MovedLines& moved) {
    SheetIndex& index = cells.index();
    const auto moveRow = [&](std::uint32_t row) {
        const auto place = moved.placeOf(row);
        if (!place || !index.hasRow(static_cast<std::uint16_t>(row))) return;
        const auto to = static_cast<std::uint16_t>(*place);
        index.moveRow(static_cast<std::uint16_t>(row), to);
        index.forEachInRow(
            to, [&](std::uint32_t, CellSlot slot) { cells.visit(slot, [to](auto& cell) { cell.row = to; }); });
    };
    std::vector<std::uint32_t> rows;
    for (auto row = index.nextRow(moved.firstMoved()); row < SheetIndex::rowLimit; row = index.nextRow(row + 1)) {
        rows.push_back(row);
    }
    if (moved.isInsertion()) std::ranges::reverse(rows);
    std::ranges::for_each(rows, moveRow);
}

void moveColumns(CellStore& cells, const MovedLines& moved) {
    SheetIndex& index = cells.index();
    std::vector<std::pair<std::uint32_t, CellSlot>> slots;
    for (auto row = index.nextRow(0); row < SheetIndex::rowLimit; row = index.nextRow(row + 1)) {
        const auto rw = static_cast<std::uint16_t>(row);
        slots.clear();
        index.forEachInRow(rw, [&](std::uint32_t col, CellSlot slot) {
            if (col >= moved.firstMoved()) slots.emplace_back(col, slot);
        });
        for (const auto& [col, slot] : slots) index.erase(rw, col);
        for (const auto& [col, slot] : slots) {
            const auto place = moved.placeOf(col);
            if (!place) continue;
            index.forWrite(rw, *place) = slot;
            cells.visit(slot, [to = static_cast<std::uint16_t>(*place)](auto& cell) { cell.col = to; });
        }
    }
}

}  // namespace

void checkArraysStayWhole(const CellStore& cells, const MovedLines& moved) {
    forEachFormula(cells, [&](const FormulaCell& cell) {
        if (const auto range = BlockRange::of(cell)) (void)movedWhole(moved, *range, msg::arrayCut);
    });
}

void prepareFormulas(CellStore& cells, SharedTokens& shared, StringPool& pool, const MovedLines& moved) {
    shared.settle(cells);
    giveTokensToMoving(cells, pool, moved);
    handOnToStaying(cells, shared, moved);
    forEachFormula(cells, [&](FormulaCell& cell) {
        const auto range = BlockRange::of(cell);
        if (!range) return;
        if (const auto place = movedWhole(moved, *range, msg::arrayCut)) BlockRange::store(cell, *place);
    });
    shared = SharedTokens();  // what it knows by place is true no more
}

void moveCells(CellStore& cells, const MovedLines& moved) {
    if (moved.axis == MovedLines::Axis::rows) {
        moveRows(cells, moved);
    } else {
        moveColumns(cells, moved);
    }
}

}  // namespace vellum::biff
