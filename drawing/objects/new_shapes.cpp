#include "drawing/objects/new_shapes.h"

namespace vellum::drawing {
namespace {

constexpr std::uint16_t pictureFrame = 75, textBox = 202;  // types of shapes

// As other programs write the box of a comment: its colours and margins are the application's own, the line has no
// ends to connect, a shadow, and it stays hidden until the cell is pointed at.
constexpr ArtProperty noteProperties[] = {
    {property::lTxid, 14223548},      {property::textBooleans, 0x80008},    {property::connectType, 0},
    {property::fillColor, 0x8000050}, {property::fillBackColor, 0x8000050}, {property::fillBooleans, 0x110010},
    {property::shadowColor, 0},       {property::shadowBooleans, 0x30003},  {property::groupBooleans, 0xA0002},
};

OfficeArtSpContainer shapeOfType(std::uint16_t type, const AnchorFields& anchor) {
    OfficeArtSpContainer shape;
    shape.fsp.header.recInstance = type;
    shape.fsp.flags = FspFields::hasAnchor | FspFields::hasType;
    shape.fsp.make();
    static_cast<AnchorFields&>(shape.anchor) = anchor;
    shape.anchor.make();
    shape.clientData.make();
    return shape;
}

}  // namespace

OfficeArtSpContainer pictureShape(std::uint32_t pib, const AnchorFields& anchor) {
    OfficeArtSpContainer shape = shapeOfType(pictureFrame, anchor);
    PropertyTable& table = shape.fopt.table;
    table.complex = {std::byte{'3'}, {}, {}, {}};  // a name, UTF-16 with a null
    table.add(property::pib | ArtProperty::fBid, pib);
    table.add(property::pibName | ArtProperty::fBid | ArtProperty::fComplex,
              static_cast<std::uint32_t>(table.complex.size()));
    shape.fopt.makeTable();
    return shape;
}

OfficeArtSpContainer noteShape(const AnchorFields& anchor) {
    OfficeArtSpContainer shape = shapeOfType(textBox, anchor);
    shape.fopt.table.entries.assign(std::begin(noteProperties), std::end(noteProperties));
    shape.fopt.makeTable();
    shape.textbox.make();
    return shape;
}

}  // namespace vellum::drawing
