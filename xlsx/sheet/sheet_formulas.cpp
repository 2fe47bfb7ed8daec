// Formula cells.
#include <algorithm>

#include "bindery/values/value_spec.h"
#include "engine/facts/r1c1.h"
#include "engine/failure/vlerror.h"
#include "xlsx/features/future_functions.h"
#include "xlsx/sheet/sheet.h"
#include "xlsx/sheet/sheet_messages.h"
#include "xlsx/strings/shared_strings.h"

namespace vellum {

template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::readFormula(int row, int col, Format** format) {
    return guard<const CharT*>(nullptr, [&] {
        const Cell& cell = requireCell(row, col);
        giveFormat(cell, format);
        if (!cell.hasFormula()) throw vlerror(xlsx::msg::noFormula);
        const CellPlace at = place(row, col);
        std::wstring text = formulaText(at, cell, at);
        if (book().isR1C1()) text = a1ToR1C1(text, row, col);
        if (book().listSeparator() == L';') std::replace(text.begin(), text.end(), L',', L';');
        xlsx::unprefixFunctions(text);
        return give(text);
    });
}

/// A formula's text begins behind the "="; in braces it is an array formula, which covers its own cell.
template <class CharT, class Tag>
auto XMLSheetImplT<CharT, Tag>::putFormula(CellPlace at, const CharT* text, Format* format) -> Cell& {
    std::wstring formula(widened(text));
    if (formula.starts_with(L'=')) formula.erase(0, 1);
    xlsx::prefixFunctions(formula);
    std::replace(formula.begin(), formula.end(), L';', L',');
    if (book().isR1C1()) r1c1ToA1(formula, static_cast<int>(at.row), static_cast<int>(at.col), false);
    numberAll();
    if (Cell* const old = findCell(at); old && isMaster(*old)) removeShared(at, *old);
    const bool isArray = formula.size() >= 2 && formula.front() == L'{' && formula.back() == L'}';
    if (isArray) {
        formula = formula.substr(1, formula.size() - 2);
        if (formula.starts_with(L'=')) formula.erase(0, 1);
    }
    Cell& cell = ensureCell(at, format, true);
    if (formula.empty()) {
        _areasDirty = true;
        return cell;
    }
    if (isArray) {
        Formula& element = cell.makeFormula();
        element.t("array");
        element.ref(cellAddressText(at.row, at.col));
        element.text(std::move(formula));
    } else {
        cell.setFormula(formula);
    }
    fill(at);
    return cell;
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeFormula(int row, int col, const CharT* text, Format* format) {
    return guard(false, [&] {
        putFormula(place(row, col), text, format);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeFormulaNumber(int row, int col, const CharT* text, double value, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        putNumber(putFormula(at, text, format), value);
        fill(at);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeFormulaText(int row, int col, const CharT* text, const CharT* value,
                                                 Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        if (!value) throw vlerror(xlsx::msg::textNull);
        Cell& cell = putFormula(at, text, format);
        cell.setType(CellType::str);
        std::wstring scratch;
        cell.setText(bindery::toUtf8(escapeSharedText(widened(value), scratch)));
        fill(at);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeFormulaBoolean(int row, int col, const CharT* text, bool value, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        Cell& cell = putFormula(at, text, format);
        cell.setType(CellType::b);
        cell.setText(value ? "1" : "0");
        fill(at);
        return true;
    });
}

}  // namespace vellum
