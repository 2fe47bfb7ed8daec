#include "formula/postfix_words.h"

namespace vellum::formula {

std::wstring_view takeWord(std::wstring_view& postfix) {
    while (postfix.starts_with(L' ')) postfix.remove_prefix(1);
    wchar_t quote = 0;
    std::size_t i = 0;
    for (; i < postfix.size() && (quote != 0 || postfix[i] != L' '); ++i) {
        const wchar_t c = postfix[i];
        if (quote != 0) {
            if (c == quote) quote = 0;
        } else if (c == L'"' || c == L'\'') {
            quote = c;
        }
    }
    const std::wstring_view word = postfix.substr(0, i);
    postfix.remove_prefix(i);
    return word;
}

}  // namespace vellum::formula
