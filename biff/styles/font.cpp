#include "biff/styles/font.h"

#include <algorithm>

#include "biff/book/book.h"
#include "biff/container/record_codec.h"
#include "biff/records/book_messages.h"
#include "engine/failure/guarded.h"

namespace vellum {

namespace {
constexpr std::uint16_t regular = 400, bold = 700;
constexpr int twipsPerPoint = 20;
}  // namespace

Font::Font() {
    constexpr std::wstring_view arial = L"Arial";
    fontName.cch = arial.size();
    fontName.flags = wideText;
    fontName.text = arial.data();
}

namespace {
// The fields in front of the name.
constexpr std::uint16_t fixedSize = 14;
}  // namespace

Font Font::read(Xls& in, std::uint16_t size, bool noFlags, StringPool& pool) {
    if (size < fixedSize) throwBadSize(name);
    Cursor body = in.body(size);
    Font font;
    readFields(body, font);
    font.fontName = {};
    if (body.empty()) return font;
    const auto cch = loadLe<std::uint8_t>(body.rest().data());
    if (cch == 0) return font;
    const TextForm form = noFlags ? TextForm::noFlags : TextForm::withFlags;
    const std::size_t flagsSize = noFlags ? 0 : 1;
    if (body.left() < 1 + flagsSize) throw vlerror(biff::msg::fontOverrun);
    const bool wide = !noFlags && (loadLe<std::uint8_t>(&body.rest()[1]) & wideText) != 0;
    if (body.left() < 1 + flagsSize + std::size_t{cch} * (wide ? 2 : 1)) throw vlerror(biff::msg::fontOverrun);
    font.fontName = ShortXLUnicodeString::read(body, pool, form, name);
    return font;
}

void Font::write(Xls& out) const {
    const std::size_t nameSize = fontName.cch == 0 ? 0 : fontName.wireSize();
    Sink& sink = out.out();
    sink.putAll(id, static_cast<std::uint16_t>(fixedSize + nameSize));
    writeFields(sink, *this);
    if (nameSize > 0) fontName.write(sink);
}

template <class CharT>
int FontImplT<CharT>::size() {
    return _record.dyHeight / twipsPerPoint;
}

template <class CharT>
void FontImplT<CharT>::setSize(int points) {
    _book->lastError().clear();
    constexpr int maxHeight = 8191;
    _record.dyHeight =
        static_cast<std::uint16_t>(std::min(std::int64_t{points} * twipsPerPoint, std::int64_t{maxHeight}));
}

template <class CharT>
void FontImplT<CharT>::setGrbit(Font::Style bit, bool on) {
    _record.grbit = static_cast<std::uint16_t>(on ? _record.grbit | bit : _record.grbit & ~bit);
}

template <class CharT>
bool FontImplT<CharT>::isItalic() {
    return (_record.grbit & Font::italic) != 0;
}

template <class CharT>
void FontImplT<CharT>::setItalic(bool italic) {
    _book->lastError().clear();
    setGrbit(Font::italic, italic);
}

template <class CharT>
bool FontImplT<CharT>::isStrikeOut() {
    return (_record.grbit & Font::strikeOut) != 0;
}

template <class CharT>
void FontImplT<CharT>::setStrikeOut(bool strikeOut) {
    _book->lastError().clear();
    setGrbit(Font::strikeOut, strikeOut);
}

template <class CharT>
int FontImplT<CharT>::color() {
    return _record.icv;
}

template <class CharT>
void FontImplT<CharT>::setColor(int color) {
    _book->lastError().clear();
    _record.icv = static_cast<std::uint16_t>(color);
}

template <class CharT>
bool FontImplT<CharT>::isBold() {
    return _record.bls >= bold;
}

template <class CharT>
void FontImplT<CharT>::setBold(bool isBold) {
    _book->lastError().clear();
    _record.bls = isBold ? bold : regular;
}

template <class CharT>
int FontImplT<CharT>::script() {
    return _record.sss;
}

template <class CharT>
void FontImplT<CharT>::setScript(int script) {
    _book->lastError().clear();
    _record.sss = static_cast<std::uint16_t>(script);
}

template <class CharT>
int FontImplT<CharT>::underline() {
    return _record.uls;
}

template <class CharT>
void FontImplT<CharT>::setUnderline(int underline) {
    _book->lastError().clear();
    _record.uls = static_cast<std::uint8_t>(underline);
}

template <class CharT>
const CharT* FontImplT<CharT>::nameText() {
    return _conversion.give<CharT>(_record.fontName.view(), _book->utf8());
}

template <class CharT>
const CharT* FontImplT<CharT>::name() {
    return guarded<const CharT*>(_book->lastError(), nullptr, [&] {
        const CharT* const text = nameText();
        if (_conversion.lostCharacters()) _book->lastError().set(biff::msg::lostCharacters);
        return text;
    });
}

template <class CharT>
void FontImplT<CharT>::assignName(const CharT* name) {
    _record.fontName.set(name, _book->pool(), _book->utf8());
}

template <class CharT>
bool FontImplT<CharT>::setName(const CharT* name) {
    return guarded(_book->lastError(), false, [&] {
        assignName(name);
        return true;
    });
}

template <class CharT>
bool FontImplT<CharT>::usesRgbColors() {
    return _book->usesRgbColors();
}

template <class CharT>
void FontImplT<CharT>::setUsesRgbColors(bool rgb) {
    _book->setUsesRgbColors(rgb);
}

template class FontImplT<char>;
template class FontImplT<wchar_t>;

}  // namespace vellum
