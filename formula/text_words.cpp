#include "formula/text_words.h"

#include <array>

namespace vellum::formula {
namespace {

constexpr auto delimiters = [] {
    std::array<bool, 128> table{};
    for (const char c : std::string_view("%&()*+,-/;<=>^")) table[static_cast<unsigned char>(c)] = true;
    return table;
}();

bool isDelimiter(wchar_t c) {
    return c >= 0 && c < 128 && delimiters[static_cast<std::size_t>(c)];
}

/// Which kind of quote is open.
class Quotes {
public:
    /// True for a character inside a stretch, the quotes themselves among them.
    bool covers(wchar_t c) {
        if (_open != 0) {
            if (c == _open) _open = 0;
            return true;
        }
        if (c != L'"' && c != L'\'') return false;
        _open = c;
        return true;
    }

private:
    wchar_t _open = 0;
};

}  // namespace

void cleanText(std::wstring& text) {
    Quotes quotes;
    std::size_t kept = 0;
    for (const wchar_t c : text) {
        if (quotes.covers(c) || c != L' ') text[kept++] = c;
    }
    text.resize(kept);
    if (text.starts_with(L'=')) text.erase(0, 1);
}

std::wstring_view TextWords::next() {
    const std::size_t start = _at;
    if (start < _text.size() && isDelimiter(_text[start])) {
        const wchar_t first = _text[_at++];
        const wchar_t second = _at < _text.size() ? _text[_at] : L'\0';
        if ((first == L'<' && (second == L'=' || second == L'>')) || (first == L'>' && second == L'=')) ++_at;
        return _text.substr(start, _at - start);
    }
    Quotes quotes;
    while (_at < _text.size() && (quotes.covers(_text[_at]) || !isDelimiter(_text[_at]))) ++_at;
    return _text.substr(start, _at - start);
}

std::size_t findOutsideQuotes(std::wstring_view text, wchar_t c) {
    Quotes quotes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!quotes.covers(text[i]) && text[i] == c) return i;
    }
    return std::wstring_view::npos;
}

}  // namespace vellum::formula
