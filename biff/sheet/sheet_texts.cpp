// Text cells of a sheet.
#include <charconv>
#include <string>

#include "biff/container/messages.h"
#include "biff/records/book_messages.h"
#include "biff/sheet/sheet.h"
#include "biff/strings/str_map.h"

namespace vellum {

// As "%.16g" shows it.
template <class CharT>
const CharT* SheetImplT<CharT>::numberText(double value) {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 16).ptr;
    return give(std::wstring(buffer, end));
}

template <class CharT>
const CharT* SheetImplT<CharT>::textOf(CellSlot slot) {
    if (const auto* text = cellAs<LabelSstCell>(slot)) return give(_book.strings().at(text->isst).view());
    if (const auto* label = cellAs<LabelCell>(slot)) return give(label->text.view());
    if (const auto* formula = cellAs<FormulaCell>(slot)) return formulaText(*formula);
    if (const auto value = numberOf(slot)) return numberText(*value);
    return nullptr;
}

template <class CharT>
const CharT* SheetImplT<CharT>::readString(int row, int col, Format** format) {
    return guard<const CharT*>(nullptr, [&] {
        const CellSlot slot = slotAt(place(row, col));
        const CharT* const text = textOf(slot);
        giveFormat(slot, format);
        return text;
    });
}

template <class CharT>
void SheetImplT<CharT>::putText(CellPlace at, std::uint16_t ixfe, std::wstring_view text) {
    StrMap& strings = _book.strings();
    if (const auto* old = cellAs<LabelSstCell>(slotAt(at)); old != nullptr && strings.uses(old->isst) == 1) {
        strings.replace(old->isst, text);
        putString(at, ixfe, old->isst);
        return;
    }
    putString(at, ixfe, strings.add(text));
}

template <class CharT>
void SheetImplT<CharT>::putString(CellPlace at, std::uint16_t ixfe, std::uint32_t isst) {
    if (const auto* old = cellAs<LabelSstCell>(slotAt(at))) _book.strings().dropUse(old->isst);
    putLabelSst(at, ixfe, isst);
    _book.strings().noteUse(isst);
}

template <class CharT>
bool SheetImplT<CharT>::writeString(int row, int col, const CharT* text, Format* format, int) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        const std::wstring_view wide = _book.widen(text);
        if (wide.size() > maxCellText) throw vlerror(biff::msg::stringTooLong);
        putText(at, ixfeFor(at, format), wide);
        return true;
    });
}

template <class CharT>
IRichStringT<CharT>* SheetImplT<CharT>::readRichText(int row, int col, Format** format) {
    return guard<IRichStringT<CharT>*>(nullptr, [&] {
        const CellSlot slot = slotAt(place(row, col));
        const auto* text = cellAs<LabelSstCell>(slot);
        if (text == nullptr) throw vlerror(biff::msg::notString);
        giveFormat(slot, format);
        return _book.richString(text->isst);
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeRichText(int row, int col, IRichStringT<CharT>* text, Format* format) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        if (text == nullptr) throw vlerror(biff::msg::richStringNull);
        const std::uint16_t ixfe = ixfeFor(at, format);
        putString(at, ixfe, _book.addRichString(text));
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::isRichTextCell(int row, int col) {
    return guard(false, [&] {
        const auto* text = cellAs<LabelSstCell>(slotAt(place(row, col)));
        return text != nullptr && !_book.strings().at(text->isst).runs().empty();
    });
}

}  // namespace vellum
