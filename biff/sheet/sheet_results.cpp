// The cached results of formulas.
#include <cmath>

#include "biff/sheet/sheet.h"
#include "engine/text/conversions.h"
#include "formula/printing/formula_to_text.h"
#include "formula/printing/reference_words.h"

namespace vellum {
namespace {

CachedValue cachedValue(const FormulaResult& result, bool hasText) {
    switch (result.kind) {
        case cellNumber:
            return std::isfinite(result.number) ? CachedValue::number(result.number) : CachedValue::error(errorNumber);
        case cellBoolean:
            return CachedValue::boolean(result.boolean);
        case cellError:
            return CachedValue::error(result.error);
        default:
            return hasText ? CachedValue::text() : CachedValue::empty();
    }
}

}  // namespace

template <class CharT>
bool SheetImplT<CharT>::isCalculated(int row, int col) {
    return guard(false, [&] {
        const auto* const cell = cellAs<FormulaCell>(slotAt(place(row, col)));
        if (cell == nullptr) return false;
        return cell->value.kind() != cellEmpty || (cell->grbit & FormulaCell::alwaysCalc) == 0;
    });
}

template <class CharT>
bool SheetImplT<CharT>::setResult(int row, int col, const FormulaResult& result) {
    return guard(false, [&] {
        const CellSlot slot = slotAt(place(row, col));
        if (cellAs<FormulaCell>(slot) == nullptr) throw vlerror(biff::msg::notFormula);
        const std::wstring text = toWide(std::string_view(result.text), true);
        if (text.size() > maxCellText) throw vlerror(biff::msg::stringTooLong);
        const bool hasText = result.kind == cellString && !text.empty();
        const XLUnicodeString pooled =
            hasText ? XLUnicodeString::twoByte(_book.pool().copy(text), text.size()) : XLUnicodeString();
        FormulaCell& cell = edit().cells.template get<FormulaCell>(slot);
        cell.value = cachedValue(result, hasText);
        cell.hasText = hasText;
        if (hasText) cell.text = pooled;
        cell.grbit &= static_cast<std::uint16_t>(~FormulaCell::alwaysCalc);
        if (cell.tail != nullptr) cell.tail->continues.clear();
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::arrayArea(int row, int col, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    return guard(false, [&] {
        const auto* const cell = cellAs<FormulaCell>(slotAt(place(row, col)));
        if (cell == nullptr || cell->tail == nullptr || cell->tail->followingId != record_id::Array) return false;
        Cursor in(cell->tail->following);
        constexpr std::size_t areaSize = 6;
        if (in.left() < areaSize) return false;
        *rowFirst = in.get<std::uint16_t>();
        *rowLast = in.get<std::uint16_t>();
        *colFirst = in.get<std::uint8_t>();
        *colLast = in.get<std::uint8_t>();
        return true;
    });
}

template <class CharT>
std::optional<ReferenceText> SheetImplT<CharT>::referenceText(int row, int col) {
    std::optional<ReferenceText> found;
    guard(false, [&] {
        const auto* const cell = cellAs<FormulaCell>(slotAt(place(row, col)));
        if (cell == nullptr) return true;
        std::span<const std::byte> expression = cell->expressionBytes();
        formula::LocationBase base;
        if (const FormulaCell* const first = anchorOf(*cell); first != nullptr && first->tail != nullptr) {
            constexpr std::size_t arrayHead = 12;  // the area, flags, and a field of no use
            if (first->tail->shared) {
                expression = first->tail->shared->expression;
                base = {.row = cell->row, .col = cell->col};
            } else if (first->tail->followingId == record_id::Array && first->tail->following.size() > arrayHead) {
                expression = std::span(first->tail->following).subspan(arrayHead);
            } else {
                found = {"?", row, col};
                return true;
            }
        }
        const std::wstring words =
            formula::referenceWords(formula::tokensOf(expression), _book.formulas(), cell->generation, base);
        found = {toNarrow(words, true), row, col};
        return true;
    });
    return found;
}

}  // namespace vellum
