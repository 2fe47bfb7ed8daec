#include "drawing/objects/sheet_pictures.h"

#include "drawing/art/messages.h"
#include "drawing/objects/new_shapes.h"
#include "drawing/pictures/drawing_group.h"
#include "engine/api/enums.h"
#include "engine/facts/image_messages.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

SheetDrawing::ShapeRef shapeAt(const SheetDrawing& drawing, int index) {
    const auto& pictures = drawing.pictures();
    if (index < 0 || static_cast<std::size_t>(index) >= pictures.size()) throw vlerror(msg::pictureNotFound);
    return pictures[static_cast<std::size_t>(index)];
}

}  // namespace

std::uint16_t anchorFlags(int placement) {
    switch (placement) {
        case moveOnly:
            return AnchorFields::keepsSizeWhenCellsDo;
        case stayInPlace:
            return AnchorFields::staysWhenCellsMove | AnchorFields::keepsSizeWhenCellsDo;
        default:
            return 0;
    }
}

const OfficeArtRecordBase& usablePicture(const DrawingGroup& group, int pictureId) {
    if (pictureId < 0 || static_cast<std::size_t>(pictureId) >= group.pictureTotal())
        throw vlerror(msg::pictureIdOutOfRange);
    const OfficeArtFBSE& entry = group.picture(static_cast<std::size_t>(pictureId));
    const Blip* const blip = entry.picture();
    if (blip == nullptr || blip->content.bytes().empty()) throw vlerror(msg::pictureEmpty);
    return *entry.blip;
}

CutOffsets placePicture(SheetDrawing& drawing, DrawingContext& context, std::uint32_t pictureId, PixelPlace place,
                        std::uint16_t flags) {
    const CutOffsets cut = cutOffsets(context, place);
    const AnchorFields anchor = anchorFor(context, place, flags);
    drawing.addShape(context, pictureShape(pictureId + 1, anchor), Obj::makePicture(drawing.newObjectId()), nullptr);
    context.group().addUse(pictureId);
    return cut;
}

PictureOnSheet pictureAt(const SheetDrawing& drawing, const DrawingContext& context, int index) {
    const auto shape = shapeAt(drawing, index);
    PictureOnSheet found;
    found.id = static_cast<int>(SheetDrawing::pictureOf(*shape)) - 1;
    if (const AnchorFields* const anchor = drawing.anchorOf(shape)) {
        found.place = placeOf(context, *anchor);
        found.rowBottom = anchor->rwB;
        found.colRight = std::min<int>(anchor->colR, sheetColumns - 1);
    }
    return found;
}

void removePicture(SheetDrawing& drawing, DrawingContext& context, int index) {
    drawing.removeShape(context, shapeAt(drawing, index));
}

void removePictureAt(SheetDrawing& drawing, DrawingContext& context, int row, int col) {
    for (const auto& shape : drawing.pictures()) {
        const AnchorFields* const anchor = drawing.anchorOf(shape);
        if (anchor == nullptr || anchor->rwT != row || anchor->colL != col) continue;
        drawing.removeShape(context, SheetDrawing::ShapeRef(shape));
        return;
    }
    throw vlerror(msg::pictureNotFound);
}

}  // namespace vellum::drawing
