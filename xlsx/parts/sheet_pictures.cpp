#include "xlsx/parts/sheet_pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include "engine/failure/vlerror.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"
#include "xlsx/package/content_type_names.h"
#include "xlsx/package/content_types.h"
#include "xlsx/package/relationships.h"
#include "xlsx/parts/anchor_place.h"
#include "xlsx/parts/drawing.h"
#include "xlsx/parts/object_messages.h"
#include "xlsx/parts/pictures.h"
#include "xlsx/parts/sheet_parts.h"

namespace vellum::xlsx {
namespace {

constexpr std::string_view linkScheme = "file:///";

/// A picture's pixels at the density of the screen, times the scale.
int scaledSide(int pixels, int dpi, double scale) {
    const double side = pixels * scale * defaultDpi / dpi;
    constexpr double longest = std::numeric_limits<int>::max();
    return side > 0 ? static_cast<int>(std::lround(std::min(side, longest))) : 0;
}

}  // namespace

template <class Tag>
Drawing<Tag>* SheetPictures<Tag>::findDrawing() {
    const auto* const element = _sheet.find_drawing();
    if (!element) return nullptr;
    const Relationships* const relationships = _package.findRelationshipsOf(_path);
    const std::string target = relationships ? relationships->targetById(element->id()) : std::string();
    if (target.empty()) return nullptr;
    _drawingPath = partOfTarget(_path, target, _package);
    return dynamic_cast<Drawing<Tag>*>(_package.findPart(_drawingPath));
}

template <class Tag>
Drawing<Tag>& SheetPictures<Tag>::requireDrawing() {
    Drawing<Tag>* const drawing = findDrawing();
    if (!drawing) throw vlerror(msg::drawingNotFound);
    return *drawing;
}

template <class Tag>
Drawing<Tag>& SheetPictures<Tag>::ensureDrawing() {
    if (Drawing<Tag>* const drawing = findDrawing()) return *drawing;
    if (_sheet.isset_drawing()) throw vlerror(msg::drawingNotAccessible);
    return makeDrawing();
}

template <class Tag>
Drawing<Tag>& SheetPictures<Tag>::makeDrawing() {
    ContentTypes& contentTypes = _package.requireContentTypes();
    unsigned number = 0;
    do _drawingPath = "/xl/drawings/drawing" + std::to_string(++number) + ".xml";
    while (_package.findPart(_drawingPath));
    auto made = std::make_unique<Drawing<Tag>>();
    Drawing<Tag>& drawing = *made;
    _package.putPart(_drawingPath, std::move(made));
    contentTypes.setOverride(_drawingPath, type::drawing);
    _sheet.drawing().id(_package.ensureRelationshipsOf(_path).add(std::string(rel::transitional) + "drawing",
                                                                  relativeTarget(_path, _drawingPath)));
    return drawing;
}

/// The Id of a new relationship of the drawing, to an image part or to a file.
template <class Tag>
std::string SheetPictures<Tag>::addImage(const std::string& path, const std::string& link) {
    Relationships& relationships = _package.ensureRelationshipsOf(_drawingPath);
    const std::string image = std::string(rel::transitional) + "image";
    if (!link.empty()) return relationships.add(image, std::string(linkScheme) + link, true);
    return relationships.add(image, relativeTarget(_drawingPath, path));
}

template <class Tag>
std::size_t SheetPictures<Tag>::total() {
    return requireDrawing().pictureTotal();
}

template <class Tag>
void SheetPictures<Tag>::place(const PictureRequest& request) {
    const PictureRecord& record = _package.pictures().at(request.pictureId, msg::pictureIdOutOfRange);
    Drawing<Tag>& drawing = ensureDrawing();
    NewPicture picture;
    picture.mode = request.mode;
    picture.isLink = !record.linkPath.empty();
    picture.relationshipId = addImage(record.path, record.linkPath);
    picture.placement.left = {request.col, request.offsetX};
    picture.placement.top = {request.row, request.offsetY};
    picture.placement.width = request.width < 0 ? record.width : request.width;
    picture.placement.height = request.height < 0 ? record.height : request.height;
    placeEnds(picture.placement, _pixels);
    drawing.appendPicture(picture);
}

template <class Tag>
void SheetPictures<Tag>::placeScaled(PictureRequest request, double scale) {
    const PictureRecord& record = _package.pictures().at(request.pictureId, msg::pictureIdOutOfRange);
    request.width = scaledSide(record.width, record.dpiX, scale);
    request.height = scaledSide(record.height, record.dpiY, scale);
    place(request);
}

template <class Tag>
PictureOnSheet SheetPictures<Tag>::at(int index) {
    Drawing<Tag>& drawing = requireDrawing();
    if (index < 0 || static_cast<std::size_t>(index) >= drawing.pictureTotal()) {
        throw vlerror(msg::pictureIndexOutOfRange);
    }
    const auto& anchor = drawing.pictureAnchor(static_cast<std::size_t>(index));
    PictureOnSheet found;
    found.placement = placementOf(anchor, _pixels);
    const Relationships* const relationships = _package.findRelationshipsOf(_drawingPath);
    if (!relationships) throw vlerror(msg::drawingRelationshipsNotFound);
    const auto* const fill = pictureOf(anchor)->find_blipFill();
    const auto* const blip = fill ? fill->find_blip() : nullptr;
    if (!blip) return found;
    PictureList& pictures = _package.pictures();
    if (blip->isset_embed()) {
        const std::string target = relationships->targetById(blip->embed());
        if (!target.empty()) found.pictureId = pictures.indexOfPath(partOfTarget(_drawingPath, target, _package));
    }
    if (blip->isset_link()) {
        found.link = relationships->targetById(blip->link());
        const std::string_view target = found.link;
        const bool isFile = target.starts_with(linkScheme);
        const int linked = isFile ? pictures.indexOfLink(target.substr(linkScheme.size())) : -1;
        if (linked >= 0) found.link.erase(0, linkScheme.size());
        if (found.pictureId < 0) found.pictureId = linked;
    }
    return found;
}

template <class Tag>
void SheetPictures<Tag>::removeAt(int row, int col) {
    Drawing<Tag>* const drawing = findDrawing();
    const std::size_t count = drawing ? drawing->pictureTotal() : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Placement place = placementOf(drawing->pictureAnchor(i), _pixels);
        if (place.top.cell == row && place.left.cell == col) return drawing->removePicture(i);
    }
    throw vlerror(msg::pictureNotFound);
}

template <class Tag>
void SheetPictures<Tag>::remove(int index) {
    Drawing<Tag>* const drawing = findDrawing();
    if (!drawing || index < 0 || static_cast<std::size_t>(index) >= drawing->pictureTotal()) {
        throw vlerror(msg::pictureIndexOutOfRange);
    }
    drawing->removePicture(static_cast<std::size_t>(index));
}

template class SheetPictures<ooxml::excelNormal_tag>;
template class SheetPictures<ooxml::excelStrict_tag>;

}  // namespace vellum::xlsx
