// Where the characters of a csv text stand that can end a field.
#pragma once
#include <cstddef>
#include <cstdint>

namespace quillet {

/// Bytes behind a text that a scan may read; what they hold does not matter.
constexpr std::size_t scanSlack = 64;

/// Writes the places of the quotes, newlines, NULs and field separators of a text, in order, and returns their count.
/// `places` has room for `size` of them, and `scanSlack` bytes behind the text can be read. A text is below 4 GiB.
using CsvScan = std::size_t (*)(const char* text, std::size_t size, char fieldSep, std::uint32_t* places);

/// One character at a time.
std::size_t scanPlainly(const char* text, std::size_t size, char fieldSep, std::uint32_t* places);

/// By words of 16 and 32 bytes; the first of these that processor and build have. All give the same places.
CsvScan fastestScan();

/// Every scan that this processor can run, for comparison; a null ends them.
const CsvScan* usableScans();

}  // namespace quillet
