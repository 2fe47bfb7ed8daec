#include "xlsx/colors.h"

#include <algorithm>
#include <cmath>

#include "engine/vlerror.h"
#include "xlsx/style_messages.h"

namespace vellum {
namespace {

constexpr unsigned firstIndex = 8;

// Colours of the indices 8 to 63.
constexpr std::uint32_t palette[] = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,  // 8
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,  // 16
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,  // 24
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,  // 32
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,  // 40
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,  // 48
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333,  // 56
};

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
    if (index - firstIndex >= std::size(palette)) return std::nullopt;
    return unpackRgb(static_cast<int>(palette[index - firstIndex]));
}

int paletteIndexOf(Rgb rgb) {
    const auto found = std::find(std::begin(palette), std::end(palette), static_cast<std::uint32_t>(packRgb(rgb)));
    return found == std::end(palette) ? unknownColor : static_cast<int>(firstIndex) + static_cast<int>(found - palette);
}

Rgb tinted(Rgb rgb, double tint) {
    if (tint == 0 || !(tint >= -1 && tint <= 1)) return rgb;
    Hsl hsl = toHsl(rgb);
    const double l = hsl.lightness * 255;
    hsl.lightness = (tint < 0 ? (1 + tint) * l : (1 - tint) * l + (255 - (1 - tint) * 255)) / 255;
    return toRgb(hsl);
}

int readRgbBytes(const std::vector<std::uint8_t>& bytes, bool rgb) {
    if (bytes.size() != 3 && bytes.size() != 4) throw vlerror(msg::rgbInvalid);
    const std::size_t first = bytes.size() - 3;
    const Rgb channels{bytes[first], bytes[first + 1], bytes[first + 2]};
    if (rgb) return packRgb(channels);
    if (first == 1 && bytes[0] != 255) return unknownColor;
    return paletteIndexOf(channels);
}

}  // namespace vellum
