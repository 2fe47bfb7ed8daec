// Which rows and columns of two sheets belong together.
#pragma once
#include <vector>

#include "cli/diff/cell_reader.h"

namespace cli {

/// First and last line, from 0.
struct LineRun {
    int first = 0, last = 0;
};

struct SheetAlignment {
    /// For each row and column of the first sheet its place in the second, -1 when it was removed. What lies behind the
    /// last one keeps its distance from the end.
    std::vector<int> rows, columns;
    int rowsOfSecond = 0, columnsOfSecond = 0;
    std::vector<LineRun> rowsInserted, columnsInserted;  // in the second sheet
    std::vector<LineRun> rowsRemoved, columnsRemoved;    // in the first
    /// Rows of both whose cells are to be compared, by their places; -1 where one has none.
    struct RowPair {
        int first, second;
    };
    std::vector<RowPair> different;

    [[nodiscard]] int rowOf(int row) const { return placeOf(rows, rowsOfSecond, row); }
    [[nodiscard]] int columnOf(int col) const { return placeOf(columns, columnsOfSecond, col); }
    [[nodiscard]] bool moves() const {
        return !rowsInserted.empty() || !rowsRemoved.empty() || !columnsInserted.empty() || !columnsRemoved.empty();
    }

private:
    static int placeOf(const std::vector<int>& places, int ofSecond, int line) {
        const int count = static_cast<int>(places.size());
        return line < count ? places[static_cast<std::size_t>(line)] : line + ofSecond - count;
    }
};

/// The alignment that leaves the fewest rows different: as the rows and columns stand, or with some inserted and
/// removed.
SheetAlignment alignSheets(CellReader& firstReader, vellum::ISheetT<char>& first, CellReader& secondReader,
                           vellum::ISheetT<char>& second);

}  // namespace cli
