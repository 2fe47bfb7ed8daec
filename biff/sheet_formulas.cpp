// Formula cells of a sheet.
#include "biff/messages.h"
#include "biff/sheet.h"

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
    if (const auto anchor = cell.anchor(); anchor && anchor->col < SheetIndex::colLimit) {
        const auto* first = cellAs<FormulaCell>(_parts.cells.at(anchor->row, anchor->col));
        if (first != nullptr && first->hasText) return give(first->text.view());
    }
    return give(L"");
}

template <class CharT>
const CharT* SheetImplT<CharT>::readFormula(int row, int col, Format** format) {
    return guard<const CharT*>(nullptr, [&]() -> const CharT* {
        const CellSlot slot = slotAt(place(row, col));
        if (cellAs<FormulaCell>(slot) == nullptr) throw vlerror(msg::notFormula);
        giveFormat(slot, format);
        throw vlerror(msg::notAvailable);
    });
}

// The record with the tokens stands behind the formula of the block's first cell, and every other cell
// names that cell. When it goes, the next cell takes the record over and all others name that one.
template <class CharT>
void SheetImplT<CharT>::handOnShared(CellPlace at) {
    const CellSlot slot = slotAt(at);
    if (!slot.occupied() || slot.kind() != SlotKind::formula) return;
    FormulaCell& old = _parts.cells.template get<FormulaCell>(slot);
    if (!old.hasSharedTokens()) return;

    const SheetIndex& index = _parts.cells.index();
    const auto [rowFirst, rowLast] = old.sharedRows();
    FormulaCell* heir = nullptr;
    for (auto row = index.nextRow(rowFirst); row <= rowLast; row = index.nextRow(row + 1)) {
        index.forEachInRow(static_cast<std::uint16_t>(row), [&](std::uint32_t col, CellSlot other) {
            if (other.kind() != SlotKind::formula || (row == at.row && col == at.col)) return;
            FormulaCell& user = _parts.cells.template get<FormulaCell>(other);
            const auto anchor = user.anchor();
            if (!anchor || anchor->row != at.row || anchor->col != at.col) return;
            if (heir == nullptr) heir = &user;
            user.setAnchor({heir->row, heir->col});
        });
    }
    if (heir == nullptr) return;
    FormulaTail& tail = heir->ensureTail();
    tail.shared = std::move(old.tail->shared);
    tail.followingId = old.tail->followingId;
    tail.following = std::move(old.tail->following);
    old.tail->shared.reset();
    old.tail->followingId = 0;
}

template class SheetImplT<char>;
template class SheetImplT<wchar_t>;

}  // namespace vellum
