#include "biff/styles/format.h"

#include "biff/book/book.h"
#include "biff/records/book_messages.h"
#include "engine/api/enums.h"
#include "engine/failure/guarded.h"

namespace vellum {

template <class CharT>
IFontT<CharT>* FormatImplT<CharT>::font() {
    return guarded<IFontT<CharT>*>(_book->lastError(), nullptr,
                                   [&]() -> IFontT<CharT>* { return &_book->fontByWireIndex(_xf.ifnt); });
}

template <class CharT>
bool FormatImplT<CharT>::setFont(IFontT<CharT>* font) {
    return guarded(_book->lastError(), false, [&] {
        const int position = _book->fontPosition(font);
        if (position < 0) throw vlerror(biff::msg::fontNotFound);
        _xf.setFont(fontWireIndex(static_cast<std::size_t>(position)));
        return true;
    });
}

template <class CharT>
bool FormatImplT<CharT>::setRotation(int rotation) {
    return guarded(_book->lastError(), false, [&] {
        constexpr int stacked = 255;
        if ((rotation < 0 || rotation > 180) && rotation != stacked) throw vlerror(biff::msg::badRotation);
        _xf.setAlignment(Xf::rotation, rotation);
        return true;
    });
}

template <class CharT>
void FormatImplT<CharT>::setBorderAll(int style) {
    setBorderLeft(style);
    setBorderRight(style);
    setBorderTop(style);
    setBorderBottom(style);
}

template <class CharT>
void FormatImplT<CharT>::setBorderColorAll(int color) {
    setBorderLeftColor(color);
    setBorderRightColor(color);
    setBorderTopColor(color);
    setBorderBottomColor(color);
}

template <class CharT>
bool FormatImplT<CharT>::usesRgbColors() {
    return _book->usesRgbColors();
}

template <class CharT>
void FormatImplT<CharT>::setUsesRgbColors(bool rgb) {
    _book->setUsesRgbColors(rgb);
}

template <class CharT>
const CharT* FormatImplT<CharT>::customFormatText() {
    if (_xf.ifmt < firstCustomFormat) return nullptr;
    return guarded<const CharT*>(_book->lastError(), nullptr, [&]() -> const CharT* {
        const NumFormat* const found = _book->globals().findNumFormat(_xf.ifmt);
        if (found == nullptr) throw vlerror(biff::msg::customFormatNotFound);
        if (!_text) _text = std::make_unique<TextHolder>();
        return _text->give<CharT>(found->text.view(), _book->utf8());
    });
}

// The remaining operations read and write one field each.

template <class CharT>
int FormatImplT<CharT>::numFormat() {
    return _xf.ifmt;
}

template <class CharT>
void FormatImplT<CharT>::setNumFormat(int id) {
    _book->lastError().clear();
    _xf.setNumFormat(id);
}

template <class CharT>
int FormatImplT<CharT>::alignHorizontal() {
    return Xf::horizontal.get(_xf.alignment);
}

template <class CharT>
void FormatImplT<CharT>::setAlignHorizontal(int align) {
    _book->lastError().clear();
    _xf.setAlignment(Xf::horizontal, align);
}

template <class CharT>
int FormatImplT<CharT>::alignVertical() {
    return Xf::vertical.get(_xf.alignment);
}

template <class CharT>
void FormatImplT<CharT>::setAlignVertical(int align) {
    _book->lastError().clear();
    _xf.setAlignment(Xf::vertical, align);
}

template <class CharT>
bool FormatImplT<CharT>::wrapsText() {
    return Xf::wrap.get(_xf.alignment) != 0;
}

template <class CharT>
void FormatImplT<CharT>::setWrapsText(bool wrap) {
    _book->lastError().clear();
    _xf.setAlignment(Xf::wrap, wrap);
}

template <class CharT>
int FormatImplT<CharT>::rotation() {
    return Xf::rotation.get(_xf.alignment);
}

template <class CharT>
int FormatImplT<CharT>::indent() {
    return Xf::indent.get(_xf.alignment);
}

template <class CharT>
void FormatImplT<CharT>::setIndent(int indent) {
    _book->lastError().clear();
    _xf.setAlignment(Xf::indent, indent);
}

template <class CharT>
bool FormatImplT<CharT>::shrinksToFit() {
    return Xf::shrink.get(_xf.alignment) != 0;
}

template <class CharT>
void FormatImplT<CharT>::setShrinksToFit(bool shrink) {
    _book->lastError().clear();
    _xf.setAlignment(Xf::shrink, shrink);
}

template <class CharT>
int FormatImplT<CharT>::borderLeft() {
    return Xf::left.get(_xf.border);
}

template <class CharT>
void FormatImplT<CharT>::setBorderLeft(int style) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::border, Xf::left, style);
}

