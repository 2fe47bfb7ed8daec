// Places of shapes, in pixels and as files have them.
#pragma once
#include <cstdint>

#include "drawing/art/fixed_records.h"
#include "drawing/objects/drawing_context.h"

namespace vellum::drawing {

/// The cell of the top left corner, how far into it that lies, and the size: in pixels.
struct PixelPlace {
    int row = 0, col = 0;
    int x = 0, y = 0;
    std::int64_t width = 0, height = 0;
};

/// What the sheet's cells are: those of a binary workbook.
inline constexpr int sheetColumns = 256, sheetRows = 65536;

/// Which offsets were wider or higher than the cell, and are cut to it.
struct CutOffsets {
    bool x = false, y = false;
};

/// Cuts the offsets to the cell's size.
CutOffsets cutOffsets(const DrawingContext& context, PixelPlace& place);

/// Throws "incorrect picture position" when the place goes beyond the sheet.
AnchorFields anchorFor(const DrawingContext& context, const PixelPlace& place, std::uint16_t flags);

/// The other way round. What lies beyond its cell counts as its end.
PixelPlace placeOf(const DrawingContext& context, const AnchorFields& anchor);

}  // namespace vellum::drawing
