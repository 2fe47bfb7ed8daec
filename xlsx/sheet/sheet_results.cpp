// The cached results of formulas.
#include <cmath>

#include "bindery/values/value_spec.h"
#include "engine/text/conversions.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/strings/shared_strings.h"

namespace vellum {

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::isCalculated(int row, int col) {
    return guard(false, [&] {
        const Cell* const cell = findCell(row, col);
        return cell && cell->hasFormula() && cell->hasValue();
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::setResult(int row, int col, const FormulaResult& result) {
    return guard(false, [&] {
        Cell* const cell = findCell(place(row, col));
        if (!cell || !cell->hasFormula()) throw vlerror(xlsx::msg::noFormula);
        switch (result.kind) {
            case cellNumber:
                putNumber(*cell, result.number);
                break;
            case cellBoolean:
                cell->setType(CellType::b);
                cell->setText(result.boolean ? "1" : "0");
                break;
            case cellError:
                putError(*cell, result.error);
                break;
            default: {
                std::wstring scratch;
                const std::wstring text = toWide(std::string_view(result.text), true);
                cell->setType(CellType::str);
                cell->setText(bindery::toUtf8(escapeSharedText(text, scratch)));
            }
        }
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::arrayArea(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        const Cell* const cell = findCell(row, col);
        const auto formula = cell ? cell->formula() : ooxml::CellFormula<Formula>();
        if (!formula || formula->t() != "array" || !formula->isset_ref()) return false;
        const auto area = readCellRange(std::string_view(formula->ref()));
        if (!area) return false;
        *rowFirst = static_cast<int>(area->rowFirst);
        *rowLast = static_cast<int>(area->rowLast);
        *colFirst = static_cast<int>(area->colFirst);
        *colLast = static_cast<int>(area->colLast);
        return true;
    });
}

// The text of a cell that shares one is made by moving cells alone; the first cell's text tells whole columns and rows
// as well.
template <class CharT, class Tag>
std::optional<ReferenceText> XMLSheetImplT<CharT, Tag>::referenceText(int row, int col) {
    std::optional<ReferenceText> found;
    guard(false, [&] {
        const Cell* const cell = findCell(row, col);
        const auto formula = cell ? cell->formula() : ooxml::CellFormula<Formula>();
        if (!formula || formula->t() != "shared" || formula->hasText()) return true;
        CellPlace at{};
        const Cell* const master = findMaster(formula->si(), at);
        if (!master || !master->hasFormula()) return true;
        found = {toNarrow(master->formula()->text(), true), static_cast<int>(at.row), static_cast<int>(at.col)};
        return true;
    });
    return found;
}

}  // namespace vellum