template <class CharT>
int FormatImplT<CharT>::borderRight() {
    return Xf::right.get(_xf.border);
}

template <class CharT>
void FormatImplT<CharT>::setBorderRight(int style) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::border, Xf::right, style);
}

template <class CharT>
int FormatImplT<CharT>::borderTop() {
    return Xf::top.get(_xf.border);
}

template <class CharT>
void FormatImplT<CharT>::setBorderTop(int style) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::border, Xf::top, style);
}

template <class CharT>
int FormatImplT<CharT>::borderBottom() {
    return Xf::bottom.get(_xf.border);
}

template <class CharT>
void FormatImplT<CharT>::setBorderBottom(int style) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::border, Xf::bottom, style);
}

template <class CharT>
int FormatImplT<CharT>::borderLeftColor() {
    return Xf::leftColor.get(_xf.border);
}

template <class CharT>
void FormatImplT<CharT>::setBorderLeftColor(int color) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::border, Xf::leftColor, color);
}

template <class CharT>
int FormatImplT<CharT>::borderRightColor() {
    return Xf::rightColor.get(_xf.border);
}

template <class CharT>
void FormatImplT<CharT>::setBorderRightColor(int color) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::border, Xf::rightColor, color);
}

template <class CharT>
int FormatImplT<CharT>::borderTopColor() {
    return Xf::topColor.get(_xf.colors);
}

template <class CharT>
void FormatImplT<CharT>::setBorderTopColor(int color) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::colors, Xf::topColor, color);
}

template <class CharT>
int FormatImplT<CharT>::borderBottomColor() {
    return Xf::bottomColor.get(_xf.colors);
}

template <class CharT>
void FormatImplT<CharT>::setBorderBottomColor(int color) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::colors, Xf::bottomColor, color);
}

template <class CharT>
int FormatImplT<CharT>::borderDiagonal() {
    return Xf::diagonals.get(_xf.border);
}

template <class CharT>
void FormatImplT<CharT>::setBorderDiagonal(int diagonals) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::border, Xf::diagonals, diagonals);
}

template <class CharT>
int FormatImplT<CharT>::borderDiagonalStyle() {
    return Xf::diagonalStyle.get(_xf.colors);
}

template <class CharT>
void FormatImplT<CharT>::setBorderDiagonalStyle(int style) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::colors, Xf::diagonalStyle, style);
}

template <class CharT>
int FormatImplT<CharT>::borderDiagonalColor() {
    return Xf::diagonalColor.get(_xf.colors);
}

template <class CharT>
void FormatImplT<CharT>::setBorderDiagonalColor(int color) {
    _book->lastError().clear();
    _xf.setBorder(&Xf::colors, Xf::diagonalColor, color);
}

template <class CharT>
int FormatImplT<CharT>::fillPattern() {
    return Xf::fillPattern.get(_xf.colors);
}

template <class CharT>
void FormatImplT<CharT>::setFillPattern(int pattern) {
    _book->lastError().clear();
    _xf.setFillPattern(pattern);
}

template <class CharT>
int FormatImplT<CharT>::patternForeColor() {
    return Xf::foreColor.get(_xf.pattern);
}

template <class CharT>
void FormatImplT<CharT>::setPatternForeColor(int color) {
    _book->lastError().clear();
    _xf.setPatternColor(Xf::foreColor, color);
}

template <class CharT>
int FormatImplT<CharT>::patternBackColor() {
    return Xf::backColor.get(_xf.pattern);
}

template <class CharT>
void FormatImplT<CharT>::setPatternBackColor(int color) {
    _book->lastError().clear();
    _xf.setPatternColor(Xf::backColor, color);
}

template <class CharT>
bool FormatImplT<CharT>::isLocked() {
    return Xf::locked.get(_xf.protection) != 0;
}

template <class CharT>
void FormatImplT<CharT>::setLocked(bool locked) {
    _book->lastError().clear();
    _xf.setProtection(Xf::locked, locked);
}

template <class CharT>
bool FormatImplT<CharT>::isFormulaHidden() {
    return Xf::formulaHidden.get(_xf.protection) != 0;
}

template <class CharT>
void FormatImplT<CharT>::setFormulaHidden(bool hidden) {
    _book->lastError().clear();
    _xf.setProtection(Xf::formulaHidden, hidden);
}

template class FormatImplT<char>;
template class FormatImplT<wchar_t>;

}  // namespace vellum
