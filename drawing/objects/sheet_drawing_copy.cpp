// Copies of a sheet's drawing for other sheets, and its end.
#include <algorithm>

#include "drawing/objects/chart_drawings.h"
#include "drawing/objects/chart_sheet.h"
#include "drawing/objects/renumber.h"
#include "drawing/objects/sheet_drawing.h"
#include "drawing/pictures/drawing_group.h"
#include "drawing/pictures/picture_uses.h"

namespace vellum::drawing {

void SheetDrawing::copyWithin(DrawingContext& context, const SheetDrawing& source) {
    std::vector<std::byte> bytes;
    for (const DrawingUnit& unit : source._units) bytes.insert(bytes.end(), unit.piece.begin(), unit.piece.end());
    const std::uint32_t used = std::max(context.largestDgid(), source.dgid());
    _named = source._named;
    if (source._hasTree) renumberDrawing(bytes, context.group(), used);
    auto rest = std::span<const std::byte>(bytes);
    for (const DrawingUnit& unit : source._units) {
        DrawingUnit& copy = _units.emplace_back();
        const auto piece = rest.first(unit.piece.size());
        rest = rest.subspan(piece.size());
        copy.piece.assign(piece.begin(), piece.end());
        copy.records = unit.records;
        for (const auto& object : unit.objects) {
            copy.objects.push_back(object->clone());
            if (auto* const chart = dynamic_cast<ChartSheet*>(copy.objects.back().get()))
                joinGroup(chart->wireToChange(), context.group(), used);
        }
    }
    finishLoad();
    forEachShape([&](ShapeRef shape) { addUses(context.group(), *shape->record); });
    if (source._changed) prepareChange(context);
    removeStored(context);
}

// What lies in a storage of its own in the file would be there once for two objects.
void SheetDrawing::removeStored(DrawingContext& context) {
    const auto isStored = [](const auto& object) {
        const auto* const obj = dynamic_cast<const Obj*>(object.get());
        return obj != nullptr && obj->hasStorage();
    };
    std::vector<std::uint16_t> stored;
    for (const DrawingUnit& unit : _units) {
        for (const auto& object : unit.objects) {
            if (isStored(object)) stored.push_back(static_cast<const Obj&>(*object).objectId());
        }
    }
    for (const std::uint16_t id : stored) {
        if (const auto shape = shapeOfObject(id)) removeShape(context, *shape);
    }
}

void SheetDrawing::leaveBook(DrawingGroup& group) {
    for (const DrawingUnit& unit : _units) {
        for (const auto& object : unit.objects) {
            if (dynamic_cast<const ChartSheet*>(object.get()) != nullptr) leaveGroup(object->wire(), group);
        }
    }
    if (!_hasTree) return;
    forEachShape([&](ShapeRef shape) { dropUses(group, *shape->record); });
    group.removeDrawing(dgid(), _fdg.csp);
}

}  // namespace vellum::drawing
