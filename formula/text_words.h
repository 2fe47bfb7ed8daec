// The words of a formula's text.
#pragma once
#include <string>
#include <string_view>

namespace vellum::formula {

/// Deletes the blanks outside of quotes, and then one `=` at the front. Double and single quotes each open a stretch
/// in which the other kind is text.
void cleanText(std::wstring& text);

/// Takes a cleaned text apart: a delimiter with what belongs to it (`<=`, `<>`, `>=`), or everything up to the next
/// delimiter outside of quotes. Colon, `!`, `$` and point are none.
class TextWords {
public:
    explicit TextWords(std::wstring_view text) : _text(text) {}
    /// Empty at the end.
    std::wstring_view next();
    /// What is left behind the last word.
    [[nodiscard]] std::wstring_view rest() const { return _text.substr(_at); }
    /// Of `rest`, in the text.
    [[nodiscard]] std::size_t position() const { return _at; }

private:
    std::wstring_view _text;
    std::size_t _at = 0;
};

/// The place of a character outside of quotes, `npos` when there is none.
std::size_t findOutsideQuotes(std::wstring_view text, wchar_t c);

}  // namespace vellum::formula
