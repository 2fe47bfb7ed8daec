// Formats, fonts, number formats and rich strings.
#include <algorithm>

#include "biff/book/book.h"
#include "biff/records/book_messages.h"
#include "engine/api/enums.h"
#include "engine/failure/guarded.h"
#include "engine/text/conversions.h"

namespace vellum {

namespace {
constexpr std::size_t maxFormats = 65490;
constexpr std::size_t maxFonts = 510;
}  // namespace

// Number formats.

template <class CharT>
int BookImplT<CharT>::newCustomNumFormat(const CharT* text) {
    return guarded(this->_lastError, 0, [&] { return int{_globals.numFormatId(widen(text), _pool)}; });
}

template <class CharT>
const CharT* BookImplT<CharT>::customNumFormatText(int id) {
    return guarded<const CharT*>(this->_lastError, nullptr, [&] {
        const NumFormat* const found =
            id < 0 || id > 0xFFFF ? nullptr : _globals.findNumFormat(static_cast<std::uint16_t>(id));
        if (found == nullptr) throw vlerror(biff::msg::customFormatNotFound);
        return this->_conversion.template give<CharT>(found->text.view(), utf8());
    });
}

template <class CharT>
const wchar_t* BookImplT<CharT>::numFormatText(std::uint16_t ifmt) const {
    const NumFormat* const found = _globals.findNumFormat(ifmt);
    return found == nullptr ? nullptr : found->text.text;
}

// Fonts.

template <class CharT>
FontImplT<CharT>& BookImplT<CharT>::fontByWireIndex(std::uint16_t wireIndex) {
    const int position = fontListPosition(wireIndex);
    if (position < 0 || static_cast<std::size_t>(position) >= _fonts.size()) throw vlerror(biff::msg::incorrectFont);
    return _fonts[static_cast<std::size_t>(position)];
}

template <class CharT>
int BookImplT<CharT>::fontPosition(const IFontT<CharT>* font) const {
    const auto found = std::ranges::find_if(_fonts, [&](const auto& own) { return &own == font; });
    return found == _fonts.end() ? -1 : static_cast<int>(found - _fonts.begin());
}

template <class CharT>
FontImplT<CharT>* BookImplT<CharT>::fontAtPosition(std::size_t position) const {
    return position < _fonts.size() ? const_cast<FontImplT<CharT>*>(&_fonts[position]) : nullptr;
}

template <class CharT>
FontImplT<CharT>& BookImplT<CharT>::addFont(IFontT<CharT>* source) {
    if (_fonts.size() >= maxFonts) throw vlerror(biff::msg::tooManyFonts);
    FontImplT<CharT> font(*this, Font());
    if (source != nullptr) {
        // A font of the other engine may state some of its properties only.
        const auto states = [&, given = dynamic_cast<IFontPrivate*>(source)](bool (IFontPrivate::*has)()) {
            return given == nullptr || (given->*has)();
        };
        if (states(&IFontPrivate::hasSize)) font.setSize(source->size());
        if (states(&IFontPrivate::hasItalic)) font.setItalic(source->isItalic());
        if (states(&IFontPrivate::hasStrikeOut)) font.setStrikeOut(source->isStrikeOut());
        if (states(&IFontPrivate::hasColor)) font.setColor(source->color());
        if (states(&IFontPrivate::hasBold)) font.setBold(source->isBold());
        if (states(&IFontPrivate::hasScript)) font.setScript(source->script());
        if (states(&IFontPrivate::hasUnderline)) font.setUnderline(source->underline());
        if (states(&IFontPrivate::hasName)) font.assignName(source->name());
        // What the interface does not show, within this engine.
        if (const auto* const same = dynamic_cast<FontImplT<CharT>*>(source)) {
            font.record().grbit = same->record().grbit;
            font.record().bls = same->record().bls;
            font.record().bFamily = same->record().bFamily;
            font.record().bCharSet = same->record().bCharSet;
            font.record().dyHeight = same->record().dyHeight;
        }
    }
    return _fonts.emplace_back(*this, font.record());
}

namespace {

bool sameFont(const Font& a, const Font& b) {
    return a.dyHeight == b.dyHeight && a.grbit == b.grbit && a.icv == b.icv && a.bls == b.bls && a.sss == b.sss &&
           a.uls == b.uls && a.bFamily == b.bFamily && a.bCharSet == b.bCharSet &&
           a.fontName.view() == b.fontName.view();
}

}  // namespace

// The font of this book that looks like one of another, made only when there is none yet.
template <class CharT>
FontImplT<CharT>& BookImplT<CharT>::adoptFont(IFontT<CharT>& font) {
    const int own = fontPosition(&font);
    if (own >= 0) return _fonts[static_cast<std::size_t>(own)];
    if (const auto* const other = dynamic_cast<FontImplT<CharT>*>(&font)) {
        for (auto& known : _fonts) {
            if (sameFont(known.record(), other->record())) return known;
        }
    }
    return addFont(&font);
}

template <class CharT>
IFontT<CharT>* BookImplT<CharT>::newFont(IFontT<CharT>* source) {
    return guarded<IFontT<CharT>*>(this->_lastError, nullptr, [&] { return &addFont(source); });
}

template <class CharT>
IFontT<CharT>* BookImplT<CharT>::fontAt(int index) {
    return guarded<IFontT<CharT>*>(this->_lastError, nullptr, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= _fonts.size()) throw vlerror(biff::msg::indexOutOfRange);
        return &_fonts[static_cast<std::size_t>(index)];
    });
}

