// Reading and writing of a sheet's drawing.
#include "drawing/objects/sheet_drawing.h"

#include <algorithm>

#include "biff/container/messages.h"
#include "biff/container/xls.h"
#include "biff/records/raw_record.h"
#include "drawing/art/messages.h"
#include "drawing/objects/chart_sheet.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

constexpr std::size_t shortestPiece = 8;

bool isObject(std::uint16_t id) {
    return id == record_id::Obj || id == record_id::TxO || id == record_id::Bof;
}

std::unique_ptr<ObjBase> makeObject(std::uint16_t id) {
    if (id == record_id::Obj) return std::make_unique<Obj>();
    if (id == record_id::TxO) return std::make_unique<TextObject>();
    return std::make_unique<ChartSheet>();
}

}  // namespace

bool SheetDrawing::isPart(std::uint16_t id) {
    return id == record_id::MsoDrawing || id == record_id::MsoDrawingSelection || isObject(id);
}

// A CONTINUE behind an object goes on with the drawing: what continues a text was counted off with it.
void SheetDrawing::readBlock(Xls& in, RecordHeader header) {
    while (true) {
        if (header.id == record_id::MsoDrawingSelection) {
            const auto wire = takeRaw(in, header);
            _selection.assign(wire.begin(), wire.end());
            return;
        }
        if (isObject(header.id)) {
            addObject(in, makeObject(header.id), header.size);
        } else if (header.id == record_id::MsoDrawing) {
            if (header.size < shortestPiece) throw vlerror(biff::msg::badSize("MsoDrawing"));
            addPiece(in, header, true);
        } else if (_units.back().piece.empty()) {
            addObject(in, std::make_unique<StrayRecord>(header.id), header.size);
        } else {
            addPiece(in, header, !_units.back().objects.empty());
        }
        const std::uint16_t next = in.peekRecordId();
        if (!isPart(next) && next != record_id::Continue) return;
        header = in.readHeader();
    }
}

void SheetDrawing::addObject(Xls& in, std::unique_ptr<ObjBase> object, std::size_t recordSize) {
    if (_units.empty()) _units.emplace_back();
    const std::size_t left = in.remaining();
    if (object->read(in, recordSize) > left + recordHeaderSize) throw vlerror(msg::objectsCorrupt);
    _units.back().objects.push_back(std::move(object));
}

void SheetDrawing::addPiece(Xls& in, RecordHeader header, bool opens) {
    if (opens) _units.emplace_back();
    const auto body = in.take(header.size);
    DrawingUnit& unit = _units.back();
    unit.piece.insert(unit.piece.end(), body.begin(), body.end());
    unit.records.push_back(header);
}

void SheetDrawing::finishLoad() {
    if (_units.empty()) return;
    std::vector<std::byte> bytes;
    for (const DrawingUnit& unit : _units) bytes.insert(bytes.end(), unit.piece.begin(), unit.piece.end());
    ArtInput in(bytes);
    std::size_t remaining = bytes.size();
    OfficeArtDgContainer tree;
    if (tree.read(in, remaining) == 0 || tree.fdg.absent || tree.group.absent || tree.group.shape.absent) return;
    _hasTree = true;
    _fdg = tree.fdg;
    placeShapes(tree);
}

namespace {

/// Walks over the tree in file order and takes its shapes to the units in which they begin.
class ShapePlacer {
public:
    ShapePlacer(Units& units, std::vector<PlacedContainer>& containers) : _units(units), _containers(containers) {
        _unit = _units.begin();
    }

    PieceOffset placeOf(std::size_t position) {
        while (position - _before >= _unit->piece.size() && std::next(_unit) != _units.end()) {
            _before += _unit->piece.size();
            ++_unit;
        }
        return {_unit, position - _before};
    }

