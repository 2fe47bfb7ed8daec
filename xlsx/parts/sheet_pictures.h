// The pictures on one sheet.
#pragma once
#include <string>

#include "ooxml/generated/dialect.h"
#include "xlsx/package/package_context.h"
#include "xlsx/parts/anchor.h"

namespace vellum {

template <class Tag>
class Drawing;

namespace xlsx {

/// A place for a picture: pixels from the cell's corner, and a size in pixels.
struct PictureRequest {
    int row = 0, col = 0;
    int pictureId = 0;
    int width = -1, height = -1;  // below 0: that of the picture
    int offsetX = 0, offsetY = 0;
    int mode = 0;  // a PicturePlacement
};

/// A picture that lies on the sheet.
struct PictureOnSheet {
    Placement placement;
    int pictureId = -1;
    std::string link;  // the file of a linked picture, or what the drawing says of one that nobody knows
};

/// Made for one operation, with all it needs. Operations throw their texts.
template <class Tag>
class SheetPictures {
public:
    using c_worksheet = typename ooxml::dialect<Tag>::c_worksheet;

    /// `path` is that of the sheet's part.
    SheetPictures(PackageContext& package, c_worksheet& sheet, std::string path, CellPixels& pixels)
        : _package(package), _sheet(sheet), _path(std::move(path)), _pixels(pixels) {}

    [[nodiscard]] std::size_t total();
    void place(const PictureRequest& request);
    void placeScaled(PictureRequest request, double scale);
    /// A picture that is not among those of the book is given with the id -1.
    PictureOnSheet at(int index);
    void removeAt(int row, int col);
    void remove(int index);

    /// Null when the sheet has none.
    Drawing<Tag>* findDrawing();

private:
    Drawing<Tag>& requireDrawing();
    Drawing<Tag>& ensureDrawing();
    Drawing<Tag>& makeDrawing();
    std::string addImage(const std::string& path, const std::string& link);

    PackageContext& _package;
    c_worksheet& _sheet;
    std::string _path;
    CellPixels& _pixels;
    std::string _drawingPath;  // once found or made
};

extern template class SheetPictures<ooxml::excelNormal_tag>;
extern template class SheetPictures<ooxml::excelStrict_tag>;

}  // namespace xlsx
}  // namespace vellum
