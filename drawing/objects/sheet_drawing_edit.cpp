// Changes of a sheet's drawing.
#include <algorithm>
#include <utility>

#include "biff/container/cursor.h"
#include "drawing/art/messages.h"
#include "drawing/objects/chart_drawings.h"
#include "drawing/objects/chart_sheet.h"
#include "drawing/objects/sheet_drawing.h"
#include "drawing/pictures/drawing_group.h"
#include "drawing/pictures/picture_uses.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

constexpr std::size_t lengthAt = 4;                           // of a header's length
constexpr std::size_t fdgAt = ArtHeader::wireSize;            // of the counts' record, in the drawing
constexpr std::size_t countAt = fdgAt + ArtHeader::wireSize;  // of the number of shapes
constexpr std::size_t lastSpidAt = countAt + 4;
constexpr std::uint32_t countOfFirst = 3;  // what a book's first drawing says it holds, at least

}  // namespace

// Numbers of the tree, wherever the pieces are cut.

std::byte& SheetDrawing::byteAt(PieceOffset place) {
    while (place.offset >= place.unit->piece.size()) {
        place.offset -= place.unit->piece.size();
        ++place.unit;
    }
    return place.unit->piece[place.offset];
}

std::uint32_t SheetDrawing::number(PieceOffset place) {
    std::uint32_t value = 0;
    for (std::size_t i = sizeof value; i-- > 0;) {
        value = value << 8 | std::to_integer<std::uint32_t>(byteAt({place.unit, place.offset + i}));
    }
    return value;
}

void SheetDrawing::setNumber(PieceOffset place, std::uint32_t value) {
    for (std::size_t i = 0; i < sizeof value; ++i, value >>= 8) {
        byteAt({place.unit, place.offset + i}) = static_cast<std::byte>(value);
    }
}

void SheetDrawing::changeLengths(int container, std::int64_t difference) {
    for (; container >= 0; container = at(container).parent) {
        const PieceOffset header = at(container).place;
        const PieceOffset length{header.unit, header.offset + lengthAt};
        setNumber(length, static_cast<std::uint32_t>(number(length) + difference));
    }
}

void SheetDrawing::setShapeCount(DrawingContext& context, std::uint32_t count) {
    context.group().shapesChanged(std::int64_t{count} - _fdg.csp);
    _fdg.csp = count;
    const PieceOffset drawing = at(0).place;
    setNumber({drawing.unit, drawing.offset + countAt}, count);
}

void SheetDrawing::noteSpid(std::uint32_t spid) {
    _highestSpid = std::max(_highestSpid, spid);
    if (spid <= _fdg.spidCur) return;
    _fdg.spidCur = spid;
    const PieceOffset drawing = at(0).place;
    setNumber({drawing.unit, drawing.offset + lastSpidAt}, spid);
}

// A piece shorter than a header is no record of the file: a drawing of which such a piece could be left takes nothing.
bool SheetDrawing::isCutWithinHeaders() const {
    const auto isPartOfHeader = [](std::size_t bytes) { return bytes > 0 && bytes < ArtHeader::wireSize; };
    const auto [last, end] = *_groupEnd;
    const std::size_t behindGroup = last->piece.size() - std::min(end, last->piece.size());
    if (behindGroup > 0 && (isPartOfHeader(end) || isPartOfHeader(behindGroup))) return true;
    for (auto unit = _units.begin(); unit != _units.end(); ++unit) {
        if (isPartOfHeader(unit->piece.size())) return true;
        for (const PlacedShape& shape : unit->shapes) {
            const std::size_t here = unit->piece.size() - shape.offset;
            if (isPartOfHeader(here)) return true;
            std::size_t left = shape.size - std::min(here, shape.size);
            for (auto later = std::next(unit); left > 0 && later != _units.end(); ++later) {
                if (isPartOfHeader(left)) return true;
                left -= std::min(left, later->piece.size());
            }
        }
    }
    return std::ranges::any_of(_containers, [&](const PlacedContainer& container) {
        return isPartOfHeader(container.bytesBehindShapes) ||
               isPartOfHeader(container.place.unit->piece.size() - container.place.offset);
    });
}

