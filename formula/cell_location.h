// Cells and areas as tokens hold them.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "formula/byte_stream.h"
#include "formula/formula_context.h"

namespace vellum {
class Sink;
}

namespace vellum::formula {

/// What is added to the relative parts of a location: the cell that uses a shared formula, else nothing.
struct LocationBase {
    std::uint16_t row = 0, col = 0;
    std::uint32_t rowLimit = 65536;  // rows wrap there; 16384 in the older format
};

/// A cell. On the wire a 16-bit row and a 16-bit column field: bits 0-13 the column, bit 14 column relative, bit 15
/// row relative. BIFF5 has these bits in the row's field, and an 8-bit column.
struct RgceLoc {
    std::uint16_t row = 0;
    std::uint16_t col = 0;
    bool rowRelative = false, colRelative = false;

    static RgceLoc read(ByteStream& in, Generation generation);
    /// BIFF8. Throws "RgceLoc: col must be less than 256".
    void write(Sink& out) const;
    [[nodiscard]] std::uint16_t colField() const;
    /// `$A$1`. Columns wrap at 256, rows at the base's limit.
    void print(std::wstring& out, LocationBase base = {}) const;
    void printColumn(std::wstring& out, LocationBase base = {}) const;
    static void setColField(RgceLoc& loc, std::uint16_t field);
};

/// An area by its two corners. On the wire both rows, then both columns.
struct RgceArea {
    RgceLoc first, last;

    static RgceArea read(ByteStream& in, Generation generation);
    void write(Sink& out) const;
};

/// A word of the form of a cell: `$`, letters, `$`, digits, and `R` at its end, the mark of a cell that a function
/// wants as a reference. Each `$` and the mark may be missing.
struct CellWord {
    RgceLoc at;
    bool marked = false;
};

/// Nothing for a word of another form. One of the form that names no cell throws "Column is out of range" or "Row is
/// out of range".
std::optional<CellWord> parseCellWord(std::wstring_view word);
/// Two cells joined by the first colon; only the second may be marked.
std::optional<RgceArea> parseAreaWord(std::wstring_view word);

}  // namespace vellum::formula
