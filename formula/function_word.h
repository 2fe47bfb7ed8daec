// The form in which postfix text calls a function: name, number of arguments, F, as in `SUM2F`.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellum::formula {

struct FunctionWord {
    std::wstring_view name;
    std::uint32_t count;  // at most `maxCount`, which stands for anything above too
    static constexpr std::uint32_t maxCount = 1'000'000;
};

constexpr bool isDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

/// Characters of the name in a word of this form: those before the first digit, and the digits that belong to the
/// names LOG10, DAYS360 and ATAN2. So a name with other digits is split wrongly, which the form cannot tell.
std::size_t functionNameLength(std::wstring_view word);

/// Nothing unless the word ends in F and has only digits, one at least, between the name and that F. A word that
/// begins with a quote is none.
std::optional<FunctionWord> parseFunctionWord(std::wstring_view word);

void appendFunctionWord(std::wstring& out, std::wstring_view name, std::uint32_t count);

}  // namespace vellum::formula
