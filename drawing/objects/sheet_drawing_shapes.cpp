// What is asked about the shapes of a sheet.
#include <algorithm>

#include "drawing/objects/sheet_drawing.h"

namespace vellum::drawing {
namespace {

bool hasObject(const PlacedShape& shape) {
    return !shape.record->clientData.absent;
}

}  // namespace

// Each shape with client data has its object behind it, and a unit mostly one such shape. Where a writer put more of
// them before their objects these follow in the same order.
std::size_t SheetDrawing::objectIndexOf(ShapeRef shape) {
    const DrawingUnit& unit = *shape.unit;
    if (!hasObject(*shape)) return unit.objects.size();
    const auto mine = unit.shapes.begin() + static_cast<std::ptrdiff_t>(shape.index);
    auto behind = std::count_if(mine + 1, unit.shapes.end(), hasObject);
    for (std::size_t i = unit.objects.size(); i-- > 0;) {
        if (dynamic_cast<const Obj*>(unit.objects[i].get()) == nullptr) continue;
        if (behind-- == 0) return i;
    }
    return unit.objects.size();
}

const Obj* SheetDrawing::objectOf(ShapeRef shape) {
    const std::size_t at = objectIndexOf(shape);
    return at < shape.unit->objects.size() ? static_cast<const Obj*>(shape.unit->objects[at].get()) : nullptr;
}

// Behind the object, or in the next unit, where the shape's bytes go on with the header of its text box.
const TextObject* SheetDrawing::textBehind(Units::const_iterator unit, std::size_t object) const {
    const auto& objects = unit->objects;
    for (std::size_t i = object + 1; i < objects.size(); ++i) {
        if (dynamic_cast<const Obj*>(objects[i].get()) != nullptr) return nullptr;
        if (const auto* const text = dynamic_cast<const TextObject*>(objects[i].get())) return text;
    }
    const auto next = std::next(unit);
    if (next == _units.end() || !next->shapes.empty() || next->objects.empty()) return nullptr;
    return dynamic_cast<const TextObject*>(next->objects.front().get());
}

void SheetDrawing::indexObjects() const {
    if (_objectsIndexed) return;
    _unitOfObject.clear();
    _highestObject = _named.empty() ? 0 : *std::max_element(_named.begin(), _named.end());
    for (auto unit = _units.begin(); unit != _units.end(); ++unit) {
        for (const auto& object : unit->objects) {
            const auto* const obj = dynamic_cast<const Obj*>(object.get());
            if (obj == nullptr) continue;
            _unitOfObject.try_emplace(obj->objectId(), unit);
            _highestObject = std::max(_highestObject, obj->objectId());
        }
    }
    _objectsIndexed = true;
}

const TextObject* SheetDrawing::textOfObject(std::uint16_t objectId) const {
    indexObjects();
    const auto found = _unitOfObject.find(objectId);
    if (found == _unitOfObject.end()) return nullptr;
    const Units::const_iterator unit = found->second;
    for (std::size_t i = 0; i < unit->objects.size(); ++i) {
        const auto* const object = dynamic_cast<const Obj*>(unit->objects[i].get());
        if (object != nullptr && object->objectId() == objectId) return textBehind(unit, i);
    }
    return nullptr;
}

std::optional<SheetDrawing::ShapeRef> SheetDrawing::shapeOfObject(std::uint16_t objectId) const {
    indexObjects();
    const auto found = _unitOfObject.find(objectId);
    if (found == _unitOfObject.end()) return std::nullopt;
    for (std::size_t i = 0; i < found->second->shapes.size(); ++i) {
        const ShapeRef shape{found->second, i};
        const Obj* const object = objectOf(shape);
        if (object != nullptr && object->objectId() == objectId) return shape;
    }
    return std::nullopt;
}

const std::vector<SheetDrawing::ShapeRef>& SheetDrawing::pictures() const {
    if (!_pictures) {
        _pictures.emplace();
        forEachShape([this](ShapeRef shape) {
            if (pictureOf(*shape) != 0) _pictures->push_back(shape);
        });
    }
    return *_pictures;
}

std::uint32_t SheetDrawing::pictureOf(const PlacedShape& shape) {
    const ArtProperty* const pib = shape.record->fopt.table.find(property::pib);
    return pib == nullptr ? 0 : pib->value;
}

const AnchorFields* SheetDrawing::anchorOf(ShapeRef shape) const {
    const OfficeArtSpContainer* record = shape->record.get();
    for (int container = shape->container; container > 1; container = at(container).parent) {
        if (at(container).shape != nullptr) record = at(container).shape;
    }
    return record->anchor.absent ? nullptr : &record->anchor;
}

}  // namespace vellum::drawing
