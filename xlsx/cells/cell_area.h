// A block of cells.
#pragma once
#include <algorithm>

namespace vellum {

/// The bounds of what was added to it; "end" is one past the last. All four are 0 while nothing was.
struct CellArea {
    int rowFirst = 0, rowEnd = 0, colFirst = 0, colEnd = 0;

    [[nodiscard]] bool empty() const { return rowEnd == 0; }
    void add(int row, int firstCol, int lastCol) {
        if (empty()) {
            *this = {row, row + 1, firstCol, lastCol + 1};
            return;
        }
        rowFirst = std::min(rowFirst, row);
        rowEnd = std::max(rowEnd, row + 1);
        colFirst = std::min(colFirst, firstCol);
        colEnd = std::max(colEnd, lastCol + 1);
    }
    void add(int row, int col) { add(row, col, col); }
};

}  // namespace vellum
