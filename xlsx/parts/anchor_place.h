// The place that an anchor of either dialect gives; for the drawing's own sources.
#pragma once
#include <algorithm>
#include <cstdint>

#include "engine/facts/cell_address.h"
#include "xlsx/parts/anchor.h"

namespace vellum::xlsx {

/// A cell of a marker; files may hold any number.
inline int cellWithin(int cell, std::uint32_t count) {
    return std::clamp(cell, 0, static_cast<int>(count) - 1);
}

template <class Marker>
void readMarker(const Marker* marker, Edge& column, Edge& row) {
    if (!marker) return;
    column = {cellWithin(marker->col(), sheetColumns), pixelsOf(marker->colOff())};
    row = {cellWithin(marker->row(), sheetRows), pixelsOf(marker->rowOff())};
}

template <class Extent>
void readExtent(const Extent* extent, Placement& placement) {
    if (!extent) return;
    placement.width = std::max<std::int64_t>(pixelsOf(static_cast<std::int64_t>(extent->cx())), 0);
    placement.height = std::max<std::int64_t>(pixelsOf(static_cast<std::int64_t>(extent->cy())), 0);
}

template <class TwoCellAnchor>
Placement placeTwoCells(const TwoCellAnchor& anchor, CellPixels& pixels) {
    Placement placement;
    readMarker(anchor.find_from(), placement.left, placement.top);
    placement.right = placement.left;
    placement.bottom = placement.top;
    readMarker(anchor.find_to(), placement.right, placement.bottom);
    measureBetween(placement, pixels);
    return placement;
}

template <class OneCellAnchor>
Placement placeOneCell(const OneCellAnchor& anchor, CellPixels& pixels) {
    Placement placement;
    readMarker(anchor.find_from(), placement.left, placement.top);
    readExtent(anchor.find_ext(), placement);
    placeEnds(placement, pixels);
    return placement;
}

template <class AbsoluteAnchor>
Placement placeAbsolute(const AbsoluteAnchor& anchor, CellPixels& pixels) {
    Placement placement;
    readExtent(anchor.find_ext(), placement);
    const auto* const pos = anchor.find_pos();
    placeFromOrigin(placement, pos ? pixelsOf(pos->x()) : 0, pos ? pixelsOf(pos->y()) : 0, pixels);
    return placement;
}

template <class Anchor>
Placement placementOf(const Anchor& anchor, CellPixels& pixels) {
    if (const auto* const two = anchor.find_twoCellAnchor()) return placeTwoCells(*two, pixels);
    if (const auto* const one = anchor.find_oneCellAnchor()) return placeOneCell(*one, pixels);
    if (const auto* const absolute = anchor.find_absoluteAnchor()) return placeAbsolute(*absolute, pixels);
    return {};
}

}  // namespace vellum::xlsx
