// Attributes whose texts stand for the codes of the interfaces.
#pragma once
#include <cstddef>
#include <string_view>

namespace vellum {

/// The position of a text in a table, `otherwise` when it is not there.
template <std::size_t size>
constexpr int codeOf(const char* const (&table)[size], std::string_view text, int otherwise) {
    for (std::size_t i = 0; i < size; ++i) {
        if (text == table[i]) return static_cast<int>(i);
    }
    return otherwise;
}

/// Null for a code beyond the table.
template <std::size_t size>
constexpr const char* textOf(const char* const (&table)[size], int code) {
    return code >= 0 && static_cast<std::size_t>(code) < size ? table[code] : nullptr;
}

}  // namespace vellum