// From the first change on pieces are what this class says they are.
void SheetDrawing::prepareChange(DrawingContext& context) {
    if (!_hasTree) {
        const bool hasPieces = std::ranges::any_of(_units, [](const DrawingUnit& unit) { return !unit.piece.empty(); });
        if (hasPieces) throw vlerror(msg::strangeDrawing);
        makeDrawing(context);
        return;
    }
    if (_changed) return;
    if (isCutWithinHeaders()) throw vlerror(msg::strangeDrawing);
    const auto [last, offset] = *_groupEnd;
    _shapeTotal = 0;
    for (const DrawingUnit& unit : _units) {
        for (const PlacedShape& shape : unit.shapes) {
            _highestSpid = std::max(_highestSpid, shape.record->fsp.spid);  // the drawing's own shape may have it
            ++_shapeTotal;
        }
    }
    context.group().coverSpid(_highestSpid);
    _changed = true;
    for (DrawingUnit& unit : _units) unit.records = {};
    auto next = std::next(last);
    if (offset < last->piece.size()) {
        next = _units.emplace(next);
        next->piece.assign(last->piece.begin() + static_cast<std::ptrdiff_t>(offset), last->piece.end());
        last->piece.resize(offset);
        const auto isBehind = [offset = offset](const PlacedShape& shape) { return shape.offset >= offset; };
        const auto moved = std::ranges::find_if(last->shapes, isBehind);
        for (auto shape = moved; shape != last->shapes.end(); ++shape) {
            shape->offset -= offset;
            next->shapes.push_back(std::move(*shape));
        }
        last->shapes.erase(moved, last->shapes.end());
    }
    if (next != _units.end()) _behind = next;
}

void SheetDrawing::makeDrawing(DrawingContext& context) {
    const auto fresh = context.group().newDrawing(context.largestDgid());
    OfficeArtDgContainer drawing;
    drawing.fdg.header.recInstance = fresh.dgid;
    drawing.fdg.csp = fresh.isFirst ? countOfFirst : 1;
    OfficeArtSpContainer& shape = drawing.group.shape;
    shape.fsp.spid = context.group().newSpid(fresh.dgid, 0);
    shape.fsp.flags = FspFields::group | FspFields::patriarch;
    drawing.fdg.spidCur = fresh.isFirst ? shape.fsp.spid + countOfFirst - 1 : shape.fsp.spid;
    if (!fresh.isFirst) context.group().shapesChanged(1);
    drawing.make();
    drawing.fdg.make();
    drawing.group.make();
    shape.make();
    shape.fspgr.make();
    shape.fsp.make();

    DrawingUnit& unit = _units.emplace_back();
    ArtBuffer bytes;
    drawing.write(bytes);
    unit.piece = bytes.take();
    _highestSpid = shape.fsp.spid;
    _changed = _hasTree = true;
    _fdg = drawing.fdg;
    const auto place = std::prev(_units.end());
    const std::size_t groupAt = ArtHeader::wireSize + drawing.fdg.size();
    _containers = {{{place, 0}, -1, nullptr}, {{place, groupAt}, 0, nullptr}};
    const std::size_t size = shape.size();
    unit.shapes.push_back(
        {std::make_unique<OfficeArtSpContainer>(std::move(shape)), groupAt + ArtHeader::wireSize, size, 1, true});
}

// The frame of a drawing without objects, else a new one behind all shapes.
Units::iterator SheetDrawing::unitForNewShape() {
    const auto behind = _behind.value_or(_units.end());
    if (behind != _units.begin()) {
        const auto last = std::prev(behind);
        const bool isFrame = std::ranges::all_of(last->shapes, [](const PlacedShape& s) { return s.isGroup; });
        if (last->objects.empty() && !last->shapes.empty() && isFrame) return last;
    }
    return _units.emplace(behind);
}

