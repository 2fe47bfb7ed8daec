#include "drawing/records/obj.h"

#include <algorithm>
#include <iterator>

#include "biff/container/cursor.h"
#include "biff/container/sink.h"
#include "drawing/art/messages.h"
#include "engine/failure/vlerror.h"

namespace vellum {
namespace {

/// Types of sub-records.
namespace ft {
constexpr std::uint16_t end = 0, macro = 4, cf = 7, pioGrbit = 8, pictFmla = 9, nts = 13, sbsFmla = 14, gboData = 15,
                        edoData = 16, rboData = 17, cblsData = 18, lbsData = 19, cblsFmla = 20, cmo = 21;
}  // namespace ft

constexpr std::uint16_t cmoSize = 18;

/// What is said when a sub-record is longer than what is left of the record.
struct FormulaPart {
    std::uint16_t type;
    const char* failure;
};
constexpr FormulaPart formulaParts[] = {
    {ft::macro, "error in record FtMacro"},       {ft::pictFmla, "error in record FtPictFmla"},
    {ft::sbsFmla, drawing::msg::objLinkFmla},     {ft::gboData, "error in record FtGboData"},
    {ft::edoData, "error in record FtEdoData"},   {ft::rboData, "error in record FtRboData"},
    {ft::cblsData, "error in record FtCblsData"}, {ft::cblsFmla, drawing::msg::objLinkFmla},
};

// Sorted by type.
struct ObjectType {
    std::uint16_t ot;
    const char* name;
    bool isControl = false;
};
constexpr bool control = true;
constexpr ObjectType objectTypes[] = {
    {0, "group"},
    {1, "line"},
    {2, "rectangle"},
    {3, "oval"},
    {4, "arc"},
    {5, "chart"},
    {6, "text"},
    {7, "button", control},
    {8, "picture"},
    {9, "polygon"},
    {11, "check box", control},
    {12, "option button", control},
    {13, "edit box", control},
    {14, "label", control},
    {15, "dialog box", control},
    {16, "spinner", control},
    {17, "scroll bar", control},
    {18, "list box", control},
    {19, "group box", control},
    {20, "drop-down", control},
    {25, "note"},
    {30, "office art"},
};
static_assert(std::ranges::is_sorted(objectTypes, {}, &ObjectType::ot));

/// Null for types that no list names.
const ObjectType* typeOf(std::uint16_t ot) {
    const auto* const found = std::ranges::lower_bound(objectTypes, ot, {}, &ObjectType::ot);
    return found != std::end(objectTypes) && found->ot == ot ? found : nullptr;
}

void putCmo(Sink& out, std::uint16_t ot, std::uint16_t objectId, std::uint16_t flags) {
    out.putAll(ft::cmo, cmoSize, ot, objectId, flags);
    out.fill(12);
}

std::vector<std::byte> recordOf(const Sink& body) {
    Sink record;
    record.putAll(Obj::id, static_cast<std::uint16_t>(body.size()));
    record.write(body.bytes());
    return {record.bytes().begin(), record.bytes().end()};
}

}  // namespace

std::size_t Obj::read(Xls& in, std::size_t recordSize) {
    readSubRecords(keepRecord(in, {id, static_cast<std::uint16_t>(recordSize)}));
    return _wire.size();
}

void Obj::readSubRecords(std::span<const std::byte> body) {
    Cursor in(body);
    const auto first = in.get<std::uint16_t>(drawing::msg::objRecord);
    const auto size = in.get<std::uint16_t>(drawing::msg::objRecord);
    if (first != ft::cmo || size > in.left() || size < 6) throw vlerror(drawing::msg::objRecord);
    Cursor common(in.take(size));
    _ot = common.get<std::uint16_t>();
    _objectId = common.get<std::uint16_t>();
    while (in.left() >= 2 * sizeof(std::uint16_t)) {
        const auto type = in.get<std::uint16_t>();
        const auto cb = in.get<std::uint16_t>();
        if (type == ft::end || type == ft::lbsData) return;  // the length of a list box is none; it runs to the end
        const auto* const part = std::ranges::find(formulaParts, type, &FormulaPart::type);
        if (cb > in.left()) {
            if (part == std::end(formulaParts)) return;
            throw vlerror(part->failure);
        }
        if (type == ft::pictFmla) _hasStorage = true;
        if (part != std::end(formulaParts)) _hasFormula = true;
        in.skip(cb);
    }
    if (in.left() >= sizeof(std::uint16_t) && in.get<std::uint16_t>() == ft::lbsData)
        throw vlerror(drawing::msg::lbsData);
}

const char* Obj::typeName() const {
    const ObjectType* const type = typeOf(_ot);
    return type == nullptr ? "object" : type->name;
}

bool Obj::isControl() const {
    const ObjectType* const type = typeOf(_ot);
    return type != nullptr && type->isControl;
}

std::unique_ptr<Obj> Obj::makePicture(std::uint16_t objectId) {
    constexpr std::uint16_t flags = 0x6011, plainPicture = 0xFFFF, automatic = 1;
    Sink body;
    putCmo(body, picture, objectId, flags);
    body.putAll(ft::cf, std::uint16_t{2}, plainPicture);
    body.putAll(ft::pioGrbit, std::uint16_t{2}, automatic);
    body.putAll(ft::end, std::uint16_t{0});
    auto made = std::make_unique<Obj>();
    made->_ot = picture;
    made->_objectId = objectId;
    made->_wire = recordOf(body);
    return made;
}

std::unique_ptr<Obj> Obj::makeNote(std::uint16_t objectId) {
    constexpr std::uint16_t flags = 0x4011, ntsSize = 22;
    constexpr std::uint8_t guid[] = {0xFC, 0x53, 0x24, 0xBA, 0x0A, 0xC7, 0x3E, 0x43,
                                     0xB3, 0x4B, 0xA4, 0xE0, 0xCB, 0xE0, 0xAC, 0x98};
    Sink body;
    putCmo(body, note, objectId, flags);
    body.putAll(ft::nts, ntsSize);
    body.write(std::as_bytes(std::span(guid)));
    body.putAll(std::uint16_t{0}, std::uint32_t{16});  // not shared; the last is of no use
    body.putAll(ft::end, std::uint16_t{0});
    auto made = std::make_unique<Obj>();
    made->_ot = note;
    made->_objectId = objectId;
    made->_wire = recordOf(body);
    return made;
}

}  // namespace vellum
