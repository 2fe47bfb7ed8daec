#include "cli/explain/stale/dependency_index.h"

#include <algorithm>
#include <deque>
#include <string>

#include "cli/explain/stale/book_names.h"
#include "engine/api/enums.h"
#include "engine/api/iformula_results.h"
#include "engine/api/isheet.h"

namespace cli::explain {
namespace {

constexpr int manyColumns = 16;  // areas of more are not listed at each column
constexpr std::size_t noGroup = static_cast<std::size_t>(-1);

/// Formulas are read in A1 notation, whatever the book shows.
class A1Notation {
public:
    explicit A1Notation(vellum::IBookT<char>& book) : _book(book), _wasR1C1(book.usesR1C1()) {
        if (_wasR1C1) _book.setUsesR1C1(false);
    }
    ~A1Notation() {
        if (_wasR1C1) _book.setUsesR1C1(true);
    }
    A1Notation(const A1Notation&) = delete;
    A1Notation& operator=(const A1Notation&) = delete;

private:
    vellum::IBookT<char>& _book;
    const bool _wasR1C1;
};

/// What a formula refers to, in the words of the engine: from its tokens, from the cell it shares a text with, or from
/// its own text.
References referencesOf(vellum::ISheetT<char>& cells, vellum::IFormulaResults* results, int sheet, int row, int col,
                        const FormulaNames& names) {
    References references;
    if (const auto shared = results != nullptr ? results->referenceText(row, col) : std::nullopt) {
        addReferences(shared->text, sheet, names, references);
        moveBy(references, row - shared->row, col - shared->col);
        return references;
    }
    const char* const text = cells.readFormula(row, col);
    if (text != nullptr && *text != '\0') {
        addReferences(text, sheet, names, references);
    } else {
        references.cannotTell = true;  // a data table, for one
    }
    return references;
}

bool isInside(const std::vector<Reference>& areas, int row, int col) {
    return std::any_of(areas.begin(), areas.end(), [&](const Reference& area) {
        return row >= area.rowFirst && row <= area.rowLast && col >= area.colFirst && col <= area.colLast;
    });
}

}  // namespace

DependencyIndex::DependencyIndex(vellum::IBookT<char>& book) {
    const A1Notation notation(book);
    const BookNames names(book);
    for (int i = 0; i < book.sheetCount(); ++i) {
        if (book.sheetKindAt(i) == vellum::sheetWorksheet) addSheet(book, i, names);
    }
    addUsers();
}

void DependencyIndex::addSheet(vellum::IBookT<char>& book, int sheet, const FormulaNames& names) {
    auto* const cells = book.getSheet(sheet);
    auto* const walk = dynamic_cast<vellum::ISheetCells*>(cells);
    if (walk == nullptr) return;
    auto* const results = dynamic_cast<vellum::IFormulaResults*>(cells);
    std::vector<std::size_t> open;  // by column: the group that a formula beneath may join
    std::vector<Reference> arrays;
    for (int row = 0, col = 0; walk->cellFrom(&row, &col); ++col) {
        if (!cells->isFormulaCell(row, col)) continue;
        Reference area;
        const bool isArray = results != nullptr &&
                             results->arrayArea(row, col, &area.rowFirst, &area.rowLast, &area.colFirst, &area.colLast);
        if (!isArray && isInside(arrays, row, col)) continue;
        References references = referencesOf(*cells, results, sheet, row, col, names);
        if (isArray) {
            if (area.rowFirst < area.rowLast || area.colFirst < area.colLast) arrays.push_back(area);
            addArray(sheet, area, std::move(references));
        } else {
            addFormula(open, sheet, row, col, std::move(references));
        }
    }
}

void DependencyIndex::addArray(int sheet, const Reference& area, References references) {
    for (Reference& used : references.areas) {
        if (used.sheetFirst == ownSheet) used.sheetFirst = used.sheetLast = sheet;
        used.rowFirstMoves = used.rowLastMoves = false;
    }
    for (int col = area.colFirst; col <= area.colLast; ++col) {
        _groups.push_back({sheet, col, {area.rowFirst, area.rowLast}, references});
    }
}

void DependencyIndex::addFormula(std::vector<std::size_t>& open, int sheet, int row, int col, References references) {
    for (Reference& area : references.areas) {
        if (area.sheetFirst == ownSheet) area.sheetFirst = area.sheetLast = sheet;
        if (area.rowFirstMoves) area.rowFirst -= row;
        if (area.rowLastMoves) area.rowLast -= row;
    }
    const auto at = static_cast<std::size_t>(col);
    if (open.size() <= at) open.resize(at + 1, noGroup);
    if (open[at] != noGroup) {
        Group& above = _groups[open[at]];
        if (above.rows.last == row - 1 && above.references == references) {
            above.rows.last = row;
            return;
        }
    }
    open[at] = _groups.size();
    _groups.push_back({sheet, col, {row, row}, std::move(references)});
}

void DependencyIndex::addUsers() {
    for (std::size_t g = 0; g < _groups.size(); ++g) {
        const auto& areas = _groups[g].references.areas;
        for (std::size_t a = 0; a < areas.size(); ++a) {
            for (int sheet = areas[a].sheetFirst; sheet <= areas[a].sheetLast; ++sheet) {
                if (areas[a].colLast - areas[a].colFirst >= manyColumns) {
                    _wideUsers[sheet].push_back({g, a});
                    continue;
                }
                for (int col = areas[a].colFirst; col <= areas[a].colLast; ++col)
                    _users[{sheet, col}].push_back({g, a});
            }
        }
    }
}

/// Cells that are known to depend, and those whose own dependents are still to be looked for.
struct DependencyIndex::Walk {
    struct Step {
        int sheet, col;
        Rows rows;
    };
    CellSet found;
    std::deque<Step> ahead;
    std::vector<Rows> fresh;

