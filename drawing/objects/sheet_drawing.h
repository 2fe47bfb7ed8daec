// The drawing of a sheet: shapes, and the objects, texts and charts that belong to them.
#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "drawing/objects/drawing_context.h"
#include "drawing/objects/drawing_unit.h"
#include "drawing/records/obj.h"
#include "drawing/records/text_object.h"

namespace vellum::drawing {

/// The block of records from the first MsoDrawing to the selection. The bodies of all MsoDrawing records, one behind
/// the other, are one tree with exact lengths; the pieces in which they lie are what is kept and written back, and the
/// tree is read over them to find the shapes. A change touches the bytes of the shape that comes or goes, the lengths
/// of the containers around it and the drawing's counts, and nothing else.
class SheetDrawing {
public:
    SheetDrawing() = default;
    SheetDrawing(SheetDrawing&&) = default;
    SheetDrawing& operator=(SheetDrawing&&) = default;

    // Loading.

    /// Whether a record of this identifier begins or goes on with a drawing.
    static bool isPart(std::uint16_t id);
    /// Reads from behind the header of such a record to the end of the block. A later block goes on with an earlier.
    void readBlock(Xls& in, RecordHeader header);
    /// When all of the sheet is read. Throws when a count or length of a known record cannot be true.
    void finishLoad();

    void write(Xls& out) const;
    [[nodiscard]] bool empty() const { return _units.empty() && _selection.empty(); }
    /// Of what is kept without being understood: charts, and what is no drawing.
    [[nodiscard]] std::size_t unreadBytes() const;

    // Shapes.

    /// A shape as an index of its unit; valid until the next change.
    struct ShapeRef {
        Units::const_iterator unit;
        std::size_t index = 0;

        [[nodiscard]] const PlacedShape& operator*() const { return unit->shapes[index]; }
        [[nodiscard]] const PlacedShape* operator->() const { return &unit->shapes[index]; }
    };
    /// In file order, without the shape of the drawing itself.
    template <class Visit>
    void forEachShape(Visit&& visit) const;
    /// The shapes that show a picture of the book's list, in file order.
    [[nodiscard]] const std::vector<ShapeRef>& pictures() const;
    /// Null when the shape has none.
    [[nodiscard]] static const Obj* objectOf(ShapeRef shape);
    /// The text behind the object of that number; null when there is no such object, or no text behind it.
    [[nodiscard]] const TextObject* textOfObject(std::uint16_t objectId) const;
    [[nodiscard]] std::optional<ShapeRef> shapeOfObject(std::uint16_t objectId) const;
    /// Where a shape stands: its own anchor, or that of the outermost group around it. Null when there is none.
    [[nodiscard]] const AnchorFields* anchorOf(ShapeRef shape) const;
    /// Whether no group holds the shape; a group that no other holds counts as one shape.
    [[nodiscard]] bool standsAlone(const PlacedShape& shape) const {
        return shape.isGroup ? at(shape.container).parent == 1 : shape.container <= 1;
    }
    /// Place in the book's list, from 1, of the picture that the shape shows; 0 when it shows none.
    [[nodiscard]] static std::uint32_t pictureOf(const PlacedShape& shape);

    /// Whether the bytes are a tree of the published form, whose shapes can be found and changed.
    [[nodiscard]] bool hasTree() const { return _hasTree; }
    /// Number of the drawing, 0 when the sheet has none.
    [[nodiscard]] std::uint32_t dgid() const { return _hasTree ? _fdg.header.recInstance : 0; }

    // Changes.

    /// Adds a shape behind all others, `object` behind it, and `text` behind its text box, which is its last record.
    /// Gives the shape its identifier. Makes the drawing when the sheet has none.
    void addShape(DrawingContext& context, OfficeArtSpContainer shape, std::unique_ptr<Obj> object,
                  std::unique_ptr<TextObject> text);
    /// A note names this object, whether it is there or not: nothing new gets its number.
    void nameObject(std::uint16_t objectId) { _named.push_back(objectId); }
    /// An object number that is free on the sheet. Throws when none is.
    std::uint16_t newObjectId() const;
    void removeShape(DrawingContext& context, ShapeRef shape);

    /// Makes an empty drawing the copy of one of another sheet of the book: the same bytes but for identifiers of its
    /// own. Objects with data in storages of the file stay behind.
    void copyWithin(DrawingContext& context, const SheetDrawing& source);
    /// Before the sheet goes: takes its shapes and those of its charts out of the group's counts.
    void leaveBook(DrawingGroup& group);

private:
    void addObject(Xls& in, std::unique_ptr<ObjBase> object, std::size_t recordSize);
    void addPiece(Xls& in, RecordHeader header, bool opens);
    void placeShapes(OfficeArtDgContainer& drawing);
    void writeAsLoaded(Xls& out, const DrawingUnit& unit) const;
    void writeAnew(Xls& out, const DrawingUnit& unit, std::size_t& bytesBefore) const;

    [[nodiscard]] bool isCutWithinHeaders() const;
    void prepareChange(DrawingContext& context);
    void makeDrawing(DrawingContext& context);
    [[nodiscard]] Units::iterator unitForNewShape();
    void changeLengths(int container, std::int64_t difference);
    static std::byte& byteAt(PieceOffset place);
    static std::uint32_t number(PieceOffset place);
    static void setNumber(PieceOffset place, std::uint32_t value);
    void setShapeCount(DrawingContext& context, std::uint32_t count);
    void noteSpid(std::uint32_t spid);
    [[nodiscard]] bool isSelected(std::uint32_t spid) const;
    [[nodiscard]] const PlacedContainer& at(int container) const {
        return _containers[static_cast<std::size_t>(container)];
    }
    /// Index among the objects of the shape's unit, or their number.
    [[nodiscard]] static std::size_t objectIndexOf(ShapeRef shape);
    [[nodiscard]] const TextObject* textBehind(Units::const_iterator unit, std::size_t object) const;
    void forgetObject(DrawingGroup& group, Units::iterator unit, std::size_t index);
    void eraseBytes(Units::iterator unit, std::size_t offset, std::size_t size);
    void mergeIntoNext(Units::iterator unit);
    void forgetPicture(ShapeRef shape);
    void joinPictures(Units::iterator unit, Units::iterator next);
    void indexObjects() const;
    void removeStored(DrawingContext& context);

    Units _units;
    std::vector<std::byte> _selection;  // in wire form
    OfficeArtFDG _fdg;
    std::vector<PlacedContainer> _containers;
    bool _hasTree = false;
    bool _changed = false;
    std::optional<PieceOffset> _groupEnd;    // of the top group; until the first change
    std::optional<Units::iterator> _behind;  // the first unit behind the top group, if any; once something was changed
    std::uint32_t _highestSpid = 0;
    std::uint32_t _shapeTotal = 1;  // with that of the drawing itself; once something was changed

    mutable bool _objectsIndexed = false;
    mutable std::unordered_map<std::uint16_t, Units::const_iterator> _unitOfObject;
    mutable std::uint16_t _highestObject = 0;  // with those that notes name
    std::vector<std::uint16_t> _named;         // by notes
    mutable std::optional<std::vector<ShapeRef>> _pictures;
};

template <class Visit>
void SheetDrawing::forEachShape(Visit&& visit) const {
    for (auto unit = _units.begin(); unit != _units.end(); ++unit) {
        for (std::size_t i = 0; i < unit->shapes.size(); ++i) {
            const PlacedShape& shape = unit->shapes[i];
            if (!shape.isGroup || shape.container > 1) visit(ShapeRef{unit, i});
        }
    }
}

}  // namespace vellum::drawing
