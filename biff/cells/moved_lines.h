// Rows or columns that are inserted into a sheet or removed from it, and where that puts the others.
#pragma once
#include <algorithm>
#include <cstdint>
#include <optional>

#include "biff/cells/sheet_index.h"
#include "biff/cells/sheet_records.h"

namespace vellum::biff {

/// The lines `first` to `last` are inserted or removed; they are rows or columns.
struct MovedLines {
    enum class Axis : std::uint8_t { rows, columns };
    enum class Kind : std::uint8_t { insertion, removal };

    Axis axis;
    Kind kind;
    std::uint32_t first, last;

    [[nodiscard]] bool isInsertion() const { return kind == Kind::insertion; }
    [[nodiscard]] std::uint32_t count() const { return last - first + 1; }
    [[nodiscard]] std::uint32_t limit() const {
        return axis == Axis::rows ? SheetIndex::rowLimit : SheetIndex::colLimit;
    }
    /// The first line that goes elsewhere.
    [[nodiscard]] std::uint32_t firstMoved() const { return isInsertion() ? first : last + 1; }
    /// Where a line is afterwards; nothing when it was removed or pushed past the sheet's edge.
    [[nodiscard]] std::optional<std::uint32_t> placeOf(std::uint32_t line) const;
    /// The line of a cell.
    [[nodiscard]] std::uint32_t lineOf(std::uint32_t row, std::uint32_t col) const {
        return axis == Axis::rows ? row : col;
    }
    [[nodiscard]] bool moves(std::uint32_t row, std::uint32_t col) const { return lineOf(row, col) >= firstMoved(); }
    /// The lines that leave the sheet; none when the first is behind the last.
    [[nodiscard]] std::uint32_t firstGone() const {
        return isInsertion() ? limit() - std::min(count(), limit()) : first;
    }
    [[nodiscard]] std::uint32_t lastGone() const { return isInsertion() ? limit() - 1 : last; }
};

/// What becomes of a block of cells.
struct MovedRange {
    std::optional<CellRange> range;
    std::optional<CellRange> lower;  // the second part of a block that an insertion cuts
};

/// A block that must not be cut, as an array: its new place, nothing when all of it goes. Throws `cut` when it would
/// be cut or grow.
std::optional<CellRange> movedWhole(const MovedLines& moved, const CellRange& range, const char* cut);
/// A block that may be cut, as one of merged cells.
MovedRange movedInParts(const MovedLines& moved, const CellRange& range);

}  // namespace vellum::biff
