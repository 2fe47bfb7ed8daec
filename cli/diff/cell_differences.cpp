#include "cli/diff/cell_differences.h"

#include <algorithm>
#include <map>

#include "cli/workbook/cell_name.h"
#include "engine/api/enums.h"

namespace cli {
namespace {

using Sheet = vellum::ISheetT<char>;

std::string kindName(const CellContent& cell) {
    switch (cell.kind) {
        case vellum::cellNumber:
            return "number";
        case vellum::cellString:
            return "text";
        case vellum::cellBoolean:
            return "boolean";
        case vellum::cellError:
            return "error";
        case vellum::cellDate:
            return "date";
        default:
            return "nothing";
    }
}

/// A change of one cell, at its place in the second sheet; of a removed one at its place in the first.
struct CellChange {
    int row, col;
    std::string what, before, after;
};

/// Gathers changes of one kind into runs: downwards where a cell continues one above it, else sideways.
class Runs {
public:
    void add(CellChange change) {
        auto& open = _open[change.what];
        for (Run& run : open) {
            const bool below =
                change.col == run.colLast && run.colFirst == run.colLast && change.row == run.rowLast + 1;
            const bool beside =
                change.row == run.rowLast && run.rowFirst == run.rowLast && change.col == run.colLast + 1;
            if (!below && !beside) continue;
            run.rowLast = change.row;
            run.colLast = change.col;
            ++run.count;
            return;
        }
        // Runs that end far above take nothing any more.
        for (std::size_t i = 0; i < open.size();) {
            if (open[i].rowLast + 1 < change.row) {
                _done.push_back(std::move(open[i]));
                open[i] = std::move(open.back());
                open.pop_back();
            } else {
                ++i;
            }
        }
        open.push_back({change.row, change.row, change.col, change.col, 1, _next++, std::move(change)});
    }
    void give(const std::string& sheet, Differences& out) {
        for (auto& [what, open] : _open) std::move(open.begin(), open.end(), std::back_inserter(_done));
        std::sort(_done.begin(), _done.end(), [](const Run& a, const Run& b) { return a.order < b.order; });
        for (Run& run : _done) {
            std::string place = cellName(run.rowFirst, run.colFirst);
            if (run.count > 1) place.append(1, ':').append(cellName(run.rowLast, run.colLast));
            out.push_back({sheet, std::move(place), run.first.what, run.count, run.first.before, run.first.after});
        }
    }

private:
    struct Run {
        int rowFirst, rowLast, colFirst, colLast;
        long long count;
        std::size_t order;
        CellChange first;
    };
    std::map<std::string, std::vector<Run>> _open;
    std::vector<Run> _done;
    std::size_t _next = 0;
};

class CellComparer {
public:
    CellComparer(SheetPair& pair, const SheetAlignment& alignment, const AlignmentOf& alignmentOf)
        : _pair(pair), _alignment(alignment), _alignmentOf(alignmentOf) {}

    void run(Differences& out) {
        moves("rows inserted", "rows ", _alignment.rowsInserted, out);
        moves("rows removed", "rows ", _alignment.rowsRemoved, out);
        moves("columns inserted", "columns ", _alignment.columnsInserted, out);
        moves("columns removed", "columns ", _alignment.columnsRemoved, out);
        for (const auto& pair : _alignment.different) compareRows(pair.first, pair.second);
        _runs.give(_pair.name, out);
    }

private:
    static std::string lineName(bool row, int line) {
        if (row) return std::to_string(line + 1);
        std::string name = cellName(0, line);
        name.pop_back();
        return name;
    }
    void moves(const char* what, const std::string& head, const std::vector<LineRun>& runs, Differences& out) const {
        const bool rows = head == "rows ";
        for (const LineRun& run : runs) {
            out.push_back({_pair.name, head + lineName(rows, run.first) + ":" + lineName(rows, run.last), what,
                           run.last - run.first + 1, "", ""});
        }
    }

    /// Columns of a row's cells.
    static std::vector<int> columnsOf(Sheet& sheet, int row) {
        std::vector<int> found;
        auto* const cells = dynamic_cast<vellum::ISheetCells*>(&sheet);
        for (int at = row, col = 0; cells != nullptr && cells->cellFrom(&at, &col) && at == row; ++col) {
            found.push_back(col);
        }
        return found;
    }

    void compareRows(int first, int second) {
        const std::vector<int> before = columnsOf(_pair.first, first);
        std::vector<std::pair<int, int>> cells;  // columns in both, by the second; -1: none
        for (const int col : before) {
            const int place = _alignment.columnOf(col);
            if (place >= 0) cells.emplace_back(place, col);
        }
        const std::size_t known = cells.size();  // by their columns in the second: an alignment crosses nothing
        for (const int col : columnsOf(_pair.second, second)) {
            const auto end = cells.begin() + static_cast<std::ptrdiff_t>(known);
            const auto same = std::lower_bound(cells.begin(), end, std::pair(col, -1));
            if (!wasInserted(col) && (same == end || same->first != col)) cells.emplace_back(col, -1);
        }
        std::sort(cells.begin(), cells.end());
        for (const auto& [place, col] : cells) compareCells(first, col, second, place);
    }
    bool wasInserted(int col) const {
        const auto& runs = _alignment.columnsInserted;
        return std::any_of(runs.begin(), runs.end(),
                           [col](const LineRun& r) { return col >= r.first && col <= r.last; });
    }

    void compareCells(int rowFirst, int colFirst, int rowSecond, int colSecond) {
        const CellContent a =
            colFirst < 0 ? _pair.firstReader.nothing() : _pair.firstReader.content(_pair.first, rowFirst, colFirst);
        const CellContent b = _pair.secondReader.content(_pair.second, rowSecond, colSecond);
        const auto add = [&](std::string what, std::string before, std::string after) {
            _runs.add({rowSecond, colSecond, std::move(what), std::move(before), std::move(after)});
        };
        if (a.look != nullptr && b.look != nullptr) {
            auto [before, after] = lookChanges(*a.look, *b.look);
            if (!before.empty()) add("look", std::move(before), std::move(after));
        }
        if (a.isEmpty() && b.isEmpty()) return;
        if (a.isEmpty()) return add("cell added", "", b.isFormula && !b.formula.empty() ? "=" + b.formula : b.shown());
        if (b.isEmpty())
            return add("cell removed", a.isFormula && !a.formula.empty() ? "=" + a.formula : a.shown(), "");
        if (a.isFormula != b.isFormula) {
            add("formula", a.isFormula ? "=" + a.formula : a.shown(), b.isFormula ? "=" + b.formula : b.shown());
        } else if (a.formula != b.formula && movedFormula(a.formula, _alignment, _alignmentOf) != b.formula) {
            add("formula", "=" + a.formula, "=" + b.formula);
        }
        if (a.kind != b.kind) {
            add("kind", kindName(a) + " " + a.shown(), kindName(b) + " " + b.shown());
        } else if (!a.sameValue(b)) {
            add(kindName(b), a.shown(), b.shown());
        }
        if (a.code != b.code) add("format", a.code, b.code);
    }

    SheetPair& _pair;
    const SheetAlignment& _alignment;
    const AlignmentOf& _alignmentOf;
    Runs _runs;
};

}  // namespace

void addCellDifferences(SheetPair& pair, const SheetAlignment& alignment, const AlignmentOf& alignmentOf,
                        Differences& out) {
    CellComparer(pair, alignment, alignmentOf).run(out);
}

}  // namespace cli
