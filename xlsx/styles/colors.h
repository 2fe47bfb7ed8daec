// Colours as the interfaces have them, and as a package writes them.
#pragma once
#include <cstdint>
#include <optional>

#include "engine/api/enums.h"
#include "xlsx/styles/theme.h"

namespace vellum {

/// What reads as no palette index and no rgb number.
constexpr int unknownColor = -1;
constexpr int automaticColor = noColor;

/// Setters pass over what is none.
constexpr bool isColor(int color) {
    return color >= 0 && color != automaticColor;
}

constexpr int packRgb(Rgb rgb) {
    return rgb[0] << 16 | rgb[1] << 8 | rgb[2];
}
constexpr Rgb unpackRgb(int color) {
    return {static_cast<std::uint8_t>(color >> 16), static_cast<std::uint8_t>(color >> 8),
            static_cast<std::uint8_t>(color)};
}

/// The default colour of a palette index, 0 to 63; the first eight stand again at 8 to 15.
std::optional<Rgb> paletteColor(unsigned index);
/// The lowest index from 8 up that has exactly this colour, -1 when there is none.
int paletteIndexOf(Rgb rgb);

/// Scales the lightness of a colour: `tint` from -1 (black) to 1 (white), 0 leaves it as it is.
Rgb tinted(Rgb rgb, double tint);

/// Writes a colour element: a palette index, or a 24-bit number when `rgb` is set.
template <class Color>
void writeColor(Color& element, int color, bool rgb) {
    element = Color();
    if (rgb) {
        const Rgb channels = unpackRgb(color);
        element.rgb({{255, channels[0], channels[1], channels[2]}});
    } else {
        element.indexed(static_cast<unsigned>(color));
    }
}

/// Reads what `rgb` bytes of a package say: 3 of them, or 4 with the alpha first. Throws "rgb color is invalid".
int readRgbBytes(const std::vector<std::uint8_t>& bytes, bool rgb);

}  // namespace vellum