std::uint16_t SheetDrawing::newObjectId() const {
    indexObjects();
    if (_highestObject < 0xFFFF) return static_cast<std::uint16_t>(_highestObject + 1);
    std::vector<bool> taken(0x10000);
    for (const std::uint16_t id : _named) taken[id] = true;
    for (std::uint16_t id = 1; id != 0; ++id) {
        if (!taken[id] && !_unitOfObject.contains(id)) return id;
    }
    throw vlerror(msg::tooManyObjects);
}

void SheetDrawing::addShape(DrawingContext& context, OfficeArtSpContainer shape, std::unique_ptr<Obj> object,
                            std::unique_ptr<TextObject> text) {
    prepareChange(context);
    shape.fsp.spid = context.group().newSpid(dgid(), _highestSpid);
    shape.make();
    ArtBuffer buffer;
    shape.write(buffer);
    std::vector<std::byte> bytes = buffer.take();
    const std::size_t size = bytes.size();

    indexObjects();
    const auto unit = unitForNewShape();
    const std::size_t offset = unit->piece.size();
    const std::size_t behindObject = text == nullptr ? 0 : shape.textbox.size();
    unit->piece.insert(unit->piece.end(), bytes.begin(), bytes.end() - static_cast<std::ptrdiff_t>(behindObject));
    _unitOfObject.try_emplace(object->objectId(), unit);
    _highestObject = std::max(_highestObject, object->objectId());
    noteSpid(shape.fsp.spid);
    setShapeCount(context, std::max(_fdg.csp, ++_shapeTotal));
    unit->shapes.push_back({std::make_unique<OfficeArtSpContainer>(std::move(shape)), offset, size, 1, false});
    unit->objects.push_back(std::move(object));
    if (text != nullptr) {
        const auto box = _units.emplace(std::next(unit));
        box->piece.assign(bytes.end() - static_cast<std::ptrdiff_t>(behindObject), bytes.end());
        box->objects.push_back(std::move(text));
    }
    changeLengths(1, static_cast<std::int64_t>(size));
    const ShapeRef added{unit, unit->shapes.size() - 1};
    if (_pictures && pictureOf(*added) != 0) _pictures->push_back(added);
}

void SheetDrawing::removeShape(DrawingContext& context, ShapeRef shape) {
    prepareChange(context);
    const auto unit = _units.erase(shape.unit, shape.unit);  // the same, as one that may be changed
    dropUses(context.group(), *shape->record);
    forgetObject(context.group(), unit, objectIndexOf(shape));
    const PlacedShape gone = std::move(unit->shapes[shape.index]);
    unit->shapes.erase(unit->shapes.begin() + static_cast<std::ptrdiff_t>(shape.index));
    changeLengths(gone.container, -static_cast<std::int64_t>(gone.size));
    setShapeCount(context, std::max(_fdg.csp == 0 ? 0 : _fdg.csp - 1, --_shapeTotal));
    forgetPicture(shape);
    if (isSelected(gone.record->fsp.spid)) _selection.clear();
    eraseBytes(unit, gone.offset, gone.size);
}

// A selection of what is not there would be wrong.
bool SheetDrawing::isSelected(std::uint32_t spid) const {
    constexpr std::size_t firstShape = 3;  // behind the number of shapes, 0, and the one in focus
    if (_selection.size() < recordHeaderSize) return false;
    ArtInput in{std::span(_selection).subspan(recordHeaderSize)};
    std::size_t remaining = in.left();
    OfficeArtFDGSL selection;
    if (selection.read(in, remaining) == 0 || selection.list.numbers.size() < firstShape) return false;
    return std::ranges::count(selection.list.numbers.begin() + firstShape, selection.list.numbers.end(), spid) != 0;
}

