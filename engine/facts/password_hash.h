// Passwords of protected sheets.
#pragma once
#include <cstdint>
#include <string_view>

namespace vellum {

/// The 16 bits that stand for a password of a protected sheet in either format. A character counts by its low byte, or
/// by the next one when that is 0.
std::uint16_t passwordHash(std::wstring_view password);

}  // namespace vellum
