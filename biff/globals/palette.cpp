#include "biff/globals/palette.h"

#include <algorithm>

#include "biff/container/record_codec.h"
#include "biff/container/xls.h"
#include "biff/records/book_messages.h"
#include "engine/facts/standard_colors.h"

namespace vellum {

namespace {

static_assert(standardColors.size() == Palette::size);

constexpr PaletteColor fromRgb(std::uint32_t rgb) {
    return {static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8), static_cast<std::uint8_t>(rgb),
            0};
}

constexpr std::array<PaletteColor, Palette::size> standardPalette() {
    std::array<PaletteColor, Palette::size> colors;
    for (std::size_t i = 0; i < colors.size(); ++i) colors[i] = fromRgb(standardColors[i]);
    return colors;
}

constexpr PaletteColor channels(int red, int green, int blue) {
    return {static_cast<std::uint8_t>(red), static_cast<std::uint8_t>(green), static_cast<std::uint8_t>(blue), 0};
}

bool sameRgb(const PaletteColor& a, const PaletteColor& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

int indexOf(std::size_t position) {
    return static_cast<int>(position) + Palette::firstIndex;
}

}  // namespace

Palette::Palette() : _colors(standardPalette()) {}

int Palette::pack(int red, int green, int blue) {
    _present = true;
    const PaletteColor color = channels(red, green, blue);
    const auto same = std::ranges::find_if(_colors, [&](const auto& c) { return sameRgb(c, color); });
    const auto position = same != _colors.end()
                              ? static_cast<std::size_t>(same - _colors.begin())
                              : static_cast<std::size_t>(std::ranges::find(_used, false) - _used.begin());
    if (position == _colors.size()) throw vlerror(biff::msg::noFreeColor);
    _used[position] = true;
    _colors[position] = color;
    return indexOf(position);
}

int Palette::nearest(int red, int green, int blue) const {
    const auto distance = [&](const PaletteColor& c) {
        const int dr = c.red - red, dg = c.green - green, db = c.blue - blue;
        return dr * dr + dg * dg + db * db;
    };
    const auto best = std::ranges::min_element(_colors, {}, distance);
    return indexOf(static_cast<std::size_t>(best - _colors.begin()));
}

PaletteColor Palette::at(int index) const {
    if (index < 0 || index >= firstIndex + size) throw vlerror(biff::msg::indexOutOfRange);
    // The eight basic colours have the standard values of the entries from 8 to 15, whatever those are now.
    if (index < firstIndex) return fromRgb(standardColors[static_cast<std::size_t>(index)]);
    return _colors[static_cast<std::size_t>(index - firstIndex)];
}

void Palette::read(Xls& in, std::uint16_t bodySize) {
    Cursor body = in.body(bodySize);
    if (bodySize < 2) throwBadSize(name);
    const std::size_t count = body.get<std::uint16_t>();
    if (body.left() != count * 4) throwBadSize(name);
    *this = Palette();
    for (std::size_t i = 0; i < std::min(count, _colors.size()); ++i) {
        const auto c = body.take(4);
        _colors[i] = {std::to_integer<std::uint8_t>(c[0]), std::to_integer<std::uint8_t>(c[1]),
                      std::to_integer<std::uint8_t>(c[2]), std::to_integer<std::uint8_t>(c[3])};
    }
    _present = true;
}

void Palette::write(Xls& out) const {
    if (!_present) return;
    Sink& sink = out.out();
    sink.putAll(id, std::uint16_t{2 + 4 * size}, std::uint16_t{size});
    for (const PaletteColor& c : _colors) sink.putAll(c.red, c.green, c.blue, c.reserved);
}

}  // namespace vellum
