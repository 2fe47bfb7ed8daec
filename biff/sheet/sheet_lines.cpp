// Inserting and removing of rows and columns.
#include <algorithm>
#include <functional>
#include <vector>

#include "biff/container/messages.h"
#include "biff/features/moved_cells.h"
#include "biff/names/moved_names.h"
#include "biff/sheet/sheet_change.h"

namespace vellum {
namespace {

using biff::MovedLines;

MovedLines movedRows(int first, int last, MovedLines::Kind kind) {
    const auto rowFirst = biff::checkedUpTo(first, biff::lastRowOfSheet, biff::msg::rowFirstRange);
    const auto rowLast = biff::checkedUpTo(last, biff::lastRowOfSheet, biff::msg::rowLastRange);
    if (rowLast < rowFirst) throw vlerror(biff::msg::rowOrder);
    return {MovedLines::Axis::rows, kind, rowFirst, rowLast};
}

MovedLines movedColumns(int first, int last, MovedLines::Kind kind) {
    const auto colFirst = biff::checkedUpTo(first, biff::lastColOfSheet, biff::msg::colFirstRange);
    const auto colLast = biff::checkedUpTo(last, biff::lastColOfSheet, biff::msg::colLastRange);
    if (colLast < colFirst) throw vlerror(biff::msg::colOrder);
    return {MovedLines::Axis::columns, kind, colFirst, colLast};
}

}  // namespace

template <class CharT>
bool SheetImplT<CharT>::insertRows(int rowFirst, int rowLast, bool updateNames) {
    return change([&] { moveLines(movedRows(rowFirst, rowLast, MovedLines::Kind::insertion), updateNames); });
}

template <class CharT>
bool SheetImplT<CharT>::removeRows(int rowFirst, int rowLast, bool updateNames) {
    return change([&] { moveLines(movedRows(rowFirst, rowLast, MovedLines::Kind::removal), updateNames); });
}

// Names do not follow columns.
template <class CharT>
bool SheetImplT<CharT>::insertColumns(int colFirst, int colLast, bool) {
    return change([&] { moveLines(movedColumns(colFirst, colLast, MovedLines::Kind::insertion), false); });
}

template <class CharT>
bool SheetImplT<CharT>::removeColumns(int colFirst, int colLast, bool) {
    return change([&] { moveLines(movedColumns(colFirst, colLast, MovedLines::Kind::removal), false); });
}

template <class CharT>
void SheetImplT<CharT>::moveLines(const MovedLines& moved, bool updateNames) {
    CellStore& cells = edit().cells;
    biff::checkArraysStayWhole(cells, moved);
    const auto goneFirst = static_cast<std::uint16_t>(moved.firstGone());
    const auto goneLast = static_cast<std::uint16_t>(moved.lastGone());
    const bool rows = moved.axis == MovedLines::Axis::rows;
    if (rows) {
        eraseCells({goneFirst, 0}, {goneLast, biff::lastColOfSheet});
    } else {
        eraseCells({0, goneFirst}, {biff::lastRowOfSheet, goneLast});
    }
    biff::prepareFormulas(cells, edit().sharedTokens, _book.pool(), moved);
    biff::moveCells(cells, moved);
    const int count = static_cast<int>(moved.count()), difference = moved.isInsertion() ? count : -count;
    moveComments(rows, static_cast<int>(moved.first), difference);
    if (rows) moved.isInsertion() ? pushRows(moved) : closeRows(moved);
    moveMerges(moved);
    if (updateNames) biff::moveNames(_book.names(), index(), static_cast<int>(moved.first), difference);
    edit().boundsDirty = true;
}

template <class CharT>
void SheetImplT<CharT>::moveMerges(const MovedLines& moved) {
    std::vector<biff::CellRange> lower;
    std::vector<biff::CellRange> merges;
    merges.reserve(parts().merges.size());
    for (const biff::CellRange& range : parts().merges) {
        const biff::MovedRange parts = biff::movedInParts(moved, range);
        if (parts.range) merges.push_back(*parts.range);
        if (parts.lower) lower.push_back(*parts.lower);
    }
    edit().merges = std::move(merges);
    // A few bytes of a file may merge the whole sheet, again and again. Past so many cells the blocks alone are made.
    constexpr std::size_t mostCells = std::size_t{1} << 20;
    std::size_t cells = 0;
    for (const biff::CellRange& range : lower) {
        cells += (range.rowLast - range.rowFirst + std::size_t{1}) * (range.colLast - range.colFirst + std::size_t{1});
        if (cells <= mostCells && range.colLast <= biff::lastColOfSheet) {
            mergeBlock(range);
        } else {
            edit().merges.push_back(range);
        }
    }
}

// Heights and hidden states go along; the formats and levels of rows stay where they are. Only rows near a record can
// differ from those that many rows above them. A row without a record has the sheet's height, which nobody set.
template <class CharT>
void SheetImplT<CharT>::pushRows(const MovedLines& moved) {
    struct Look {
        std::uint16_t miyRw;
        bool hidden;
        bool hasRecord = true;
    };
    const Look usual{parts().settings.defaultRowHeight.miyRw, false, false};
    const auto lookOf = [&](std::uint32_t rw) {
        const Row* const row = std::as_const(parts().rows).find(static_cast<std::uint16_t>(rw));
        return row == nullptr ? usual : Look{row->miyRw, (row->flags & Row::hidden) != 0};
    };
    const auto give = [&](std::uint32_t rw, const Look& look) {
        Row& row = setRowTwips(static_cast<std::uint16_t>(rw), look.miyRw, look.hidden);
        if (!look.hasRecord) row.flags &= static_cast<std::uint16_t>(~Row::heightByHand);
    };
    std::vector<std::uint32_t> candidates;
    for (const Row& row : parts().rows.from(static_cast<std::uint16_t>(moved.first))) {
        if (row.rw > moved.last) candidates.push_back(row.rw);
        if (row.rw >= moved.first && row.rw + moved.count() < moved.limit())
            candidates.push_back(row.rw + moved.count());
    }
    std::ranges::sort(candidates, std::greater());
    candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
    for (const std::uint32_t rw : candidates) {
        const Look above = lookOf(rw - moved.count()), own = lookOf(rw);
        if (own.miyRw != above.miyRw || own.hidden != above.hidden) give(rw, above);
    }
    for (std::uint32_t rw = moved.first; rw <= moved.last; ++rw) give(rw, usual);
}

template <class CharT>
void SheetImplT<CharT>::closeRows(const MovedLines& moved) {
    RowTable& rows = edit().rows;
    for (Row row : rows.takeFrom(static_cast<std::uint16_t>(moved.first))) {
        const auto place = moved.placeOf(row.rw);
        if (!place) continue;
        row.rw = static_cast<std::uint16_t>(*place);
        rows.append(row);
    }
}

}  // namespace vellum
