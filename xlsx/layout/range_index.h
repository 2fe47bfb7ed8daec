// Which of many ranges holds a cell.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/facts/cell_address.h"

namespace vellum::xlsx {

/// Boxes around neighbours, and boxes around those, so that a search looks into few of them, however tall or wide the
/// ranges are.
class RangeIndex {
public:
    struct Entry {
        CellRange range;
        std::uint32_t place;  // in the list that the ranges come from
    };

    explicit RangeIndex(std::vector<Entry> entries);

    /// The entry with the smallest place whose range holds the cell.
    [[nodiscard]] const Entry* firstAt(std::uint32_t row, std::uint32_t col) const;
    /// No longer finds an entry, which it gave.
    void drop(const Entry& entry);
    /// Whether any range has cells in the row.
    [[nodiscard]] bool touchesRow(std::uint32_t row) const;

private:
    static constexpr std::size_t fanOut = 16;

    /// A level's boxes cover `fanOut` neighbours each of the level before, the lowest one's those of the entries.
    using Level = std::vector<CellRange>;

    void sortIntoTiles();
    void look(std::size_t level, std::size_t box, std::uint32_t row, std::uint32_t col, const Entry*& best) const;

    [[nodiscard]] bool touches(std::size_t level, std::size_t box, std::uint32_t row) const;

    std::vector<Entry> _entries;
    std::vector<Level> _levels;
};

}  // namespace vellum::xlsx
