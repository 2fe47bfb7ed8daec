// The 4-byte number of `RK` and `MulRk`.
#pragma once
#include <bit>
#include <cstdint>

namespace vellum {

/// Bit 1: the upper 30 bits are a signed integer, else the upper 30 of a double whose lower 34 are zero. Bit 0: the
/// value was multiplied by 100.
[[nodiscard]] constexpr double decodeRk(std::uint32_t rk) {
    const double value = (rk & 2) != 0 ? static_cast<double>(static_cast<std::int32_t>(rk) >> 2)
                                       : std::bit_cast<double>(std::uint64_t{rk & ~3U} << 32);
    return (rk & 1) != 0 ? value / 100 : value;
}

}  // namespace vellum
