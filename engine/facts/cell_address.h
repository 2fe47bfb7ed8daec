// Cell addresses in text: "B7", "$B$7", "A1:B2".
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellum {

inline constexpr std::uint32_t sheetRows = 1048576;
inline constexpr std::uint32_t sheetColumns = 16384;

/// Row and column from 0, and which of them carry a "$".
struct CellAddress {
    std::uint32_t row = 0, col = 0;
    bool rowFixed = false, colFixed = false;
};

/// First and last rows and columns, from 0, all included.
struct CellRange {
    std::uint32_t rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;

    [[nodiscard]] bool contains(std::uint32_t row, std::uint32_t col) const {
        return row >= rowFirst && row <= rowLast && col >= colFirst && col <= colLast;
    }
    bool operator==(const CellRange&) const = default;
};

/// One end of a block: a row, a column, or both, and which of them carry a "$". What is absent is one past the last.
struct AddressPart {
    std::uint32_t row = sheetRows, col = sheetColumns;
    bool rowFixed = false, colFixed = false;

    [[nodiscard]] bool hasRow() const { return row < sheetRows; }
    [[nodiscard]] bool hasCol() const { return col < sheetColumns; }
};

/// The whole text as one address in capitals; nothing when it is none, or lies outside of a sheet.
std::optional<CellAddress> readCellAddress(std::wstring_view text);
void appendCellAddress(std::wstring& text, const CellAddress& address);
std::string cellAddressText(std::uint32_t row, std::uint32_t col);

/// The whole text as an address in capitals of which the row or the column may be missing.
std::optional<AddressPart> readAddressPart(std::wstring_view text);
void appendAddressPart(std::wstring& text, const AddressPart& part);

/// One address, two with a colon, whole columns ("A:C") or whole rows ("1:3"), with or without "$".
std::optional<CellRange> readCellRange(std::wstring_view text);
std::optional<CellRange> readCellRange(std::string_view text);
/// One address when the corners are equal.
std::string cellRangeText(const CellRange& range);

}  // namespace vellum
