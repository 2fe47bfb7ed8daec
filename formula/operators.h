// Operators of formula text: their tokens, and how tightly they bind.
#pragma once
#include <cstdint>
#include <string_view>

#include "formula/token_table.h"

namespace vellum::formula {

struct BinaryOperator {
    std::wstring_view word;
    std::uint8_t code;
    int precedence;
};

/// All bind to the left, `^` too, and `&` binds less tightly than the comparisons.
inline constexpr BinaryOperator binaryOperators[] = {
    {L"&", ptg::concat, 2}, {L"=", ptg::eq, 3},  {L"<>", ptg::ne, 3}, {L"<", ptg::lt, 4},
    {L">", ptg::gt, 4},     {L"<=", ptg::le, 4}, {L">=", ptg::ge, 4}, {L"+", ptg::add, 5},
    {L"-", ptg::sub, 5},    {L"*", ptg::mul, 6}, {L"/", ptg::div, 6}, {L"^", ptg::power, 7},
};

constexpr const BinaryOperator* binaryOperator(std::wstring_view word) {
    constexpr std::wstring_view firsts = L"&=<>+-*/^";
    if (word.empty() || word.size() > 2 || firsts.find(word[0]) == std::wstring_view::npos) return nullptr;
    for (const BinaryOperator& op : binaryOperators) {
        if (op.word == word) return &op;
    }
    return nullptr;
}
constexpr bool isBinaryOperator(std::wstring_view word) {
    return binaryOperator(word) != nullptr;
}

}  // namespace vellum::formula
