// The 4-byte number of `RK` and `MulRk`.
#pragma once
#include <bit>
#include <cstdint>
#include <optional>

namespace vellum {

/// Bit 1: the upper 30 bits are a signed integer, else the upper 30 of a double whose lower 34 are zero. Bit 0: the
/// value was multiplied by 100.
[[nodiscard]] constexpr double decodeRk(std::uint32_t rk) {
    const double value = (rk & 2) != 0 ? static_cast<double>(static_cast<std::int32_t>(rk) >> 2)
                                       : std::bit_cast<double>(std::uint64_t{rk & ~3U} << 32);
    return (rk & 1) != 0 ? value / 100 : value;
}

/// The value of a number whose double fits into its upper 30 bits; nothing for any other. Neither the integer form nor
/// the form times 100 is ever made.
[[nodiscard]] constexpr std::optional<std::uint32_t> encodeRk(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    if ((bits & 0x3FFFFFFFFU) != 0) return std::nullopt;
    return static_cast<std::uint32_t>(bits >> 32);
}

}  // namespace vellum
