// Pictures on a sheet.
#pragma once
#include <cstdint>
#include <optional>

#include "drawing/objects/anchor.h"
#include "drawing/objects/sheet_drawing.h"

namespace vellum::drawing {

/// How a picture follows the cells beneath it; other codes count as the first.
std::uint16_t anchorFlags(int placement);

/// Throws when the book has no such picture, or no data of it.
const OfficeArtRecordBase& usablePicture(const DrawingGroup& group, int pictureId);

/// Places a picture of the book; answers which offsets were cut to the cell.
CutOffsets placePicture(SheetDrawing& drawing, DrawingContext& context, std::uint32_t pictureId, PixelPlace place,
                        std::uint16_t flags);

struct PictureOnSheet {
    int id = 0;
    PixelPlace place;
    int rowBottom = 0, colRight = 0;
};
/// Throws "picture not found" when there are fewer.
PictureOnSheet pictureAt(const SheetDrawing& drawing, const DrawingContext& context, int index);
void removePicture(SheetDrawing& drawing, DrawingContext& context, int index);
/// The first one whose top left corner lies in the cell.
void removePictureAt(SheetDrawing& drawing, DrawingContext& context, int row, int col);

}  // namespace vellum::drawing