template <class CharT>
int BookImplT<CharT>::fontTotal() {
    return static_cast<int>(_fonts.size());
}

template <class CharT>
const CharT* BookImplT<CharT>::defaultFontName(int* size) {
    return guarded<const CharT*>(this->_lastError, nullptr, [&] {
        if (_fonts.empty()) throw vlerror(biff::msg::noFonts);
        if (size != nullptr) *size = _fonts.front().size();
        return _fonts.front().nameText();
    });
}

template <class CharT>
bool BookImplT<CharT>::setDefaultFontSpec(const CharT* name, int size) {
    return guarded(this->_lastError, false, [&] {
        if (_fonts.empty()) throw vlerror(biff::msg::noFonts);
        _fonts.front().assignName(name);
        _fonts.front().setSize(size);
        return true;
    });
}

// Cell formats.

template <class CharT>
FormatImplT<CharT>& BookImplT<CharT>::addFormat(IFormatT<CharT>* source) {
    if (_formats.size() >= maxFormats) throw vlerror(biff::msg::tooManyFormats);
    Xf xf;
    xf.protection = 1;  // a cell format, locked
    auto& format = _formats.emplace_back(*this, static_cast<std::uint16_t>(_formats.size()), xf);
    if (source != nullptr) copyFormat(*source, format);
    return format;
}

template <class CharT>
void BookImplT<CharT>::copyFormat(IFormatT<CharT>& from, FormatImplT<CharT>& to) {
    const auto* const binary = dynamic_cast<FormatImplT<CharT>*>(&from);
    const bool sameBook = binary != nullptr && &binary->book() == this;

    IFontT<CharT>* const font = from.font();
    if (font != nullptr) to.setFont(sameBook ? font : &adoptFont(*font));
    int ifmt = from.numFormat();
    if (!sameBook && ifmt >= firstCustomFormat) {
        auto* const other = dynamic_cast<IFormatPrivate<CharT>*>(&from);
        const CharT* const text = other == nullptr ? nullptr : other->customFormatText();
        ifmt = text == nullptr ? 0 : int{_globals.numFormatId(widen(text), _pool)};
    }
    to.setNumFormat(ifmt);

    to.setAlignHorizontal(from.alignHorizontal());
    to.setAlignVertical(from.alignVertical());
    to.setWrapsText(from.wrapsText());
    to.setRotation(from.rotation());
    to.setIndent(from.indent());
    to.setShrinksToFit(from.shrinksToFit());

    to.setBorderLeft(from.borderLeft());
    to.setBorderRight(from.borderRight());
    to.setBorderTop(from.borderTop());
    to.setBorderBottom(from.borderBottom());
    to.setBorderLeftColor(from.borderLeftColor());
    to.setBorderRightColor(from.borderRightColor());
    to.setBorderTopColor(from.borderTopColor());
    to.setBorderBottomColor(from.borderBottomColor());
    to.setBorderDiagonal(from.borderDiagonal());
    to.setBorderDiagonalStyle(from.borderDiagonalStyle());
    to.setBorderDiagonalColor(from.borderDiagonalColor());

    to.setFillPattern(from.fillPattern());
    to.setPatternForeColor(from.patternForeColor());
    to.setPatternBackColor(from.patternBackColor());
    to.setLocked(from.isLocked());
    to.setFormulaHidden(from.isFormulaHidden());
    this->_lastError.clear();  // a source without a font has left its text here
}

template <class CharT>
IFormatT<CharT>* BookImplT<CharT>::newFormat(IFormatT<CharT>* source) {
    return guarded<IFormatT<CharT>*>(this->_lastError, nullptr, [&] { return &addFormat(source); });
}

template <class CharT>
IFormatT<CharT>* BookImplT<CharT>::formatAt(int index) {
    return guarded<IFormatT<CharT>*>(this->_lastError, nullptr, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= _formats.size()) throw vlerror(biff::msg::indexOutOfRange);
        return &_formats[static_cast<std::size_t>(index)];
    });
}

