// Sizes from files, which may be any number, as pixels.
#pragma once
#include <limits>

namespace vellum::xlsx {

/// The whole part; what no int holds is cut, what is no number is 0.
[[nodiscard]] constexpr int wholeNumber(double value) {
    constexpr double most = std::numeric_limits<int>::max();
    if (value != value) return 0;
    return static_cast<int>(value > most ? most : value < -most ? -most : value);
}

}  // namespace vellum::xlsx
