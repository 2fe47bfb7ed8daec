// Cells as far as a comparison looks at them.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

#include "cli/formats/cell_looks.h"
#include "cli/formats/cell_text.h"
#include "cli/tables/area.h"

namespace cli {

/// What a comparison of cells takes into account.
struct Aspects {
    bool formulas = true, formats = true;
    bool looks = false;  // fonts, fills, borders, alignment, protection
};

/// What stands in a cell.
struct CellContent {
    int kind = 0;          // a CellKind; empty and blank are 0
    double number = 0;     // of numbers, booleans and errors
    bool hasValue = true;  // false: a formula that was never calculated
    std::string text;      // of texts and dates
    bool isFormula = false;
    std::string formula;
    std::string code;            // of its number format; of cells with a value
    const Look* look = nullptr;  // where looks are compared

    [[nodiscard]] bool isEmpty() const { return kind == 0 && !isFormula; }
    [[nodiscard]] bool sameValue(const CellContent& other) const;
    /// As a person writes it: 12.5, "text", TRUE, #N/A.
    [[nodiscard]] std::string shown() const;
};

/// Hashes of a cell, 0 for an empty one.
struct CellHash {
    std::uint64_t exact = 0;
    /// The same for formulas of one shape: their texts and results are left out.
    std::uint64_t loose = 0;
    bool isFormula = false;
};

/// Reads cells of one book.
class CellReader {
public:
    CellReader(vellum::IBookT<char>& book, Aspects aspects)
        : _book(book), _aspects(aspects), _texts(book), _looks(book) {}

    CellContent content(vellum::ISheetT<char>& sheet, int row, int col);
    /// Where a sheet has no cell.
    CellContent nothing();
    CellHash hash(vellum::ISheetT<char>& sheet, int row, int col);
    /// Cells outside of the area count as empty from now on.
    void keepTo(const SheetArea& area) { _area = area; }

private:
    bool passesOver(int row, int col) const { return _area && !_area->contains(row, col); }

    int formatId(vellum::IFormatT<char>* format) const { return format != nullptr ? format->numFormat() : 0; }
    std::uint64_t codeHash(int id);
    /// Of the cell's value and formula; 0 for a cell without.
    CellHash contentHash(vellum::ISheetT<char>& sheet, int row, int col);

    vellum::IBookT<char>& _book;
    Aspects _aspects;
    std::optional<SheetArea> _area;
    CellTexts _texts;
    CellLooks _looks;
    std::unordered_map<int, std::uint64_t> _codeHashes;
};

}  // namespace cli
