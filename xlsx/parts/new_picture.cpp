// The anchor of a picture that is put on a sheet.
#include "engine/api/enums.h"
#include "xlsx/parts/drawing.h"

namespace vellum::xlsx {
namespace {

template <class Marker>
void writeMarker(Marker& marker, const Edge& column, const Edge& row) {
    marker.col(column.cell);
    marker.colOff(emuText(column.offset));
    marker.row(row.cell);
    marker.rowOff(emuText(row.offset));
}

/// The number behind "rId", and one more: what other shapes of the drawing are called is not looked at.
unsigned shapeNumber(const std::string& relationshipId) {
    return static_cast<unsigned>(std::stoul(relationshipId.substr(3))) + 1;
}

/// Position and size here are constants: applications work them out from the anchor.
template <class ShapeProperties>
void fillShape(ShapeProperties& properties) {
    auto& transform = properties.xfrm();
    transform.off().x("685800");
    transform.off().y("904875");
    transform.ext().cx(1219370);
    transform.ext().cy(1219370);
    auto& geometry = properties.prstGeom();
    geometry.prst("rect");
    geometry.avLst();
}

}  // namespace

template <class Tag>
void fillPictureAnchor(typename ooxml::dialect<Tag>::drawing::c_EG_Anchor& anchor, const NewPicture& picture) {
    auto& cells = anchor.twoCellAnchor();
    if (picture.mode == moveOnly) cells.editAs("oneCell");
    if (picture.mode == stayInPlace) cells.editAs("absolute");
    const Placement& place = picture.placement;
    writeMarker(cells.from(), place.left, place.top);
    writeMarker(cells.to(), place.right, place.bottom);

    auto& pic = cells.pic();
    const unsigned number = shapeNumber(picture.relationshipId);
    pic.nvPicPr().cNvPr().id(number);
    pic.nvPicPr().cNvPr().name(L"Picture " + std::to_wstring(number));
    pic.nvPicPr().cNvPicPr().picLocks().noChangeAspect(true);
    auto& blip = pic.blipFill().blip();
    picture.isLink ? blip.link(picture.relationshipId) : blip.embed(picture.relationshipId);
    pic.blipFill().stretch().fillRect();
    fillShape(pic.spPr());
    cells.clientData();
}

template void fillPictureAnchor<ooxml::excelNormal_tag>(drawing::c_EG_Anchor&, const NewPicture&);
template void fillPictureAnchor<ooxml::excelStrict_tag>(strictdrawing::c_EG_Anchor&, const NewPicture&);

}  // namespace vellum::xlsx
