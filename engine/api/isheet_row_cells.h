// Kinds and numbers of neighbouring cells by one call, for those who read whole areas.
#pragma once
#include <cstdint>

namespace vellum {

/// Both engines' sheets have it.
class ISheetRowCells {
public:
    /// For `count` cells of a row from (row, col) on, what `cellType` gives; for numbers and dates also what
    /// `readNumber` gives. The numbers of other cells are left alone. All are empty when the first is outside.
    virtual void rowCells(int row, int col, int count, std::uint8_t* kinds, double* numbers) = 0;

protected:
    ~ISheetRowCells() = default;
};

}  // namespace vellum
