// Numbers in wide text.
#pragma once
#include <charconv>
#include <cstdint>
#include <string>

namespace vellum::formula {

inline void appendNumber(std::wstring& out, std::int64_t value) {
    char digits[24];
    char* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    out.append(+digits, end);
}

}  // namespace vellum::formula
