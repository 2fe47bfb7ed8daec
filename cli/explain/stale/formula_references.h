// What a formula's text refers to.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace cli::explain {

constexpr int ownSheet = -1;
constexpr int lastSheetRow = 1048575, lastSheetColumn = 16383;

/// A rectangle on one sheet, or on several that stand side by side. Rows and columns count from 0; what is relative
/// moves with the formula when that is filled down or to the right.
struct Reference {
    int sheetFirst = ownSheet, sheetLast = ownSheet;
    int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
    bool rowFirstMoves = false, rowLastMoves = false, colFirstMoves = false, colLastMoves = false;
    friend bool operator==(const Reference&, const Reference&) = default;
};

struct References {
    std::vector<Reference> areas;
    /// Something in the formula refers to cells that its text does not tell: INDIRECT, OFFSET, a name of that kind, or
    /// one that is not known.
    bool cannotTell = false;
    friend bool operator==(const References&, const References&) = default;
};

/// Sheets, names and tables of a book, for those who read formulas.
class FormulaNames {
public:
    virtual ~FormulaNames() = default;
    /// -1 for a sheet that is not of this book.
    virtual int sheetIndex(std::string_view name) const = 0;
    /// Words in the form of cells behind it are names.
    virtual int lastColumn() const = 0;
    virtual int lastRow() const = 0;
    /// Adds what a name, or a table, stands for in a formula of the sheet.
    virtual void resolve(std::string_view name, int sheet, References& out) const = 0;
};

/// The references of a formula that is filled down and to the right by so many rows and columns.
void moveBy(References& references, int rows, int cols);

/// Adds what the text of a formula on the sheet refers to. The notation is A1, the text UTF-8.
void addReferences(std::string_view text, int sheet, const FormulaNames& names, References& out);

}  // namespace cli::explain
