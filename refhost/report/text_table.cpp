#include "refhost/report/text_table.h"

#include <algorithm>

#include "refhost/values/utf8.h"

namespace refhost {
namespace {

constexpr std::string_view gap = "  ";

bool looksLikeNumber(std::string_view text) {
    return text.empty() || text == "nan" || text == "inf" || text == "-inf" ||
           text.find_first_not_of("0123456789+-.e") == text.npos;
}

void appendPadded(std::string& line, std::string_view text, std::size_t width, bool right) {
    const std::size_t shown = shownWidth(text), pad = width > shown ? width - shown : 0;
    if (right) line.append(pad, ' ');
    line += text;
    if (!right) line.append(pad, ' ');
}

void appendLine(std::string& out, std::string line) {
    line.erase(line.find_last_not_of(' ') + 1);
    out += line;
    out += '\n';
}

}  // namespace

std::size_t shownWidth(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool continues = (c & 0xc0) == 0x80;
        // U+0300 to U+036F are drawn over the character before them.
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0;
        const bool combining = c == 0xcc || (c == 0xcd && next < 0xb0);
        if (!continues && !combining) ++width;
    }
    return width;
}

std::string shownText(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        const std::size_t length = utf8Length(text.substr(i));
        const bool c1Control = c == 0xc2 && length == 2 && static_cast<unsigned char>(text[i + 1]) < 0xa0;
        if (c == '\n' || c == '\t' || c == '\r') {
            out += '\\';
            out += c == '\n' ? 'n' : c == '\t' ? 't' : 'r';
            ++i;
        } else if (length == 0 || c < 0x20 || c == 0x7f || c1Control) {
            constexpr char hex[] = "0123456789abcdef";
            out += "\\x";
            out += hex[c >> 4];
            out += hex[c & 15];
            ++i;
        } else {
            out += text.substr(i, length);
            i += length;
        }
    }
    return out;
}

std::vector<std::size_t> TextTable::widths() const {
    std::vector<std::size_t> widths;
    for (const std::string& cell : _header) widths.push_back(shownWidth(cell));
    for (const auto& row : _rows)
        for (std::size_t i = 0; i < widths.size() && i < row.size(); ++i)
            widths[i] = std::max(widths[i], shownWidth(row[i]));
    return widths;
}

std::size_t TextTable::width() const {
    std::size_t total = 0;
    for (const std::size_t width : widths()) total += width + gap.size();
    return total;
}

void TextTable::print(std::string& out) const {
    const std::vector<std::size_t> width = widths();
    std::vector<bool> right(width.size(), !_rows.empty());
    for (const auto& row : _rows)
        for (std::size_t i = 0; i < row.size(); ++i) right[i] = right[i] && looksLikeNumber(row[i]);

    std::string line;
    for (std::size_t i = 0; i < width.size(); ++i) {
        line += gap;
        appendPadded(line, _header[i], width[i], right[i]);
    }
    appendLine(out, line);
    line.clear();
    for (const std::size_t w : width) {
        line += gap;
        line.append(w, '-');
    }
    appendLine(out, line);
    for (const auto& row : _rows) {
        line.clear();
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += gap;
            appendPadded(line, row[i], width[i], right[i]);
        }
        appendLine(out, line);
    }
}

}  // namespace refhost
