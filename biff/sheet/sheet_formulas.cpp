// Formula cells of a sheet.
#include "biff/container/messages.h"
#include "biff/sheet/sheet.h"

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
    if (const auto named = cell.anchor(); named && named->col < SheetIndex::colLimit) {
        const auto anchor = _parts.sharedTokens.resolve(*named);
        const auto* first = cellAs<FormulaCell>(_parts.cells.at(anchor.row, anchor.col));
        if (first != nullptr && first->hasText && first->tail != nullptr && first->tail->shared) {
            return give(first->text.view());
        }
    }
    return give(L"");
}

template <class CharT>
const CharT* SheetImplT<CharT>::readFormula(int row, int col, Format** format) {
    return guard<const CharT*>(nullptr, [&]() -> const CharT* {
        const CellSlot slot = slotAt(place(row, col));
        if (cellAs<FormulaCell>(slot) == nullptr) throw vlerror(biff::msg::notFormula);
        giveFormat(slot, format);
        throw vlerror(biff::msg::notAvailable);
    });
}

template <class CharT>
void SheetImplT<CharT>::handOnShared(CellPlace at) {
    const auto* const old = cellAs<FormulaCell>(slotAt(at));
    if (old != nullptr && old->hasSharedTokens()) _parts.sharedTokens.handOn(_parts.cells, {at.row, at.col});
}

template class SheetImplT<char>;
template class SheetImplT<wchar_t>;

}  // namespace vellum
