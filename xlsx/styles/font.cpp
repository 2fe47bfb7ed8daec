#include "xlsx/styles/font.h"

#include "engine/api/enums.h"
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/styles/colors.h"
#include "xlsx/styles/style_messages.h"
#include "xlsx/styles/styles.h"

namespace vellum {
namespace {

struct CodedText {
    int code;
    const char* text;
};

constexpr CodedText scripts[] = {{0, "baseline"}, {1, "superscript"}, {2, "subscript"}};
constexpr CodedText underlines[] = {
    {0, "none"}, {1, "single"}, {2, "double"}, {33, "singleAccounting"}, {34, "doubleAccounting"}};

template <std::size_t size>
int codeOf(const CodedText (&table)[size], const std::string& text) {
    for (const CodedText& row : table) {
        if (text == row.text) return row.code;
    }
    return 0;
}

template <std::size_t size>
const char* textOf(const CodedText (&table)[size], int code) {
    for (const CodedText& row : table) {
        if (code == row.code) return row.text;
    }
    return nullptr;
}

}  // namespace

template <class CharT, class Tag>
XMLFontImplT<CharT, Tag>::XMLFontImplT(Styles<CharT, Tag>* styles, c_CT_Font& font) : _font(&font), _styles(styles) {
    if (!styles) throw vlerror(xlsx::msg::fontWithoutStyles);
}

template <class CharT, class Tag>
XMLFontImplT<CharT, Tag>::XMLFontImplT(Styles<CharT, Tag>* styles)
    : _owned(std::make_unique<c_CT_Font>()), _font(_owned.get()), _styles(styles) {
    if (!styles) throw vlerror(xlsx::msg::fontWithoutStyles);
}

template <class CharT, class Tag>
XMLFontImplT<CharT, Tag>::~XMLFontImplT() = default;

template <class CharT, class Tag>
int XMLFontImplT<CharT, Tag>::size() {
    if (const auto* const sz = std::as_const(*_font).find_sz()) return wholePoints(sz->val());
    return _styles->defaultFontSize();
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setSize(int points) {
    _styles->change([&] { _font->sz().val(points); });
}

// The three flags are elements that are there or not, each with a value that is true when absent.

template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::isItalic() {
    const auto* const i = std::as_const(*_font).find_i();
    return i && i->val();
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setItalic(bool italic) {
    _styles->change([&] {
        _font->unset_i();
        if (italic) _font->i();
    });
}

template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::isStrikeOut() {
    const auto* const strike = std::as_const(*_font).find_strike();
    return strike && strike->val();
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setStrikeOut(bool strikeOut) {
    _styles->change([&] {
        _font->unset_strike();
        if (strikeOut) _font->strike();
    });
}

template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::isBold() {
    const auto* const b = std::as_const(*_font).find_b();
    return b && b->val();
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setBold(bool bold) {
    _styles->change([&] {
        _font->unset_b();
        if (bold) _font->b();
    });
}

template <class CharT, class Tag>
int XMLFontImplT<CharT, Tag>::color() {
    const auto* const element = std::as_const(*_font).find_color();
    if (!element) return _styles->usesRgbColors() ? unknownColor : automaticColor;
    return _styles->colorOf(*element);
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setColor(int color) {
    _styles->change([&] {
        if (color == automaticColor && !_styles->usesRgbColors()) {
            _font->unset_color();
        } else if (isColor(color)) {
            writeColor(_font->color(), color, _styles->usesRgbColors());
        }
    });
}

template <class CharT, class Tag>
int XMLFontImplT<CharT, Tag>::script() {
    const auto* const element = std::as_const(*_font).find_vertAlign();
    return element ? codeOf(scripts, element->val()) : 0;
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setScript(int script) {
    _styles->change([&] {
        const char* const text = textOf(scripts, script);
        if (!text) return;
        if (script == 0) {
            _font->unset_vertAlign();
        } else {
            _font->vertAlign().val(text);
        }
    });
}

template <class CharT, class Tag>
int XMLFontImplT<CharT, Tag>::underline() {
    const auto* const element = std::as_const(*_font).find_u();
    return element ? codeOf(underlines, element->val()) : 0;
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setUnderline(int underline) {
    _styles->change([&] {
        const char* const text = textOf(underlines, underline);
        if (!text) return;
        if (underline == 0) {
            _font->unset_u();
        } else {
            _font->u().val(text);
        }
    });
}

template <class CharT, class Tag>
const CharT* XMLFontImplT<CharT, Tag>::name() {
    return guarded<const CharT*>(_styles->lastError(), nullptr, [&] {
        const auto* const element = std::as_const(*_font).find_name();
        const CharT* const text = _name.template give<CharT>(
            element ? std::wstring_view(element->val()) : _styles->defaultFontFace(), _styles->isUtf8());
        if (_name.lostCharacters()) _styles->lastError().set(xlsx::msg::lostCharacters);
        return text;
    });
}

template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::setName(const CharT* name) {
    if (!name) return false;
    return guarded(_styles->lastError(), false, [&] {
        TextHolder text;
        if constexpr (std::is_same_v<CharT, char>) {
            text.setNarrow(name);
        } else {
            text.setWide(name);
        }
        _font->name().val(text.wide(_styles->isUtf8()));
        return true;
    });
}

template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasSize() {
    return _font->isset_sz();
}
template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasItalic() {
    return _font->isset_i();
}
template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasStrikeOut() {
    return _font->isset_strike();
}
template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasColor() {
    return _font->isset_color();
}
template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasBold() {
    return _font->isset_b();
}
template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasScript() {
    return _font->isset_vertAlign();
}
template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasUnderline() {
    return _font->isset_u();
}
template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::hasName() {
    return _font->isset_name();
}

template <class CharT, class Tag>
bool XMLFontImplT<CharT, Tag>::usesRgbColors() {
    return _styles->usesRgbColors();
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::setUsesRgbColors(bool rgb) {
    _styles->setUsesRgbColors(rgb);
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::copyFrom(IFontT<CharT>& other) {
    if (const auto* const same = dynamic_cast<const XMLFontImplT*>(&other); same && same->_styles == _styles) {
        *_font = *same->_font;
        return;
    }
    // Of another book: what it states, colours in this book's terms.
    const typename Styles<CharT, Tag>::TakingOver takingOver(*_styles);
    auto* const known = dynamic_cast<IFontPrivate*>(&other);
    const bool rgbBefore = known && known->usesRgbColors();
    if (known) known->setUsesRgbColors(_styles->usesRgbColors());
    if (!known || known->hasSize()) setSize(other.size());
    if (!known || known->hasName()) setName(other.name());
    setItalic(other.isItalic());
    setStrikeOut(other.isStrikeOut());
    setBold(other.isBold());
    if (!known || known->hasColor()) setColor(other.color());
    setScript(other.script());
    setUnderline(other.underline());
    if (known) known->setUsesRgbColors(rgbBefore);
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::readRun(const c_CT_RPrElt& properties) {
    if (const auto* sz = properties.find_sz()) _font->sz() = *sz;
    if (const auto* strike = properties.find_strike()) _font->strike() = *strike;
    if (const auto* i = properties.find_i()) _font->i() = *i;
    if (const auto* color = properties.find_color()) _font->color() = *color;
    if (const auto* b = properties.find_b()) _font->b() = *b;
    if (const auto* vertAlign = properties.find_vertAlign()) _font->vertAlign() = *vertAlign;
    if (const auto* u = properties.find_u()) _font->u() = *u;
    if (const auto* rFont = properties.find_rFont()) _font->name() = *rFont;
}

template <class CharT, class Tag>
void XMLFontImplT<CharT, Tag>::writeRun(c_CT_RPrElt& properties) const {
    const c_CT_Font& font = *_font;
    if (const auto* sz = font.find_sz()) properties.sz() = *sz;
    if (const auto* strike = font.find_strike(); strike && strike->val()) properties.strike();
    if (const auto* i = font.find_i(); i && i->val()) properties.i();
    if (const auto* color = font.find_color()) properties.color() = *color;
    if (const auto* b = font.find_b(); b && b->val()) properties.b();
    if (const auto* vertAlign = font.find_vertAlign()) properties.vertAlign() = *vertAlign;
    if (const auto* u = font.find_u()) properties.u() = *u;
    if (const auto* name = font.find_name()) properties.rFont() = *name;
}

template class XMLFontImplT<char, excelNormal_tag>;
template class XMLFontImplT<char, excelStrict_tag>;
template class XMLFontImplT<wchar_t, excelNormal_tag>;
template class XMLFontImplT<wchar_t, excelStrict_tag>;

}  // namespace vellum
