#include "engine/text/conversions.h"

#include <utf8.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <iterator>

#include "engine/failure/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {

namespace {

bool isHighSurrogate(wchar_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
bool isLowSurrogate(wchar_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

std::uint16_t codeUnit(wchar_t c) {
    return static_cast<std::uint16_t>(c);
}

/// Most texts are ASCII to the end; the rest goes the checked way from the first other byte.
std::size_t asciiLength(std::string_view text) {
    const auto end = std::find_if(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
    return static_cast<std::size_t>(end - text.begin());
}

void widenUtf8(std::string_view text, std::wstring& wide) {
    const std::size_t ascii = asciiLength(text);
    wide.assign(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(ascii));
    utf8::utf8to32(text.begin() + static_cast<std::ptrdiff_t>(ascii), text.end(), std::back_inserter(wide));
}

void narrowUtf8(std::wstring_view text, std::string& narrow) {
    narrow.clear();
    narrow.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (static_cast<std::uint32_t>(c) < 0x80) {
            narrow.push_back(static_cast<char>(c));
        } else if (isHighSurrogate(c)) {
            if (i + 1 == text.size() || !isLowSurrogate(text[i + 1])) throw utf8::invalid_utf16(codeUnit(c));
            const std::uint32_t high = static_cast<std::uint32_t>(c) - 0xD800;
            const std::uint32_t low = static_cast<std::uint32_t>(text[++i]) - 0xDC00;
            utf8::append(0x10000 + (high << 10) + low, std::back_inserter(narrow));
        } else if (isLowSurrogate(c)) {
            throw utf8::invalid_utf16(codeUnit(c));
        } else {
            utf8::append(static_cast<std::uint32_t>(c), std::back_inserter(narrow));
        }
    }
}

bool widenByLocale(std::string_view text, std::wstring& wide) {
    bool allConverted = true;
    std::mbstate_t state{};
    wide.clear();
    while (!text.empty()) {
        wchar_t c = 0;
        std::size_t n = std::mbrtowc(&c, text.data(), text.size(), &state);
        if (n == static_cast<std::size_t>(-1) || n == static_cast<std::size_t>(-2)) {
            c = L'?';
            n = 1;
            state = {};
            allConverted = false;
        }
        wide.push_back(c);
        text.remove_prefix(std::max<std::size_t>(n, 1));  // 0 is an embedded null
    }
    return allConverted;
}

bool narrowByLocale(std::wstring_view text, std::string& narrow) {
    bool allConverted = true;
    std::mbstate_t state{};
    char bytes[MB_LEN_MAX];
    narrow.clear();
    for (const wchar_t c : text) {
        const std::size_t n = std::wcrtomb(bytes, c, &state);
        if (n == static_cast<std::size_t>(-1)) {
            narrow.push_back('?');
            state = {};
            allConverted = false;
        } else {
            narrow.append(bytes, n);
        }
    }
    return allConverted;
}

const wchar_t* widenByLocale(const char* text, StringPool& pool) {
    const std::size_t n = std::mbstowcs(nullptr, text, 0);
    if (n == static_cast<std::size_t>(-1)) throw vlerror(msg::cantWiden);
    wchar_t* const wide = pool.allocate(n + 1);
    std::mbstowcs(wide, text, n + 1);
    return wide;
}

const char* copyBytes(std::string_view text, StringPool& pool) {
    char* const room = reinterpret_cast<char*>(pool.allocateBytes(text.size() + 1));
    *std::copy(text.begin(), text.end(), room) = '\0';
    return room;
}

const char* narrowByLocale(const wchar_t* text, StringPool& pool) {
    const std::size_t n = std::wcstombs(nullptr, text, 0);
    if (n == static_cast<std::size_t>(-1)) throw vlerror(msg::cantMeasureNarrow);
    char* const narrow = reinterpret_cast<char*>(pool.allocateBytes(n + 1));
    if (std::wcstombs(narrow, text, n + 1) == static_cast<std::size_t>(-1)) throw vlerror(msg::cantNarrow);
    return narrow;
}

}  // namespace

const wchar_t* narrowToWide(const char* text, StringPool& pool, bool utf8) {
    if (text == nullptr) return nullptr;
    if (!utf8) return widenByLocale(text, pool);
    const std::string_view narrow = text;
    if (asciiLength(narrow) == narrow.size()) {
        wchar_t* const room = pool.allocate(narrow.size() + 1);
        *std::copy(narrow.begin(), narrow.end(), room) = L'\0';
        return room;
    }
    std::wstring wide;
    widenUtf8(narrow, wide);
    return pool.copy(wide);
}

const char* wideToNarrow(const wchar_t* text, StringPool& pool, bool utf8) {
    if (text == nullptr) return nullptr;
    if (!utf8) return narrowByLocale(text, pool);
    const std::wstring_view wide = text;
    std::string narrow;
    utf8::utf32to8(wide.begin(), wide.end(), std::back_inserter(narrow));
    return copyBytes(narrow, pool);
}

const wchar_t* toPool(const char* text, StringPool& pool, bool utf8) {
    return narrowToWide(text, pool, utf8);
}

const wchar_t* toPool(const wchar_t* text, StringPool& pool, bool) {
    return text == nullptr ? nullptr : pool.copy(text);
}

bool widen(std::string_view text, std::wstring& wide, bool utf8) {
    if (!utf8) return widenByLocale(text, wide);
    widenUtf8(text, wide);
    return true;
}

bool narrow(std::wstring_view text, std::string& narrow, bool utf8) {
    if (!utf8) return narrowByLocale(text, narrow);
    narrowUtf8(text, narrow);
    return true;
}

std::wstring toWide(std::string_view text, bool utf8) {
    std::wstring wide;
    if (!widen(text, wide, utf8)) throw vlerror(msg::cantWiden);
    return wide;
}

std::wstring toWide(std::wstring_view text, bool) {
    return std::wstring(text);
}

std::string toNarrow(std::wstring_view text, bool utf8) {
    std::string result;
    if (!narrow(text, result, utf8)) throw vlerror(msg::cantNarrow);
    return result;
}

}  // namespace vellum
