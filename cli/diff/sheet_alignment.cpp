#include "cli/diff/sheet_alignment.h"

#include <algorithm>
#include <numeric>

#include "cli/diff/align.h"
#include "cli/diff/sheet_lines.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

std::vector<int> identity(std::size_t count) {
    std::vector<int> places(count);
    std::iota(places.begin(), places.end(), 0);
    return places;
}

/// Runs of lines that `isMissing` tells of.
template <class IsMissing>
std::vector<LineRun> runsOf(int count, IsMissing&& isMissing) {
    std::vector<LineRun> runs;
    for (int i = 0; i < count; ++i) {
        if (!isMissing(i)) continue;
        if (!runs.empty() && runs.back().last == i - 1) {
            runs.back().last = i;
        } else {
            runs.push_back({i, i});
        }
    }
    return runs;
}

/// Lines of the first sheet without a partner, and those of the second.
void findMoves(const std::vector<int>& places, int ofSecond, std::vector<LineRun>& inserted,
               std::vector<LineRun>& removed) {
    std::vector<bool> taken(static_cast<std::size_t>(ofSecond));
    for (const int place : places) {
        if (place >= 0) taken[static_cast<std::size_t>(place)] = true;
    }
    inserted = runsOf(ofSecond, [&](int i) { return !taken[static_cast<std::size_t>(i)]; });
    removed = runsOf(static_cast<int>(places.size()), [&](int i) { return places[static_cast<std::size_t>(i)] < 0; });
}

class SheetAligner {
public:
    SheetAligner(CellReader& firstReader, Sheet& first, CellReader& secondReader, Sheet& second)
        : _firstReader(firstReader), _first(first), _secondReader(secondReader), _second(second) {}

    SheetAlignment run() {
        const auto rowsA = rowHashes(_firstReader, _first, {}), rowsB = rowHashes(_secondReader, _second, {});
        SheetAlignment best = asTheyStand(rowsA, rowsB);
        if (cost(best) < 2) return best;
        SheetAlignment moved = withMovedRows(rowsA, rowsB);
        if (moved.moves() && cost(moved) < cost(best)) best = std::move(moved);
        const std::size_t rows = std::max(rowsA.size(), rowsB.size());
        if (2 * weight(best) < rows || weight(best) < 2) return best;
        SheetAlignment columns = withMovedColumns();
        if (columns.moves() && weight(columns) < weight(best)) best = std::move(columns);
        return best;
    }

private:
    /// How long the list would be, in rows.
    static std::size_t cost(const SheetAlignment& a) {
        return a.different.size() + a.rowsInserted.size() + a.rowsRemoved.size() + a.columnsInserted.size() +
               a.columnsRemoved.size();
    }

    static std::size_t linesOf(const std::vector<LineRun>& runs) {
        std::size_t lines = 0;
        for (const LineRun& run : runs) lines += static_cast<std::size_t>(run.last - run.first + 1);
        return lines;
    }
    /// How many rows are not told to be the same. Where columns moved, all rows seem to be removed and others inserted:
    /// a short list that tells nothing.
    static std::size_t weight(const SheetAlignment& a) {
        return cost(a) + std::min(linesOf(a.rowsInserted), linesOf(a.rowsRemoved));
    }

    static SheetAlignment asTheyStand(const std::vector<RowHash>& a, const std::vector<RowHash>& b) {
        SheetAlignment found;
        found.rows = identity(std::max(a.size(), b.size()));
        found.rowsOfSecond = static_cast<int>(found.rows.size());
        for (std::size_t i = 0; i < found.rows.size(); ++i) {
            const std::uint64_t x = i < a.size() ? a[i].exact : 0, y = i < b.size() ? b[i].exact : 0;
            if (x != y) found.different.push_back({static_cast<int>(i), static_cast<int>(i)});
        }
        return found;
    }

    SheetAlignment withMovedRows(const std::vector<RowHash>& a, const std::vector<RowHash>& b) {
        std::vector<std::uint64_t> x, y;
        for (const RowHash& row : a) x.push_back(row.loose);
        for (const RowHash& row : b) y.push_back(row.loose);
        SheetAlignment found;
        found.rows = alignEqual(x, y);
        found.rowsOfSecond = static_cast<int>(b.size());
        pairBetween(found.rows, found.rowsOfSecond, [&](int i, int j) { return areAlike(i, j); });
        findMoves(found.rows, found.rowsOfSecond, found.rowsInserted, found.rowsRemoved);
        for (std::size_t i = 0; i < a.size(); ++i) {
            const int place = found.rows[i];
            if (place < 0) continue;
            const RowHash &p = a[i], &q = b[static_cast<std::size_t>(place)];
            // A row that moved has other texts for formulas of the same meaning.
            if (p.exact != q.exact || (p.formulas && place != static_cast<int>(i)))
                found.different.push_back({static_cast<int>(i), place});
        }
        return found;
    }

    /// Whether at least half of the cells of the longer row stand in the other, too.
    bool areAlike(int row, int other) {
        const auto x = cellsOfRow(_firstReader, _first, row), y = cellsOfRow(_secondReader, _second, other);
        std::vector<std::uint64_t> common;
        std::set_intersection(x.begin(), x.end(), y.begin(), y.end(), std::back_inserter(common));
        return !common.empty() && 2 * common.size() >= std::max(x.size(), y.size());
    }

    SheetAlignment withMovedColumns() {
        const auto x = columnSketches(_firstReader, _first), y = columnSketches(_secondReader, _second);
        constexpr std::size_t longest = 1000;
        if (x.size() > longest || y.size() > longest || x.size() == y.size()) return {};
        std::vector<int> columns(x.size(), -1);
        // All columns as one stretch between two that belong together.
        pairAlike(columns, y, x);
        std::vector<int> ofSecond(y.size(), -1);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i] >= 0) ofSecond[static_cast<std::size_t>(columns[i])] = columns[i];
        }
        std::vector<int> ofFirst = columns;
        const auto rowsA = rowHashes(_firstReader, _first, ofFirst),
                   rowsB = rowHashes(_secondReader, _second, ofSecond);
        SheetAlignment found = asTheyStand(rowsA, rowsB);
        if (SheetAlignment moved = withMovedRows(rowsA, rowsB); moved.moves() && cost(moved) < cost(found))
            found = std::move(moved);
        found.columns = columns;
        found.columnsOfSecond = static_cast<int>(y.size());
        findMoves(found.columns, found.columnsOfSecond, found.columnsInserted, found.columnsRemoved);
        return found;
    }
    static void pairAlike(std::vector<int>& columns, const std::vector<ColumnSketch>& y,
                          const std::vector<ColumnSketch>& x) {
        auto alike = [&](int i, int j) {
            return x[static_cast<std::size_t>(i)].isLike(y[static_cast<std::size_t>(j)]);
        };
        cli::pairAlike(columns, 0, static_cast<int>(x.size()), 0, static_cast<int>(y.size()), alike);
    }

    CellReader& _firstReader;
    Sheet& _first;
    CellReader& _secondReader;
    Sheet& _second;
};

}  // namespace

SheetAlignment alignSheets(CellReader& firstReader, Sheet& first, CellReader& secondReader, Sheet& second) {
    return SheetAligner(firstReader, first, secondReader, second).run();
}

}  // namespace cli
