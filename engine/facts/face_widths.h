// How wide the characters of well-known typefaces are.
#pragma once
#include <array>
#include <cstdint>
#include <string_view>

namespace vellum {

/// Code points from here on have no width in any table.
inline constexpr char32_t measuredCodePoints = 1536;
/// Nor has any size above, in points.
inline constexpr int largestMeasuredSize = 72;

/// The advance widths of one typeface in one weight.
struct FaceWidths {
    std::array<std::uint16_t, 975> widths;

    /// Pixels at 96 dpi of a character below `measuredCodePoints`, rounded for each one as a screen does. A character
    /// that the typeface does not draw is as wide as a small o.
    [[nodiscard]] int pixels(char32_t c, int size) const;
};

/// Null for a typeface without a table. Names in any case.
const FaceWidths* findFaceWidths(std::wstring_view name, bool bold);

}  // namespace vellum
