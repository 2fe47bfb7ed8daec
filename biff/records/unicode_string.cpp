#include "biff/records/unicode_string.h"

#include <cstdlib>
#include <cstring>
#include <cwchar>

#include "biff/container/messages.h"
#include "biff/container/record_codec.h"
#include "biff/records/continue_writer.h"
#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"

namespace vellum {
namespace {

std::size_t widthOf(std::uint8_t flags) {
    return (flags & wideText) != 0 ? 2 : 1;
}

template <class T>
T takeCount(Cursor& in, const char* record) {
    if (in.left() < sizeof(T)) throwBadSize(record);
    return in.get<T>();
}

// Measured before the conversion, as the limit is checked on what the caller gave.
std::size_t measuredLength(const char* text, bool utf8) {
    if (utf8) return std::strlen(text);
    const std::size_t characters = std::mbstowcs(nullptr, text, 0);
    return characters == static_cast<std::size_t>(-1) ? 0 : characters;  // the conversion will say what is wrong
}

std::size_t measuredLength(const wchar_t* text, bool) {
    return std::wcslen(text);
}

template <class Count, class String, class CharT>
void setText(String& string, const CharT* text, StringPool& pool, bool utf8, std::size_t limit, const char* tooLong) {
    const std::size_t length = text == nullptr ? 0 : measuredLength(text, utf8);
    if (length > limit) throw vlerror(tooLong);
    string.text = text == nullptr ? L"" : toPool(text, pool, utf8);
    string.cch = static_cast<Count>(std::wcslen(string.text));
    string.flags = wideText;
}

}  // namespace

const wchar_t* readTextNoCch(Cursor& in, StringPool& pool, std::size_t cch, TextForm form, const char* record,
                             std::uint8_t* flags) {
    std::uint8_t own = 0;
    // Some writers leave the flags byte of an empty text out.
    if (form == TextForm::withFlags && (cch > 0 || !in.empty())) own = takeCount<std::uint8_t>(in, record);
    if (flags != nullptr) *flags = own;
    if (cch == 0) return L"";
    const std::size_t bytes = cch * widthOf(own);
    if (in.left() < bytes) throwBadSize(record);
    wchar_t* const text = pool.allocate(cch + 1);
    widenText(text, in.take(bytes), (own & wideText) != 0);
    text[cch] = 0;
    return text;
}

void writeCharacters(Sink& out, std::wstring_view characters, bool wide) {
    std::byte* to = out.room(characters.size() * (wide ? 2 : 1));
    for (const wchar_t c : characters) {
        *to++ = static_cast<std::byte>(c);
        if (wide) *to++ = static_cast<std::byte>(c >> 8);
    }
}

ShortXLUnicodeString ShortXLUnicodeString::read(Cursor& in, StringPool& pool, TextForm form, const char* record) {
    ShortXLUnicodeString string;
    string.cch = takeCount<std::uint8_t>(in, record);
    string.text = readTextNoCch(in, pool, string.cch, form, record, &string.flags);
    return string;
}

void ShortXLUnicodeString::write(Sink& out) const {
    out.put(cch);
    if (!noFlags) out.put(flags);
    writeCharacters(out, view(), (flags & wideText) != 0);
}

std::size_t ShortXLUnicodeString::wireSize() const {
    return sizeof cch + (noFlags ? 0 : 1) + cch * widthOf(flags);
}

template <class CharT>
void ShortXLUnicodeString::set(const CharT* newText, StringPool& pool, bool utf8) {
    setText<std::uint8_t>(*this, newText, pool, utf8, 255, biff::msg::shortStringTooLong);
}

XLUnicodeString XLUnicodeString::read(Cursor& in, StringPool& pool, TextForm form, bool shortCount,
                                      const char* record) {
    XLUnicodeString string;
    string.cch = shortCount ? takeCount<std::uint8_t>(in, record) : takeCount<std::uint16_t>(in, record);
    string.text = readTextNoCch(in, pool, string.cch, form, record, &string.flags);
    return string;
}

XLUnicodeString XLUnicodeString::read(Xls& xls, StringPool& pool, TextForm form, bool shortCount,
                                      std::uint16_t& budget) {
    XLUnicodeString string;
    if (shortCount) {
        std::uint8_t count = 0;
        xls.readWithContinueRecords(&count, sizeof count, budget);
        string.cch = count;
    } else {
        xls.readWithContinueRecords(&string.cch, sizeof string.cch, budget);
    }
    if (string.cch == 0 && budget == 0) return string;
    if (form == TextForm::withFlags) xls.readWithContinueRecords(&string.flags, sizeof string.flags, budget);
    if (string.cch == 0) return string;
    string.text = readText(xls, pool, string.cch, (string.flags & wideText) != 0, form == TextForm::withFlags, budget);
    // Where the width changed on the way, only two bytes a character hold all of it.
    for (const wchar_t c : string.view()) {
        if (c > 0xFF) string.flags |= wideText;
    }
    return string;
}

void XLUnicodeString::write(Sink& out) const {
    if (byteCount) {
        if (cch > 255) throw vlerror(biff::msg::stringTooLong);
        out.put(static_cast<std::uint8_t>(cch));
    } else {
        out.put(cch);
    }
    if (!noFlags) out.put(flags);
    writeCharacters(out, view(), (flags & wideText) != 0);
}

void XLUnicodeString::write(ContinueWriter& out) const {
    out.keepTogether(sizeof cch + 1);  // count and flags are never parted
    if (byteCount) {
        if (cch > 255) throw vlerror(biff::msg::stringTooLong);
        out.put(static_cast<std::uint8_t>(cch));
    } else {
        out.put(cch);
    }
    if (!noFlags) out.put(flags);
    out.text(view(), (flags & wideText) != 0);
}

std::size_t XLUnicodeString::wireSize() const {
    return (byteCount ? 1 : 2) + (noFlags ? 0 : 1) + cch * widthOf(flags);
}

template <class CharT>
void XLUnicodeString::set(const CharT* newText, StringPool& pool, bool utf8) {
    setText<std::uint16_t>(*this, newText, pool, utf8, 65535, biff::msg::stringTooLong);
}

template void ShortXLUnicodeString::set(const char*, StringPool&, bool);
template void ShortXLUnicodeString::set(const wchar_t*, StringPool&, bool);
template void XLUnicodeString::set(const char*, StringPool&, bool);
template void XLUnicodeString::set(const wchar_t*, StringPool&, bool);

}  // namespace vellum
