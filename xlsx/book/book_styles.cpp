// Formats, fonts and rich strings of the book: forwarded to the styles part.
#include "engine/failure/guarded.h"
#include "engine/failure/vlerror.h"
#include "xlsx/book/book.h"
#include "xlsx/strings/rich_string.h"
#include "xlsx/strings/shared_strings.h"
#include "xlsx/styles/colors.h"
#include "xlsx/styles/font.h"
#include "xlsx/styles/format.h"
#include "xlsx/styles/style_messages.h"
#include "xlsx/styles/styles.h"

namespace vellum {

template <class CharT, class Tag>
IFormatT<CharT>* XMLBookImplT<CharT, Tag>::newFormat(IFormatT<CharT>* source) {
    return guarded<IFormatT<CharT>*>(this->_lastError, nullptr, [&] { return ensureStyles().newFormat(source); });
}

template <class CharT, class Tag>
IFontT<CharT>* XMLBookImplT<CharT, Tag>::newFont(IFontT<CharT>* source) {
    return guarded<IFontT<CharT>*>(this->_lastError, nullptr, [&] { return ensureStyles().newFont(source); });
}

template <class CharT, class Tag>
IRichStringT<CharT>* XMLBookImplT<CharT, Tag>::newRichString() {
    return guarded<IRichStringT<CharT>*>(this->_lastError, nullptr,
                                         [&] { return ensureSharedStrings().newRichString(*this); });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::newCustomNumFormat(const CharT* text) {
    return guarded(this->_lastError, 0, [&] {
        const std::basic_string<CharT> empty;
        const unsigned id = ensureStyles().addCustomNumFormat(widen(text ? text : empty.c_str()));
        if (id == 0) throw vlerror(xlsx::msg::tooManyCustomFormats);
        return static_cast<int>(id);
    });
}

template <class CharT, class Tag>
const CharT* XMLBookImplT<CharT, Tag>::customNumFormatText(int id) {
    return guarded<const CharT*>(this->_lastError, nullptr, [&] {
        const std::wstring* const text =
            id < 0 ? nullptr : ensureStyles().customNumFormatText(static_cast<unsigned>(id));
        if (!text) throw vlerror(xlsx::msg::customFormatNotFound);
        return this->_conversion.template give<CharT>(*text, isUtf8());
    });
}

template <class CharT, class Tag>
IFormatT<CharT>* XMLBookImplT<CharT, Tag>::formatAt(int index) {
    return guarded<IFormatT<CharT>*>(this->_lastError, nullptr, [&] {
        if (index < 0) throw vlerror(xlsx::msg::indexOutOfRange);
        return ensureStyles().formatAt(static_cast<std::size_t>(index));
    });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::formatTotal() {
    return guarded(this->_lastError, 0, [&] { return static_cast<int>(ensureStyles().formatTotal()); });
}

template <class CharT, class Tag>
IFontT<CharT>* XMLBookImplT<CharT, Tag>::fontAt(int index) {
    return guarded<IFontT<CharT>*>(this->_lastError, nullptr, [&] {
        if (index < 0) throw vlerror(xlsx::msg::indexOutOfRange);
        return ensureStyles().fontAt(static_cast<std::size_t>(index));
    });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::fontTotal() {
    return guarded(this->_lastError, 0, [&] { return static_cast<int>(ensureStyles().fontTotal()); });
}

template <class CharT, class Tag>
int XMLBookImplT<CharT, Tag>::packColor(int red, int green, int blue) {
    return guarded(this->_lastError, -1, [&] {
        ensureStyles();
        return red * 65536 + green * 256 + blue;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::unpackColor(int color, int* red, int* green, int* blue) {
    return guarded(this->_lastError, false, [&] {
        ensureStyles();
        const Rgb rgb = unpackRgb(color);
        if (red) *red = rgb[0];
        if (green) *green = rgb[1];
        if (blue) *blue = rgb[2];
        return true;
    });
}

template <class CharT, class Tag>
const CharT* XMLBookImplT<CharT, Tag>::defaultFontName(int* size) {
    return guarded<const CharT*>(this->_lastError, nullptr, [&] {
        Styles<CharT, Tag>& styles = ensureStyles();
        if (styles.fontTotal() == 0) throw vlerror(xlsx::msg::fontsNotFound);
        if (size) *size = styles.defaultFontSize();
        return this->_conversion.template give<CharT>(styles.defaultFontFace(), isUtf8());
    });
}

/// What fitted columns are measured against.
template <class CharT, class Tag>
void XMLBookImplT<CharT, Tag>::readDefaultFontSize() {
    const bool isKnown = _styles && _styles->fontTotal() != 0;
    _defaultFontMetrics.defaultFontSize = isKnown ? _styles->defaultFontSize() : xlsx::FontMetrics().defaultFontSize;
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::setDefaultFontSpec(const CharT* name, int size) {
    return guarded(this->_lastError, false, [&] {
        const std::basic_string<CharT> empty;
        ensureStyles().setDefaultFontSpec(widen(name ? name : empty.c_str()), size);
        readDefaultFontSize();
        return true;
    });
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::usesRgbColors() {
    return _styles && _styles->usesRgbColors();
}

template <class CharT, class Tag>
bool XMLBookImplT<CharT, Tag>::setUsesRgbColors(bool rgb) {
    return guarded(this->_lastError, false, [&] {
        ensureStyles().setUsesRgbColors(rgb);
        return true;
    });
}

}  // namespace vellum