    void add(OfficeArtSpgrContainer& group, int parent) {
        const int self = static_cast<int>(_containers.size());
        _containers.push_back({placeOf(group.position), parent, nullptr, parent > 0 ? group.rest.size() : 0});
        if (!group.shape.absent) {
            auto shape = std::make_unique<OfficeArtSpContainer>(std::move(group.shape));
            _containers.back().shape = shape.get();
            add(std::move(shape), self, true);
        }
        for (auto& child : group.children) {
            if (child->header.recType == OfficeArtSpgrContainer::kind.recType) {
                add(static_cast<OfficeArtSpgrContainer&>(*child), self);
            } else {
                add(std::unique_ptr<OfficeArtSpContainer>(static_cast<OfficeArtSpContainer*>(child.release())), self,
                    false);
            }
        }
    }

    void add(std::unique_ptr<OfficeArtSpContainer> shape, int container, bool isGroup) {
        const auto [unit, offset] = placeOf(shape->position);
        const std::size_t size = shape->size();
        unit->shapes.push_back({std::move(shape), offset, size, container, isGroup});
    }

private:
    Units& _units;
    std::vector<PlacedContainer>& _containers;
    Units::iterator _unit;
    std::size_t _before = 0;  // bytes of the units before that one
};

}  // namespace

void SheetDrawing::placeShapes(OfficeArtDgContainer& drawing) {
    ShapePlacer placer(_units, _containers);
    _containers.push_back({placer.placeOf(0), -1, nullptr});
    // What is no shape stays behind all shapes: nothing is found behind it.
    const std::size_t groupEnd = drawing.group.position + drawing.group.size() - drawing.group.rest.size();
    placer.add(drawing.group, 0);
    // The end may be that of a unit's piece, which then holds it, and not the start of the next.
    _groupEnd = placer.placeOf(groupEnd - 1);
    ++_groupEnd->offset;
    if (!drawing.background.absent) {
        placer.add(std::make_unique<OfficeArtSpContainer>(std::move(drawing.background)), 0, false);
    }
}

void SheetDrawing::write(Xls& out) const {
    std::size_t bytes = 0;
    for (const DrawingUnit& unit : _units) {
        if (_changed) {
            writeAnew(out, unit, bytes);
        } else {
            writeAsLoaded(out, unit);
        }
        for (const auto& object : unit.objects) object->write(out);
    }
    out.writeBytes(_selection);
}

void SheetDrawing::writeAsLoaded(Xls& out, const DrawingUnit& unit) const {
    auto rest = std::span(unit.piece);
    for (const RecordHeader& record : unit.records) {
        out.writeRecord(record.id, rest.first(record.size));
        rest = rest.subspan(record.size);
    }
}

// All that goes beyond what one record holds is written as a continuation, as if the drawing were one long record; but
// the very first piece opens as what it is.
void SheetDrawing::writeAnew(Xls& out, const DrawingUnit& unit, std::size_t& bytesBefore) const {
    if (unit.piece.empty()) return;
    const bool fits = bytesBefore + unit.piece.size() <= maxRecordBody;
    std::uint16_t id = fits || bytesBefore == 0 ? record_id::MsoDrawing : record_id::Continue;
    bytesBefore += unit.piece.size();
    for (auto rest = std::span(unit.piece); !rest.empty();) {
        const auto part = rest.first(std::min<std::size_t>(rest.size(), maxRecordBody));
        out.writeRecord(id, part);
        rest = rest.subspan(part.size());
        id = record_id::Continue;
    }
}

std::size_t SheetDrawing::unreadBytes() const {
    std::size_t bytes = 0;
    for (const DrawingUnit& unit : _units) {
        if (!_hasTree) bytes += unit.piece.size();
        for (const auto& object : unit.objects) {
            const bool isRead = dynamic_cast<const Obj*>(object.get()) || dynamic_cast<const TextObject*>(object.get());
            if (!isRead) bytes += object->size();
        }
    }
    return bytes;
}

}  // namespace vellum::drawing
