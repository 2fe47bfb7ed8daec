// The smallest block of a sheet that holds a set of cells.
#pragma once
#include <algorithm>
#include <cstdint>

namespace vellum {

/// Rows and columns from `rowFirst`, `colFirst` up to but without `rowEnd`, `colEnd`; all zero when empty.
struct AreaBounds {
    std::uint32_t rowFirst = 0, rowEnd = 0;
    std::uint32_t colFirst = 0, colEnd = 0;

    void growRows(std::uint32_t row) {
        rowFirst = rowEnd == 0 ? row : std::min(rowFirst, row);
        rowEnd = std::max(rowEnd, row + 1);
    }
    void growColumns(std::uint32_t col) {
        colFirst = colEnd == 0 ? col : std::min(colFirst, col);
        colEnd = std::max(colEnd, col + 1);
    }
    void grow(std::uint32_t row, std::uint32_t col) {
        growRows(row);
        growColumns(col);
    }
};

}  // namespace vellum
