// Escapes of texts and attribute values.

#include <array>

#include "bindery/values/value_spec.h"
#include "bindery/writer/xml_writer.h"

namespace bindery {

namespace {

/// Bytes that may have to be written otherwise. EF begins U+FFFE and U+FFFF, which XML does not allow.
constexpr std::array<bool, 256> special = [] {
    std::array<bool, 256> table{};
    for (unsigned c = 0; c < 32; ++c) table[c] = true;
    for (const char c : {'"', '\'', '&', '<', '>', '\xEF'}) table[static_cast<unsigned char>(c)] = true;
    return table;
}();

void appendForbidden(std::string& out, unsigned c) {
    constexpr char digits[] = "0123456789ABCDEF";
    out += "_x";
    for (int shift = 12; shift >= 0; shift -= 4) out += digits[c >> shift & 15];
    out += '_';
}

/// An ASCII character at `position` of its text, behind the character `before`.
void appendAscii(std::string& out, char c, std::size_t position, char before, bool attribute) {
    switch (c) {
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&apos;";
            break;
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            if (position >= 2 && before == ']')
                out += "&gt;";
            else
                out += c;
            break;
        case '\r':
            out += "&#13;";
            break;
        case '\n':
        case '\t':
            if (attribute)
                out += c == '\n' ? "&#10;" : "&#9;";
            else
                out += c;
            break;
        default:
            if (static_cast<unsigned char>(c) < 32)
                appendForbidden(out, static_cast<unsigned char>(c));
            else
                out += c;
    }
}

}  // namespace

void appendEscaped(std::string& out, std::string_view utf8, bool attribute) {
    std::size_t run = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        if (!special[static_cast<unsigned char>(utf8[i])]) continue;
        if (utf8[i] == '\xEF') {
            const std::string_view character = utf8.substr(i, 3);
            if (character != "\xEF\xBF\xBE" && character != "\xEF\xBF\xBF") continue;
            out.append(utf8, run, i - run);
            appendForbidden(out, character[2] == '\xBE' ? 0xFFFE : 0xFFFF);
            i += 2;
        } else {
            out.append(utf8, run, i - run);
            appendAscii(out, utf8[i], i, i > 0 ? utf8[i - 1] : '\0', attribute);
        }
        run = i + 1;
    }
    out.append(utf8, run);
}

void appendEscaped(std::string& out, std::wstring_view wide, bool attribute) {
    if (wide == L" ") {
        out += "&#160;";
        return;
    }
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const char32_t c = static_cast<char32_t>(wide[i]);
        if (c < 128) {
            if (!special[c])
                out += static_cast<char>(c);
            else
                appendAscii(out, static_cast<char>(c), i, i > 0 && wide[i - 1] == L']' ? ']' : '\0', attribute);
        } else if (c == 0xFFFE || c == 0xFFFF) {
            appendForbidden(out, c);
        } else if (c >= 0xD800 && c < 0xDC00) {
            const std::wstring_view pair = wide.substr(i, 2);
            const std::size_t before = out.size();
            appendUtf8(out, pair);
            if (out.size() == before) return;  // a high surrogate alone ends the value
            ++i;
        } else {
            appendCodePoint(out, c);
        }
    }
}

}  // namespace bindery
