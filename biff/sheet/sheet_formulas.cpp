// Formula cells of a sheet.
#include <algorithm>
#include <cmath>
#include <functional>

#include "biff/container/messages.h"
#include "biff/sheet/sheet.h"
#include "formula/token_table.h"

namespace vellum {
namespace {

struct ErrorText {
    int code;
    const wchar_t* text;
};

constexpr ErrorText errorTexts[] = {
    {errorNull, L"#NULL!"}, {errorDivisionByZero, L"#DIV/0!"}, {errorValue, L"#VALUE!"},     {errorReference, L"#REF!"},
    {errorName, L"#NAME!"}, {errorNumber, L"#NUM!"},           {errorNotAvailable, L"#NA!"}, {errorNone, L"#NOERROR!"},
};

const wchar_t* errorText(int code) {
    for (const auto& entry : errorTexts) {
        if (entry.code == code) return entry.text;
    }
    return L"";
}

}  // namespace

// The result of a formula as text. One of a shared block that has no text of its own shows that of the
// block's first cell.
template <class CharT>
const CharT* SheetImplT<CharT>::formulaText(const FormulaCell& cell) {
    switch (cell.value.kind()) {
        case cellNumber:
            return numberText(cell.value.number());
        case cellBoolean:
            return give(cell.value.boolean() ? L"TRUE" : L"FALSE");
        case cellError:
            return give(errorText(cell.value.error()));
        default:
            break;
    }
    if (cell.hasText) return give(cell.text.view());
    const FormulaCell* const first = anchorOf(cell);
    if (first != nullptr && first->hasText && first->tail != nullptr && first->tail->shared) {
        return give(first->text.view());
    }
    return give(L"");
}

// A cell whose tokens are a reference to shared ones has the text of those, counted from itself. Text in R1C1 notation
// then counts from no cell of the sheet.
template <class CharT>
const std::wstring& SheetImplT<CharT>::expressionText(const FormulaCell& cell) {
    const auto text = [&](std::span<const std::byte> expression, formula::LocationBase base,
                          formula::TextOrigin origin) {
        return std::cref(
            made(_formulaDesk)
                .text.formulaToText(formula::tokensOf(expression), _book.formulas(), cell.generation, base, origin));
    };
    const FormulaCell* const first = anchorOf(cell);
    if (first != nullptr && first->tail != nullptr && first->tail->shared) {
        return text(first->tail->shared->expression, {.row = cell.row, .col = cell.col}, {});
    }
    return text(cell.expressionBytes(), {}, {.row = cell.row, .col = cell.col});
}

template <class CharT>
const FormulaCell* SheetImplT<CharT>::anchorOf(const FormulaCell& cell) const {
    const auto named = cell.anchor();
    if (!named || named->col >= SheetIndex::colLimit) return nullptr;
    const auto at = parts().sharedTokens.resolve(*named);
    return cellAs<FormulaCell>(parts().cells.at(at.row, at.col));
}

template <class CharT>
const CharT* SheetImplT<CharT>::readFormula(int row, int col, Format** format) {
    return guard<const CharT*>(nullptr, [&]() -> const CharT* {
        const CellSlot slot = slotAt(place(row, col));
        const auto* cell = cellAs<FormulaCell>(slot);
        if (cell == nullptr) throw vlerror(biff::msg::notFormula);
        giveFormat(slot, format);
        return give(expressionText(*cell));
    });
}

template <class CharT>
FormulaCell SheetImplT<CharT>::compiled(CellPlace at, const CharT* text, const Format* format) {
    FormulaCell cell;
    cell.row = at.row;
    cell.col = at.col;
    cell.ixfe = ixfeFor(at, format);
    cell.grbit = FormulaCell::alwaysCalc;
    const auto rgce = made(_formulaDesk)
                          .tokens.tokensOfText(_book.widen(text), _book.formulas(), _book.indexOfSheet(*this),
                                               {.row = at.row, .col = at.col});
    cell.expressionSize = static_cast<std::uint32_t>(2 + rgce.size());
    cell.expression = _book.pool().allocateBytes(cell.expressionSize);
    storeLe(cell.expression, static_cast<std::uint16_t>(rgce.size()));
    std::ranges::copy(rgce, cell.expression + 2);
    const bool isError = rgce.size() >= 2 && rgce[0] == std::byte{formula::ptg::err};
    cell.value = isError ? CachedValue::error(std::to_integer<int>(rgce[1])) : CachedValue::empty();
    return cell;
}

template <class CharT>
bool SheetImplT<CharT>::writeFormula(int row, int col, const CharT* text, Format* format) {
    return guard(false, [&] {
        putFormula(compiled(place(row, col), text, format));
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeFormulaNumber(int row, int col, const CharT* text, double value, Format* format) {
    return guard(false, [&] {
        FormulaCell cell = compiled(place(row, col), text, format);
        cell.value = std::isfinite(value) ? CachedValue::number(value) : CachedValue::error(errorNumber);
        putFormula(std::move(cell));
        return true;
    });
}

// The value is looked at first: a text that is too long leaves the references of the formula out of the book.
template <class CharT>
bool SheetImplT<CharT>::writeFormulaText(int row, int col, const CharT* text, const CharT* value, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        const std::size_t length = _book.widen(value).size();
        if (length > maxCellText) throw vlerror(biff::msg::stringTooLong);
        FormulaCell cell = compiled(at, text, format);
        cell.hasText = length > 0;
        cell.value = cell.hasText ? CachedValue::text() : CachedValue::empty();
        if (cell.hasText) cell.text = XLUnicodeString::twoByte(_book.widenToPool(value), length);
        putFormula(std::move(cell));
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeFormulaBoolean(int row, int col, const CharT* text, bool value, Format* format) {
    return guard(false, [&] {
        FormulaCell cell = compiled(place(row, col), text, format);
        cell.value = CachedValue::boolean(value);
        putFormula(std::move(cell));
        return true;
    });
}

template <class CharT>
void SheetImplT<CharT>::handOnShared(CellPlace at) {
    const auto* const old = cellAs<FormulaCell>(slotAt(at));
    if (old != nullptr && old->hasSharedTokens()) edit().sharedTokens.handOn(edit().cells, {at.row, at.col});
}

}  // namespace vellum
