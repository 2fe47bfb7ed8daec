#include "formula/compiling/reference_marks.h"

#include "formula/function_table.h"
#include "formula/function_word.h"
#include "formula/text_words.h"

namespace vellum::formula {

using namespace std::string_view_literals;
namespace {

bool isLetter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

/// Letters, then digits, with `$` anywhere.
bool isCell(std::wstring_view word) {
    bool letters = false, digits = false;
    for (const wchar_t c : word) {
        if (isLetter(c)) {
            if (digits) return false;
            letters = true;
        } else if (isDigit(c)) {
            digits = true;
        } else if (c != L'$') {
            return false;
        }
    }
    return letters && digits;
}

}  // namespace

void ReferenceMarker::append(std::wstring_view word, std::wstring_view rest) {
    _text += word;
    std::uint32_t mask = 0;
    // TRUE and FALSE without a parenthesis are operands, and open no call.
    const bool isConstant = (word == L"TRUE"sv || word == L"FALSE"sv) && !rest.starts_with(L'(');
    if (!isConstant && isFunctionName(word, mask)) {
        _calls.push_back({.mask = mask});
        return;
    }
    if (_calls.empty()) return;
    Call& call = _calls.back();
    if (word == L"("sv) {
        if (call.waiting) {
            call.waiting = false;
        } else {
            ++call.nested;
        }
    } else if (word == L")"sv) {
        if (call.nested > 0) {
            --call.nested;
        } else {
            _calls.pop_back();
        }
    } else if (word == L","sv || word == L";"sv) {
        ++call.argument;
    } else if ((call.mask >> (call.argument % 32) & 1) != 0) {
        const std::size_t prefix = findOutsideQuotes(word, L'!');
        if (isCell(prefix == std::wstring_view::npos ? word : word.substr(prefix + 1))) _text += L'R';
    }
}

const std::wstring& ReferenceMarker::mark(std::wstring_view text) {
    _calls.clear();
    _text.clear();
    TextWords words(text);
    for (auto word = words.next(); !word.empty(); word = words.next()) append(word, words.rest());
    return _text;
}

}  // namespace vellum::formula
