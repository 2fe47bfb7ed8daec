// The one rule by which ranges follow rows and columns that come and go.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/facts/cell_address.h"

namespace vellum::xlsx {

/// Rows or columns that are inserted in front of `first`, or removed, all included.
struct CellMove {
    bool isInsert = true;
    bool isRow = true;
    std::uint32_t first = 0, last = 0;

    [[nodiscard]] std::uint32_t count() const { return last - first + 1; }
    [[nodiscard]] std::uint32_t limit() const { return isRow ? sheetRows : sheetColumns; }
};

/// First and last row, or column, both included.
struct Span {
    std::uint32_t first = 0, last = 0;
    bool operator==(const Span&) const = default;
};

/// Where a span lies after the move. An insertion moves each bound at or behind `first`, so that a span around it
/// grows; ends that pass the sheet's are cut. A removal takes what lies inside. Nothing when nothing is left.
std::optional<Span> movedSpan(Span span, const CellMove& move);

/// The same for the rows or the columns of a block.
std::optional<CellRange> movedRange(const CellRange& range, const CellMove& move);

/// The same for the text of a `ref`, such as "B2:C9". A text that is no range stays as it is; nothing is left of one
/// that is gone.
std::optional<std::string> movedRef(std::string_view ref, const CellMove& move);

}  // namespace vellum::xlsx
