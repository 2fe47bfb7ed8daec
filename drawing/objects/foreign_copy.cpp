#include "drawing/objects/foreign_copy.h"

#include <unordered_map>

#include "drawing/objects/comments.h"
#include "drawing/objects/new_shapes.h"
#include "drawing/pictures/drawing_group.h"

namespace vellum::drawing {
namespace {

/// Pictures of the other book that were taken over already.
using Adopted = std::unordered_map<std::uint32_t, std::size_t>;

void copyPicture(SheetDrawing& drawing, DrawingContext& context, const AnchorFields& anchor, std::uint32_t sourceId,
                 const DrawingGroup& sourceGroup, Adopted& adopted) {
    if (sourceId >= sourceGroup.pictureTotal() || sourceGroup.picture(sourceId).picture() == nullptr) return;
    const auto [known, isNew] = adopted.try_emplace(sourceId);
    if (isNew) known->second = context.group().adoptPicture(sourceGroup.picture(sourceId));
    const auto pib = static_cast<std::uint32_t>(known->second + 1);
    drawing.addShape(context, pictureShape(pib, anchor), Obj::makePicture(drawing.newObjectId()), nullptr);
    context.group().addUse(known->second);
}

}  // namespace

void copyFromOther(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const SheetDrawing& source,
                   const Notes& sourceNotes, const DrawingGroup& sourceGroup) {
    Adopted adopted;
    for (const auto& shape : source.pictures()) {
        const Obj* const object = SheetDrawing::objectOf(shape);
        const AnchorFields* const anchor = source.anchorOf(shape);
        if (anchor == nullptr || (object != nullptr && object->hasStorage())) continue;
        copyPicture(drawing, context, *anchor, SheetDrawing::pictureOf(*shape) - 1, sourceGroup, adopted);
    }
    sourceNotes.forEach([&](const Note& note) {
        const auto shape = source.shapeOfObject(note.objectId);
        const AnchorFields* const anchor = shape ? source.anchorOf(*shape) : nullptr;
        addComment(drawing, notes, context, note, commentText(source, note), anchor);
    });
}

}  // namespace vellum::drawing
