#include "drawing/objects/anchor.h"

#include <algorithm>
#include <cmath>

#include "drawing/art/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

constexpr int columnParts = 1024, rowParts = 256;
constexpr std::uint16_t beforeCell = 32767;

/// A part of a cell that is `pixels` wide, `parts` being all of it.
std::uint16_t partOf(std::int64_t rest, int pixels, int parts) {
    if (rest < 0) return beforeCell;
    if (pixels <= 0) return 0;
    const double part = std::round(static_cast<double>(rest) / pixels * parts);
    return static_cast<std::uint16_t>(std::min(part, 65535.0));
}

int pixelsOf(std::uint16_t part, int pixels, int parts) {
    const int within = std::min<int>(part, parts);
    return static_cast<int>(std::round(static_cast<double>(within) * pixels / parts));
}

/// Where an extent ends that begins at the edge of a cell: the cell, and how far into it.
struct End {
    int cell;
    std::int64_t rest;
};
template <class Pixels>
End walk(int cell, std::int64_t extent, int limit, Pixels&& pixels) {
    for (int size = pixels(cell); extent >= size; size = pixels(cell)) {
        extent -= size;
        if (++cell >= limit) throw vlerror(msg::picturePosition);
    }
    return {cell, extent};
}

/// From a point in one cell to a point in another one or the same, at least 0.
template <class Pixels>
std::int64_t extentBetween(int first, int fromStart, int last, int intoLast, Pixels&& pixels) {
    std::int64_t extent = intoLast - fromStart;
    for (int cell = first; cell < last; ++cell) extent += pixels(cell);
    return std::max<std::int64_t>(extent, 0);
}

}  // namespace

CutOffsets cutOffsets(const DrawingContext& context, PixelPlace& place) {
    const int width = context.columnPixels(place.col), height = context.rowPixels(place.row);
    const CutOffsets cut{place.x > width, place.y > height};
    place.x = std::min(place.x, width);
    place.y = std::min(place.y, height);
    return cut;
}

AnchorFields anchorFor(const DrawingContext& context, const PixelPlace& place, std::uint16_t flags) {
    const auto columnPixels = [&](int col) { return context.columnPixels(col); };
    const auto rowPixels = [&](int row) { return context.rowPixels(row); };
    const End right = walk(place.col, place.width + place.x, sheetColumns, columnPixels);
    const End bottom = walk(place.row, place.height + place.y, sheetRows, rowPixels);
    AnchorFields anchor;
    anchor.flags = flags;
    anchor.colL = static_cast<std::uint16_t>(place.col);
    anchor.dxL = partOf(place.x, columnPixels(place.col), columnParts);
    anchor.rwT = static_cast<std::uint16_t>(place.row);
    anchor.dyT = partOf(place.y, rowPixels(place.row), rowParts);
    anchor.colR = static_cast<std::uint16_t>(right.cell);
    anchor.dxR = partOf(right.rest, columnPixels(right.cell), columnParts);
    anchor.rwB = static_cast<std::uint16_t>(bottom.cell);
    anchor.dyB = partOf(bottom.rest, rowPixels(bottom.cell), rowParts);
    return anchor;
}

PixelPlace placeOf(const DrawingContext& context, const AnchorFields& anchor) {
    const auto columnPixels = [&](int col) { return context.columnPixels(col); };
    const auto rowPixels = [&](int row) { return context.rowPixels(row); };
    const int colL = std::min<int>(anchor.colL, sheetColumns - 1), colR = std::min<int>(anchor.colR, sheetColumns - 1);
    PixelPlace place;
    place.row = anchor.rwT;
    place.col = colL;
    place.x = pixelsOf(anchor.dxL, columnPixels(colL), columnParts);
    place.y = pixelsOf(anchor.dyT, rowPixels(anchor.rwT), rowParts);
    place.width =
        extentBetween(colL, place.x, colR, pixelsOf(anchor.dxR, columnPixels(colR), columnParts), columnPixels);
    place.height = extentBetween(anchor.rwT, place.y, anchor.rwB, pixelsOf(anchor.dyB, rowPixels(anchor.rwB), rowParts),
                                 rowPixels);
    return place;
}

}  // namespace vellum::drawing
