// Addresses and numbers of cells as text.
#pragma once
#include <charconv>
#include <cstdint>
#include <string>

namespace ooxml {

inline constexpr std::uint32_t maxRows = 1048576;
inline constexpr std::uint32_t maxColumns = 16384;
inline constexpr int sheetNamespace = 2;  // the main one of the sheet's units

/// Takes an address such as "B7" off the front; rows and columns from 0. Null when it is none, or outside of a sheet.
/// Looks at 11 bytes at most.
inline const char* readAddress(const char* at, const char* end, std::uint32_t& row, std::uint32_t& column) {
    std::uint32_t letters = 0, number = 0;
    const char* first = at;
    for (; at != end && *at >= 'A' && *at <= 'Z' && at - first < 3; ++at)
        letters = letters * 26 + static_cast<std::uint32_t>(*at - 'A' + 1);
    if (at == first || letters > maxColumns) return nullptr;
    first = at;
    for (; at != end && *at >= '0' && *at <= '9' && at - first < 7; ++at)
        number = number * 10 + static_cast<std::uint32_t>(*at - '0');
    if (at == first || number == 0 || number > maxRows) return nullptr;
    row = number - 1;
    column = letters - 1;
    return at;
}

inline char* writeNumber(char* to, std::uint32_t value) {
    return std::to_chars(to, to + 10, value).ptr;
}

inline char* writeAddress(char* to, std::uint32_t row, std::uint32_t column) {
    if (column >= 26 + 26 * 26) *to++ = static_cast<char>('A' + (column - 26 - 26 * 26) / (26 * 26));
    if (column >= 26) *to++ = static_cast<char>('A' + (column - 26) / 26 % 26);
    *to++ = static_cast<char>('A' + column % 26);
    return writeNumber(to, row + 1);
}

}  // namespace ooxml
