#include "formula/function_word.h"

#include <algorithm>

#include "formula/digits.h"

namespace vellum::formula {
namespace {

struct NameWithDigits {
    std::wstring_view letters, digits;
};
constexpr NameWithDigits namesWithDigits[] = {{L"LOG", L"10"}, {L"DAYS", L"360"}, {L"ATAN", L"2"}};

}  // namespace

std::size_t functionNameLength(std::wstring_view word) {
    const std::size_t digit = std::min(word.find_first_of(L"0123456789"), word.size());
    for (const auto& name : namesWithDigits) {
        if (word.substr(0, digit) == name.letters && word.substr(digit).starts_with(name.digits)) {
            return digit + name.digits.size();
        }
    }
    return digit;
}

std::optional<FunctionWord> parseFunctionWord(std::wstring_view word) {
    if (word.size() < 2 || word.back() != L'F' || word.front() == L'"' || word.front() == L'\'') return std::nullopt;
    word.remove_suffix(1);
    const std::size_t digit = word.find_first_of(L"0123456789");
    if (digit == std::wstring_view::npos || !std::ranges::all_of(word.substr(digit), isDigit)) return std::nullopt;
    const std::size_t length = functionNameLength(word);
    std::uint32_t count = 0;
    for (const wchar_t c : word.substr(length)) {
        count = std::min(count * 10 + static_cast<std::uint32_t>(c - L'0'), FunctionWord::maxCount);
    }
    return FunctionWord{word.substr(0, length), count};
}

void appendFunctionWord(std::wstring& out, std::wstring_view name, std::uint32_t count) {
    out += name;
    appendNumber(out, count);
    out += L'F';
}

}  // namespace vellum::formula