    void add(int sheet, int col, Rows rows) {
        fresh.clear();
        found[{sheet, col}].add(rows, &fresh);
        for (const Rows& piece : fresh) ahead.push_back({sheet, col, piece});
    }
};

/// The rows of the group whose reference meets the rows: with row r it reaches from r + first to r + last where its
/// ends move.
void DependencyIndex::affect(Walk& walk, const User& user, int, int col, Rows rows) const {
    const Group& group = _groups[user.group];
    const Reference& area = group.references.areas[user.area];
    if (col < area.colFirst || col > area.colLast) return;
    Rows hit = group.rows;
    if (area.rowFirstMoves) {
        hit.last = std::min(hit.last, rows.last - area.rowFirst);
    } else if (area.rowFirst > rows.last) {
        return;
    }
    if (area.rowLastMoves) {
        hit.first = std::max(hit.first, rows.first - area.rowLast);
    } else if (area.rowLast < rows.first) {
        return;
    }
    if (hit.first <= hit.last) walk.add(group.sheet, group.col, hit);
}

void DependencyIndex::spread(Walk& walk, int sheet, int col, Rows rows) const {
    if (const auto users = _users.find({sheet, col}); users != _users.end()) {
        for (const User& user : users->second) affect(walk, user, sheet, col, rows);
    }
    if (const auto users = _wideUsers.find(sheet); users != _wideUsers.end()) {
        for (const User& user : users->second) affect(walk, user, sheet, col, rows);
    }
}

void DependencyIndex::finish(const DependencyIndex& index, Walk& walk) {
    while (!walk.ahead.empty()) {
        const Walk::Step step = walk.ahead.front();
        walk.ahead.pop_front();
        index.spread(walk, step.sheet, step.col, step.rows);
    }
}

CellSet DependencyIndex::dependents(const CellSet& changed) const {
    Walk walk;
    for (const auto& [place, rows] : changed) {
        for (const auto& [first, last] : rows.runs()) spread(walk, place.first, place.second, {first, last});
    }
    finish(*this, walk);
    return std::move(walk.found);
}

CellSet DependencyIndex::unsure() const {
    Walk walk;
    for (const Group& group : _groups) {
        if (group.references.cannotTell) walk.add(group.sheet, group.col, group.rows);
    }
    finish(*this, walk);
    return std::move(walk.found);
}

}  // namespace cli::explain