// The shapes behind it in its unit move up. Another shape that goes leaves the list as it is, unless units are joined.
void SheetDrawing::forgetPicture(ShapeRef shape) {
    if (!_pictures) return;
    auto at = std::ranges::find_if(
        *_pictures, [&](const ShapeRef& one) { return one.unit == shape.unit && one.index >= shape.index; });
    if (at != _pictures->end() && at->index == shape.index) at = _pictures->erase(at);
    for (; at != _pictures->end() && at->unit == shape.unit; ++at) --at->index;
}

// The shapes of one unit will stand before those of the next.
void SheetDrawing::joinPictures(Units::iterator unit, Units::iterator next) {
    if (!_pictures) return;
    const auto isOfThem = [&](const ShapeRef& shape) { return shape.unit == unit || shape.unit == next; };
    for (auto at = std::ranges::find_if(*_pictures, isOfThem); at != _pictures->end() && isOfThem(*at); ++at) {
        if (at->unit == next) at->index += unit->shapes.size();
        at->unit = next;
    }
}

// The object and what belongs to it, up to the next object.
void SheetDrawing::forgetObject(DrawingGroup& group, Units::iterator unit, std::size_t index) {
    auto& objects = unit->objects;
    if (index >= objects.size()) return;
    const std::uint16_t id = static_cast<const Obj&>(*objects[index]).objectId();
    const auto known = _unitOfObject.find(id);
    if (known != _unitOfObject.end() && known->second == unit) _unitOfObject.erase(known);
    const auto first = objects.begin() + static_cast<std::ptrdiff_t>(index);
    const auto isObj = [](const auto& object) { return dynamic_cast<const Obj*>(object.get()) != nullptr; };
    const auto end = std::find_if(first + 1, objects.end(), isObj);
    for (auto object = first; object != end; ++object) {
        if (dynamic_cast<const ChartSheet*>(object->get()) != nullptr) leaveGroup((*object)->wire(), group);
    }
    objects.erase(first, end);
}

void SheetDrawing::eraseBytes(Units::iterator first, std::size_t offset, std::size_t size) {
    bool firstStays = true;
    for (auto unit = first; size > 0 && unit != _units.end(); offset = 0) {
        auto& piece = unit->piece;
        const std::size_t taken = std::min(size, piece.size() - offset);
        const auto from = piece.begin() + static_cast<std::ptrdiff_t>(offset);
        piece.erase(from, from + static_cast<std::ptrdiff_t>(taken));
        for (PlacedShape& later : unit->shapes) {
            if (later.offset > offset) later.offset -= taken;
        }
        for (PlacedContainer& later : _containers) {
            if (later.place.unit == unit && later.place.offset > offset) later.place.offset -= taken;
        }
        size -= taken;
        // A later unit that is used up held the shape's text box; what stands behind it was its text.
        const auto next = std::next(unit);
        if (piece.empty() && taken > 0) {
            if (_behind == unit) _behind = next == _units.end() ? std::nullopt : std::optional(next);
            if (unit == first) firstStays = false;
            _units.erase(unit);
        }
        unit = next;
    }
    if (firstStays && first->objects.empty()) mergeIntoNext(first);
}

// What is left before a shape that went moves up to the one that follows: its records need an object behind them.
void SheetDrawing::mergeIntoNext(Units::iterator unit) {
    const auto next = std::next(unit);
    if (next == _units.end() || next == _behind || next->piece.empty() || unit == _behind) return;
    joinPictures(unit, next);
    const std::size_t before = unit->piece.size();
    next->piece.insert(next->piece.begin(), unit->piece.begin(), unit->piece.end());
    for (PlacedShape& shape : next->shapes) shape.offset += before;
    for (PlacedContainer& container : _containers) {
        if (container.place.unit == next) container.place.offset += before;
        if (container.place.unit == unit) container.place.unit = next;
    }
    std::ranges::move(next->shapes, std::back_inserter(unit->shapes));
    next->shapes = std::move(unit->shapes);
    _units.erase(unit);
}

}  // namespace vellum::drawing
