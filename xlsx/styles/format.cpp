#include "xlsx/styles/format.h"

#include <algorithm>
#include <utility>

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/cells/coded_text.h"
#include "xlsx/styles/font.h"
#include "xlsx/styles/style_messages.h"
#include "xlsx/styles/styles.h"

namespace vellum {
namespace {

// In the order of the codes.
constexpr const char* horizontals[] = {"general", "left",    "center",           "right",
                                       "fill",    "justify", "centerContinuous", "distributed"};
constexpr const char* verticals[] = {"top", "center", "bottom", "justify", "distributed"};
constexpr int bottom = 2;

constexpr int lettersBelowEachOther = 255;
constexpr int largestRotation = 180;

}  // namespace

template <class CharT, class Tag>
XMLFormatImplT<CharT, Tag>::XMLFormatImplT(Styles<CharT, Tag>* styles, c_CT_Xf* xf, std::size_t index)
    : _styles(styles), _xf(xf), _index(index) {
    if (!styles) throw vlerror(xlsx::msg::formatWithoutStyles);
    if (!xf) throw vlerror(xlsx::msg::formatWithoutXf);
}

template <class CharT, class Tag>
IFontT<CharT>* XMLFormatImplT<CharT, Tag>::font() {
    const unsigned id = _xf->fontId();
    return id < _styles->fontTotal() ? _styles->fontAt(id) : nullptr;
}

template <class CharT, class Tag>
bool XMLFormatImplT<CharT, Tag>::setFont(IFontT<CharT>* font) {
    const int index = font ? _styles->fontIndexOf(font) : -1;
    if (index < 0) return false;
    _xf->fontId(static_cast<unsigned>(index));
    _xf->applyFont(true);
    return true;
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::numFormat() {
    return static_cast<int>(_xf->numFmtId());
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setNumFormat(int id) {
    _styles->change([&] {
        if (id < 0) return;
        _xf->numFmtId(static_cast<unsigned>(id));
        _xf->applyNumberFormat(true);
    });
}

/// For the setters: there from now on, and marked as applied.
template <class CharT, class Tag>
auto XMLFormatImplT<CharT, Tag>::alignment() -> typename sml::c_CT_CellAlignment& {
    _xf->applyAlignment(true);
    return _xf->alignment();
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::alignHorizontal() {
    const auto* const alignment = std::as_const(*_xf).find_alignment();
    return alignment ? codeOf(horizontals, alignment->horizontal(), 0) : 0;
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setAlignHorizontal(int align) {
    _styles->change([&] {
        if (const char* const text = textOf(horizontals, align)) alignment().horizontal(text);
    });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::alignVertical() {
    const auto* const alignment = std::as_const(*_xf).find_alignment();
    return alignment ? codeOf(verticals, alignment->vertical(), bottom) : bottom;
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setAlignVertical(int align) {
    _styles->change([&] {
        if (const char* const text = textOf(verticals, align)) alignment().vertical(text);
    });
}

template <class CharT, class Tag>
bool XMLFormatImplT<CharT, Tag>::wrapsText() {
    const auto* const alignment = std::as_const(*_xf).find_alignment();
    return alignment && alignment->wrapText();
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setWrapsText(bool wrap) {
    _styles->change([&] { alignment().wrapText(wrap); });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::rotation() {
    const auto* const alignment = std::as_const(*_xf).find_alignment();
    return alignment ? static_cast<int>(alignment->textRotation()) : 0;
}

template <class CharT, class Tag>
bool XMLFormatImplT<CharT, Tag>::setRotation(int rotation) {
    if ((rotation < 0 || rotation > largestRotation) && rotation != lettersBelowEachOther) return false;
    return guarded(_styles->lastError(), false, [&] {
        alignment().textRotation(static_cast<unsigned>(rotation));
        return true;
    });
}

template <class CharT, class Tag>
int XMLFormatImplT<CharT, Tag>::indent() {
    const auto* const alignment = std::as_const(*_xf).find_alignment();
    return alignment ? static_cast<int>(alignment->indent()) : 0;
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setIndent(int indent) {
    _styles->change([&] {
        if (indent >= 0) alignment().indent(static_cast<unsigned>(indent));
    });
}

template <class CharT, class Tag>
bool XMLFormatImplT<CharT, Tag>::shrinksToFit() {
    const auto* const alignment = std::as_const(*_xf).find_alignment();
    return alignment && alignment->shrinkToFit();
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setShrinksToFit(bool shrink) {
    _styles->change([&] { alignment().shrinkToFit(shrink); });
}

// Cells are locked unless their format says otherwise.
template <class CharT, class Tag>
bool XMLFormatImplT<CharT, Tag>::isLocked() {
    const auto* const protection = std::as_const(*_xf).find_protection();
    return !protection || !protection->isset_locked() || protection->locked();
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setLocked(bool locked) {
    _styles->change([&] {
        _xf->protection().locked(locked);
        _xf->applyProtection(true);
    });
}

template <class CharT, class Tag>
bool XMLFormatImplT<CharT, Tag>::isFormulaHidden() {
    const auto* const protection = std::as_const(*_xf).find_protection();
    return protection && protection->hidden();
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setFormulaHidden(bool hidden) {
    _styles->change([&] {
        _xf->protection().hidden(hidden);
        _xf->applyProtection(true);
    });
}

template <class CharT, class Tag>
bool XMLFormatImplT<CharT, Tag>::usesRgbColors() {
    return _styles->usesRgbColors();
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::setUsesRgbColors(bool rgb) {
    _styles->setUsesRgbColors(rgb);
}

template <class CharT, class Tag>
const CharT* XMLFormatImplT<CharT, Tag>::customFormatText() {
    constexpr unsigned firstCustom = 164;
    const std::wstring* const text =
        _xf->numFmtId() >= firstCustom ? _styles->customNumFormatText(_xf->numFmtId()) : nullptr;
    if (!text) return nullptr;
    try {
        return _text.template give<CharT>(*text, _styles->isUtf8());
    } catch (const std::exception&) {
        return nullptr;
    }
}

template <class CharT, class Tag>
void XMLFormatImplT<CharT, Tag>::copyFrom(IFormatT<CharT>& other) {
    if (auto* const same = dynamic_cast<XMLFormatImplT*>(&other); same && same->_styles == _styles) {
        *_xf = *same->_xf;
        // Both now share the border and the fill: whoever changes them next takes a copy.
        same->_ownBorder = nullptr;
        same->_ownFill = nullptr;
        return;
    }
    // Of another book: each property, with colours in this book's terms.
    const typename Styles<CharT, Tag>::TakingOver takingOver(*_styles);
    auto* const known = dynamic_cast<IFormatPrivate<CharT>*>(&other);
    const bool rgbBefore = known && known->usesRgbColors();
    if (known) known->setUsesRgbColors(_styles->usesRgbColors());
    const CharT* const text = known ? known->customFormatText() : nullptr;
    if (text) {
        TextHolder wide;
        if constexpr (std::is_same_v<CharT, char>) {
            wide.setNarrow(text);
        } else {
            wide.setWide(text);
        }
        setNumFormat(static_cast<int>(_styles->addCustomNumFormat(wide.wide(_styles->isUtf8()))));
    } else {
        setNumFormat(other.numFormat());
    }
    if (IFontT<CharT>* const font = other.font()) setFont(_styles->newFont(font));
    setAlignHorizontal(other.alignHorizontal());
    setAlignVertical(other.alignVertical());
    setWrapsText(other.wrapsText());
    setRotation(other.rotation());
    setIndent(other.indent());
    setShrinksToFit(other.shrinksToFit());
    setBorderLeft(other.borderLeft());
    setBorderRight(other.borderRight());
    setBorderTop(other.borderTop());
    setBorderBottom(other.borderBottom());
    setBorderLeftColor(other.borderLeftColor());
    setBorderRightColor(other.borderRightColor());
    setBorderTopColor(other.borderTopColor());
    setBorderBottomColor(other.borderBottomColor());
    setBorderDiagonal(other.borderDiagonal());
    setBorderDiagonalStyle(other.borderDiagonalStyle());
    setBorderDiagonalColor(other.borderDiagonalColor());
    setFillPattern(other.fillPattern());
    setPatternForeColor(other.patternForeColor());
    setPatternBackColor(other.patternBackColor());
    setLocked(other.isLocked());
    setFormulaHidden(other.isFormulaHidden());
    if (known) known->setUsesRgbColors(rgbBefore);
}

}  // namespace vellum