template <class CharT>
int BookImplT<CharT>::formatTotal() {
    return static_cast<int>(_formats.size());
}

template <class CharT>
FormatImplT<CharT>* BookImplT<CharT>::xf(std::uint16_t ixfe) const {
    return ixfe < _formats.size() ? const_cast<FormatImplT<CharT>*>(&_formats[ixfe]) : nullptr;
}

template <class CharT>
std::uint16_t BookImplT<CharT>::ixfeOf(const IFormatT<CharT>* format) const {
    if (format == _lastIxfe.format) return _lastIxfe.ixfe;  // neighbours mostly share their format
    const auto* const own = dynamic_cast<const FormatImplT<CharT>*>(format);
    if (own == nullptr || &own->book() != this) throw vlerror(biff::msg::formatNotFound);
    _lastIxfe = {format, own->index()};
    return own->index();
}

template <class CharT>
std::uint16_t BookImplT<CharT>::adoptFormat(const BookContext<CharT>& from, std::uint16_t ixfe) {
    FormatImplT<CharT>* const source = from.xf(ixfe);
    return source == nullptr ? defaultCellXf : addFormat(source).index();
}

// Rich strings.

template <class CharT>
IRichStringT<CharT>* BookImplT<CharT>::newRichString() {
    return guarded<IRichStringT<CharT>*>(this->_lastError, nullptr,
                                         [&] { return richString(_strings.append({.open = true})); });
}

template <class CharT>
IRichStringT<CharT>* BookImplT<CharT>::richString(std::uint32_t isst) {
    static_cast<void>(_strings.at(isst));  // must exist
    return &_richStrings.try_emplace(isst, *this, isst).first->second;
}

template <class CharT>
std::uint32_t BookImplT<CharT>::addRichString(IRichStringT<CharT>* text) {
    if (const auto* const own = dynamic_cast<ExtStringProxy<CharT>*>(text)) {
        if (&own->book() == this) return _strings.addRich(own->index());
        return adoptString(own->book(), own->index());
    }
    // A rich string of the other engine, run by run.
    ExtString copy;
    const int runs = text->runTotal();
    for (int i = 0; i < runs; ++i) {
        IFontT<CharT>* font = nullptr;
        const CharT* const run = text->runAt(i, &font);
        const int position = font == nullptr ? 0 : fontPosition(&adoptFont(*font));
        copy.addRun(widen(run), fontWireIndex(static_cast<std::size_t>(position)), _pool);
    }
    return _strings.addRich(_strings.append(copy));
}

template <class CharT>
std::uint32_t BookImplT<CharT>::adoptString(const BookContext<CharT>& from, std::uint32_t isst) {
    const ExtString& source = from.strings().at(isst);
    if (source.runs().empty() && !source.hasPhonetic()) return _strings.add(source.view());

    auto runs = std::make_unique<std::vector<ExtStringRun>>();
    for (ExtStringRun run : source.runs()) {
        const int position = fontListPosition(run.ifnt);
        FontImplT<CharT>* const font = position < 0 ? nullptr : from.fontAtPosition(static_cast<std::size_t>(position));
        run.ifnt = font == nullptr ? std::uint16_t{0}
                                   : fontWireIndex(static_cast<std::size_t>(fontPosition(&adoptFont(*font))));
        runs->push_back(run);
    }
    auto format = std::make_unique<ExtStringFormat>();
    format->runs = *_pool.keep(std::move(runs));
    if (source.hasPhonetic()) {
        const ExtStringPhonetic& reading = *source.format->phonetic;
        std::byte* const bytes = _pool.allocateBytes(reading.size);
        std::copy_n(reading.bytes, reading.size, bytes);
        format->phonetic = _pool.keep(std::make_unique<ExtStringPhonetic>(ExtStringPhonetic{reading.size, bytes}));
    }
    ExtString copy = source;
    copy.text = _strings.store(source.view());
    copy.format = _pool.keep(std::move(format));
    return _strings.addRich(_strings.append(copy));
}

// Texts of callers.

template <class CharT>
std::wstring_view BookImplT<CharT>::widen(const CharT* text) {
    if (text == nullptr) return {};
    if constexpr (std::is_same_v<CharT, wchar_t>) {
        return text;
    } else {
        if (utf8())
            vellum::widen(text, _widened, true);
        else
            _widened = toWide(text, false);
        return _widened;
    }
}

template <class CharT>
const wchar_t* BookImplT<CharT>::widenToPool(const CharT* text) {
    return text == nullptr ? L"" : toPool(text, _pool, utf8());
}

}  // namespace vellum
