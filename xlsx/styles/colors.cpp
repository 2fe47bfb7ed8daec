#include "xlsx/styles/colors.h"

#include <algorithm>
#include <cmath>

#include "engine/facts/standard_colors.h"
#include "engine/failure/vlerror.h"
#include "xlsx/styles/style_messages.h"

namespace vellum {
namespace {

constexpr unsigned firstIndex = 8;

struct Hsl {
    double hue;  // degrees
    double saturation, lightness;
};

Hsl toHsl(Rgb rgb) {
    const double r = rgb[0] / 255.0, g = rgb[1] / 255.0, b = rgb[2] / 255.0;
    const double max = std::max({r, g, b}), min = std::min({r, g, b}), range = max - min;
    Hsl hsl{0, 0, (max + min) / 2};
    if (range == 0) return hsl;
    hsl.saturation = hsl.lightness < 0.5 ? range / (max + min) : range / (2 - max - min);
    if (max == r) {
        hsl.hue = 60 * (g - b) / range;
    } else if (max == g) {
        hsl.hue = 60 * (b - r) / range + 120;
    } else {
        hsl.hue = 60 * (r - g) / range + 240;
    }
    if (hsl.hue < 0) hsl.hue += 360;
    return hsl;
}

double channelOf(double p, double q, double t) {
    if (t < 0) t += 1;
    if (t > 1) t -= 1;
    if (t < 1.0 / 6) return p + (q - p) * 6 * t;
    if (t < 0.5) return q;
    if (t < 2.0 / 3) return p + (q - p) * (2.0 / 3 - t) * 6;
    return p;
}

std::uint8_t cut(double channel) {
    return static_cast<std::uint8_t>(std::clamp(channel * 255, 0.0, 255.0));
}

Rgb toRgb(const Hsl& hsl) {
    const double l = hsl.lightness, s = hsl.saturation, h = hsl.hue / 360;
    if (s == 0) return {cut(l), cut(l), cut(l)};
    const double q = l < 0.5 ? (1 + s) * l : l + s - s * l;
    const double p = 2 * l - q;
    return {cut(channelOf(p, q, h + 1.0 / 3)), cut(channelOf(p, q, h)), cut(channelOf(p, q, h - 1.0 / 3))};
}

}  // namespace

std::optional<Rgb> paletteColor(unsigned index) {
    if (index < firstIndex) index += firstIndex;
    if (index - firstIndex >= standardColors.size()) return std::nullopt;
    return unpackRgb(static_cast<int>(standardColors[index - firstIndex]));
}

int paletteIndexOf(Rgb rgb) {
    const auto found =
        std::find(standardColors.begin(), standardColors.end(), static_cast<std::uint32_t>(packRgb(rgb)));
    if (found == standardColors.end()) return unknownColor;
    return static_cast<int>(firstIndex) + static_cast<int>(found - standardColors.begin());
}

Rgb tinted(Rgb rgb, double tint) {
    if (tint == 0 || !(tint >= -1 && tint <= 1)) return rgb;
    Hsl hsl = toHsl(rgb);
    const double l = hsl.lightness * 255;
    hsl.lightness = (tint < 0 ? (1 + tint) * l : (1 - tint) * l + (255 - (1 - tint) * 255)) / 255;
    return toRgb(hsl);
}

int readRgbBytes(const std::vector<std::uint8_t>& bytes, bool rgb) {
    if (bytes.size() != 3 && bytes.size() != 4) throw vlerror(xlsx::msg::rgbInvalid);
    const std::size_t first = bytes.size() - 3;
    const Rgb channels{bytes[first], bytes[first + 1], bytes[first + 2]};
    if (rgb) return packRgb(channels);
    if (first == 1 && bytes[0] != 255) return unknownColor;
    return paletteIndexOf(channels);
}

}  // namespace vellum
