// Expressions that are one cell or one area of sheets: what most names stand for.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vellum::biff {

/// The first token's code without its class: 0x3A for 0x3A, 0x5A and 0x7A.
constexpr std::uint8_t tokenBase(std::byte code) {
    const auto value = std::to_integer<std::uint8_t>(code);
    return value < 0x20 ? value : static_cast<std::uint8_t>((value & 0x1F) | 0x20);
}

/// Rows and columns of a sheet, both ends included.
struct NameArea {
    int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;

    [[nodiscard]] bool isCell() const { return rowFirst == rowLast && colFirst == colLast; }
    bool operator==(const NameArea&) const = default;
};

/// A PtgRef3d or PtgArea3d that is the whole expression.
struct PlainRange {
    static constexpr std::size_t cellSize = 7, areaSize = 11;
    static constexpr std::uint8_t ref3d = 0x3A, area3d = 0x3B;

    std::uint16_t xti = 0;  // index of the sheet reference
    NameArea area;

    /// Null for any other expression. Marks of relative columns and rows are left out: they count from A1, so that
    /// the place stays the same.
    static std::optional<PlainRange> of(std::span<const std::byte> tokens);
    /// One area token, also for a single cell.
    void writeArea(std::vector<std::byte>& tokens) const;
    /// The shortest form: a cell, or an area.
    [[nodiscard]] std::vector<std::byte> tokens() const;
    /// Into tokens that `of` took; a cell must be a cell again.
    void patch(std::span<std::byte> tokens) const;
    /// The rows alone.
    void patchRows(std::span<std::byte> tokens) const;
};

}  // namespace vellum::biff
