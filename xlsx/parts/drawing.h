// The drawing of a sheet: anchors, each of which holds one object.
#pragma once
#include <cstddef>
#include <string>
#include <vector>

#include "engine/api/iobjects.h"
#include "ooxml/generated/dialect.h"
#include "ooxml/generated/dml-spreadsheetDrawing/dml-spreadsheetDrawing.h"
#include "ooxml/generated/strictDrawing/strictDrawing.h"
#include "xlsx/package/xml_file.h"
#include "xlsx/parts/anchor.h"

namespace vellum {

namespace xlsx {

/// How a picture is put on a sheet.
struct NewPicture {
    Placement placement;
    int mode = 0;                // a PicturePlacement
    std::string relationshipId;  // of the image, with its number behind "rId"
    bool isLink = false;
};

/// Null when the anchor holds something else.
template <class Anchor>
const auto* pictureOf(const Anchor& anchor) {
    if (const auto* const two = anchor.find_twoCellAnchor()) return two->find_pic();
    if (const auto* const one = anchor.find_oneCellAnchor()) return one->find_pic();
    const auto* const absolute = anchor.find_absoluteAnchor();
    return absolute ? absolute->find_pic() : nullptr;
}

template <class Tag>
void fillPictureAnchor(typename ooxml::dialect<Tag>::drawing::c_EG_Anchor& anchor, const NewPicture& picture);

}  // namespace xlsx

/// Pictures are the anchors that hold a `pic` themselves; what lies in groups, and in alternatives that stand in place
/// of an anchor, is nobody's but the file's.
template <class Tag>
class Drawing final : public XmlFile<typename ooxml::dialect<Tag>::c_wsDr> {
public:
    using XmlFile<typename ooxml::dialect<Tag>::c_wsDr>::XmlFile;
    using Dml = typename ooxml::dialect<Tag>::drawing;
    using Anchor = typename Dml::c_EG_Anchor;

    std::size_t pictureTotal() { return pictures().size(); }
    /// The nth anchor with a picture, by file order; it has to be there.
    const Anchor& pictureAnchor(std::size_t nth);
    void appendPicture(const xlsx::NewPicture& picture);
    void removePicture(std::size_t nth);

    /// Everything but the pictures, and but the shapes that stand for form controls.
    std::vector<SheetShape> shapes(xlsx::CellPixels& pixels) const;

private:
    const std::vector<std::size_t>& pictures();

    std::vector<std::size_t> _pictures;  // places of their anchors, when counted
    bool _counted = false;
};

extern template class Drawing<ooxml::excelNormal_tag>;
extern template class Drawing<ooxml::excelStrict_tag>;

}  // namespace vellum
