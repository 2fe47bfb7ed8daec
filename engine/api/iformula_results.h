// The results that formulas had when a workbook was saved, for those who let another program calculate, and what they
// depend on.
#pragma once
#include <optional>
#include <string>

#include "engine/api/enums.h"

namespace vellum {

/// A result. `kind` is cellNumber, cellString, cellBoolean or cellError.
struct FormulaResult {
    CellKind kind = cellNumber;
    double number = 0;
    bool boolean = false;
    int error = errorNone;  // an ErrorCode
    std::string text;       // UTF-8
};

/// A text in A1 notation that holds all references of a formula, though it may be no formula. Relative ones are counted
/// as from this cell.
struct ReferenceText {
    std::string text;  // UTF-8
    int row = 0, col = 0;
};

class IFormulaResults {
public:
    /// Whether a formula cell has a result, which may be an empty text. False for other cells. A formula that a binary
    /// workbook asks to be calculated whatever its result is, as those are that nobody has calculated yet, has none
    /// when that is empty.
    virtual bool isCalculated(int row, int col) = 0;
    /// Replaces the result of a formula cell and nothing else. False, with the book's error text, for other cells and
    /// for results that no cell can hold.
    virtual bool setResult(int row, int col, const FormulaResult& result) = 0;
    /// The cells that share an array formula with this cell: only where this is the one that has the formula.
    virtual bool arrayArea(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) = 0;
    /// What a formula refers to, where `readFormula` may not tell all of it: tokens without a text of their own, and
    /// cells that share a formula. Nothing for all others.
    virtual std::optional<ReferenceText> referenceText(int row, int col) = 0;

protected:
    ~IFormulaResults() = default;
};

}  // namespace vellum
