#include "cli/workbook/json_lines.h"

#include <charconv>
#include <cmath>

namespace cli {

JsonLines& JsonLines::integer(long long value) {
    char digits[24];
    _buffer.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
    return *this;
}

JsonLines& JsonLines::number(double value) {
    if (std::isnan(value)) return raw("null");
    if (std::isinf(value)) return raw(value < 0 ? "-1e999" : "1e999");
    constexpr double exactInteger = 1e15;  // below it an integer has the same digits in both forms
    if (std::fabs(value) < exactInteger) {
        const auto whole = static_cast<long long>(value);
        if (static_cast<double>(whole) == value && !(whole == 0 && std::signbit(value))) return integer(whole);
    }
    char digits[32];
    _buffer.append(digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 17).ptr);
    return *this;
}

JsonLines& JsonLines::text(std::string_view utf8) {
    _buffer.push_back('"');
    std::size_t start = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\') continue;
        _buffer.append(utf8, start, i - start);
        start = i + 1;
        constexpr char hex[] = "0123456789abcdef";
        switch (c) {
            case '"':
                _buffer.append("\\\"");
                break;
            case '\\':
                _buffer.append("\\\\");
                break;
            case '\n':
                _buffer.append("\\n");
                break;
            case '\r':
                _buffer.append("\\r");
                break;
            case '\t':
                _buffer.append("\\t");
                break;
            default:
                _buffer.append("\\u00").append(1, hex[c >> 4]).append(1, hex[c & 15]);
        }
    }
    _buffer.append(utf8, start).push_back('"');
    return *this;
}

void JsonLines::flush() {
    _out.write(_buffer.data(), static_cast<std::streamsize>(_buffer.size()));
    _buffer.clear();
}

}  // namespace cli
