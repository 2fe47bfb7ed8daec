// Which formulas of a workbook depend on which cells.
#pragma once
#include <map>
#include <utility>
#include <vector>

#include "cli/explain/stale/formula_references.h"
#include "cli/explain/stale/row_set.h"
#include "engine/api/ibook.h"

namespace cli::explain {

/// Cells by sheet and column.
using CellSet = std::map<std::pair<int, int>, RowSet>;

/// The formulas of a book. Those that were filled down a column are one entry, however many they are.
class DependencyIndex {
public:
    explicit DependencyIndex(vellum::IBookT<char>& book);

    /// All formulas that depend on these cells, directly or through others.
    [[nodiscard]] CellSet dependents(const CellSet& changed) const;
    /// Those that refer to cells that their text does not tell, and all that depend on them.
    [[nodiscard]] CellSet unsure() const;
    /// Entries; for those who measure.
    [[nodiscard]] std::size_t size() const { return _groups.size(); }

private:
    /// What formulas of a column refer to; what moves is counted from the formula's row.
    struct Group {
        int sheet = 0, col = 0;
        Rows rows;
        References references;
    };
    /// One reference of a group, by the columns that it is in.
    struct User {
        std::size_t group = 0, area = 0;
    };
    struct Walk;

    void addSheet(vellum::IBookT<char>& book, int sheet, const FormulaNames& names);
    /// The cells of an array formula: all of them refer to the same.
    void addArray(int sheet, const Reference& area, References references);
    void addFormula(std::vector<std::size_t>& open, int sheet, int row, int col, References references);
    void addUsers();
    void spread(Walk& walk, int sheet, int col, Rows rows) const;
    void affect(Walk& walk, const User& user, int sheet, int col, Rows rows) const;
    static void finish(const DependencyIndex& index, Walk& walk);

    std::vector<Group> _groups;
    std::map<std::pair<int, int>, std::vector<User>> _users;  // by sheet and column
    std::map<int, std::vector<User>> _wideUsers;              // by sheet: areas of many columns
};

}  // namespace cli::explain
