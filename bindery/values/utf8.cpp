#include <utf8.h>

#include "bindery/values/value_spec.h"

namespace bindery {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char c : text) bits = static_cast<unsigned char>(bits | static_cast<unsigned char>(c));
    return bits < 128;
}

}  // namespace

void appendCodePoint(std::string& out, char32_t c) {
    if (c < 128) {
        out += static_cast<char>(c);
        return;
    }
    if ((c >= 0xD800 && c < 0xE000) || c > 0x10FFFF) c = replacement;
    utf8::unchecked::append(static_cast<std::uint32_t>(c), std::back_inserter(out));
}

void appendWide(std::wstring& out, std::string_view utf8) {
    if (isAscii(utf8)) {
        out.append(utf8.begin(), utf8.end());
        return;
    }
    std::string repaired;
    if (!utf8::is_valid(utf8.begin(), utf8.end())) {
        utf8::replace_invalid(utf8.begin(), utf8.end(), std::back_inserter(repaired), std::uint32_t{replacement});
        utf8 = repaired;
    }
    for (auto at = utf8.begin(); at != utf8.end();) out += static_cast<wchar_t>(utf8::unchecked::next(at));
}

void repairUtf8(std::string& text) {
    if (isAscii(text) || utf8::is_valid(text.begin(), text.end())) return;
    std::string repaired;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(repaired), std::uint32_t{replacement});
    text = std::move(repaired);
}

std::wstring toWide(std::string_view utf8) {
    std::wstring out;
    appendWide(out, utf8);
    return out;
}

void appendUtf8(std::string& out, std::wstring_view wide) {
    for (std::size_t i = 0; i < wide.size(); ++i) {
        char32_t c = static_cast<char32_t>(wide[i]);
        if (c >= 0xD800 && c < 0xDC00) {
            const char32_t low = i + 1 < wide.size() ? static_cast<char32_t>(wide[i + 1]) : 0;
            if (low < 0xDC00 || low > 0xDFFF) return;
            c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
            ++i;
        }
        appendCodePoint(out, c);
    }
}

std::string toUtf8(std::wstring_view wide) {
    std::string out;
    appendUtf8(out, wide);
    return out;
}

}  // namespace bindery
