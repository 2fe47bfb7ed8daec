// Error constants in the text of formulas.
#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace vellum::formula {

/// `ERR` for a code that is none.
std::wstring_view errorWord(std::uint8_t code);
std::optional<std::uint8_t> errorCodeOf(std::wstring_view word);

}  // namespace vellum::formula
