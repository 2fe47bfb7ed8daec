#include "xlsx/parts/anchor.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "engine/facts/cell_address.h"

namespace vellum::xlsx {
namespace {

constexpr int lastColumn = static_cast<int>(sheetColumns) - 1;
constexpr int lastRow = static_cast<int>(sheetRows) - 1;
// Beyond any sheet; keeps sums of hostile lengths within their type.
constexpr std::int64_t longestLength = std::int64_t{1} << 40;

struct Unit {
    std::string_view name;
    double emu;
};
constexpr Unit units[] = {{"mm", 36000}, {"cm", 360000}, {"in", 914400}, {"pt", 12700}, {"pc", 152400}, {"pi", 152400}};

/// Columns or rows of a sheet.
template <class SizeOf>
struct Line {
    int last, firstEqual;  // from `firstEqual` on all have one size
    SizeOf sizeOf;

    [[nodiscard]] Edge walk(Edge from, std::int64_t length) const {
        Edge edge{from.cell, from.offset + length};
        while (edge.cell < last && edge.offset > 0) {
            const int size = sizeOf(edge.cell);
            if (edge.offset < size) break;
            std::int64_t steps = 1;
            if (edge.cell >= firstEqual) steps = size > 0 ? edge.offset / size : last;
            steps = std::min<std::int64_t>(steps, last - edge.cell);
            edge.offset -= steps * size;
            edge.cell += static_cast<int>(steps);
        }
        return edge;
    }

    [[nodiscard]] std::int64_t distance(const Edge& from, const Edge& to) const {
        std::int64_t length = to.offset - from.offset;
        const int equal = std::max(from.cell, firstEqual);
        for (int cell = from.cell; cell < std::min(to.cell, equal); ++cell) length += sizeOf(cell);
        if (equal < to.cell) length += std::int64_t{to.cell - equal} * sizeOf(equal);
        return std::max<std::int64_t>(length, 0);
    }
};
template <class SizeOf>
Line(int, int, SizeOf) -> Line<SizeOf>;  // clang 14 has none for aggregates

auto columnsOf(CellPixels& pixels) {
    return Line{lastColumn, lastColumn, [&](int col) { return pixels.columnPixels(col); }};
}

auto rowsOf(CellPixels& pixels) {
    return Line{lastRow, pixels.firstEqualRow(), [&](int row) { return pixels.rowPixels(row); }};
}

}  // namespace

void placeEnds(Placement& placement, CellPixels& pixels) {
    placement.right = columnsOf(pixels).walk(placement.left, placement.width);
    placement.bottom = rowsOf(pixels).walk(placement.top, placement.height);
}

void measureBetween(Placement& placement, CellPixels& pixels) {
    placement.width = columnsOf(pixels).distance(placement.left, placement.right);
    placement.height = rowsOf(pixels).distance(placement.top, placement.bottom);
}

void placeFromOrigin(Placement& placement, std::int64_t x, std::int64_t y, CellPixels& pixels) {
    placement.left = columnsOf(pixels).walk({}, x);
    placement.top = rowsOf(pixels).walk({}, y);
    placeEnds(placement, pixels);
}

std::int64_t pixelsOf(std::int64_t emu) {
    const std::int64_t half = emu < 0 ? -emuPerPixel / 2 : emuPerPixel / 2;
    return std::clamp(emu / emuPerPixel + (emu % emuPerPixel + half) / emuPerPixel, -longestLength, longestLength);
}

std::int64_t pixelsOf(std::string_view length) {
    std::int64_t emu = 0;
    const char* const end = length.data() + length.size();
    const auto whole = std::from_chars(length.data(), end, emu);
    if (whole.ec == std::errc() && whole.ptr == end) return pixelsOf(emu);
    double number = 0;
    const auto real = std::from_chars(length.data(), end, number, std::chars_format::fixed);
    if (real.ec != std::errc()) return 0;
    for (const Unit& unit : units) {
        if (std::string_view(real.ptr, static_cast<std::size_t>(end - real.ptr)) != unit.name) continue;
        const double scaled = number * unit.emu;
        constexpr double limit = static_cast<double>(longestLength * emuPerPixel);
        return pixelsOf(static_cast<std::int64_t>(std::llround(std::clamp(scaled, -limit, limit))));
    }
    return 0;
}

std::string emuText(std::int64_t pixels) {
    return std::to_string(pixels * emuPerPixel);
}

int clampToInt(std::int64_t value) {
    constexpr std::int64_t lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(value, lowest, highest));
}

}  // namespace vellum::xlsx
