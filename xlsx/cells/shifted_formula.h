// Formula text at another place.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace vellum {

/// Moves the relative addresses of a formula, as the members of a shared formula do. What leaves the sheet comes in
/// again on the other side. Text in double quotes stands; apostrophes protect nothing, lower case is never an address,
/// and whole columns and rows do not move.
std::wstring translateFormula(std::wstring_view text, std::int64_t rowDelta, std::int64_t colDelta);

}  // namespace vellum
