// Pictures on a sheet.
#include "drawing/objects/sheet_pictures.h"

#include "biff/sheet/drawing_surroundings.h"
#include "drawing/art/messages.h"

namespace vellum {

template <class CharT>
int SheetImplT<CharT>::pictureTotalOnSheet() {
    return guard(-1, [&] { return static_cast<int>(parts().drawing.pictures().size()); });
}

template <class CharT>
int SheetImplT<CharT>::sheetPictureAt(int index, int* rowTop, int* colLeft, int* rowBottom, int* colRight, int* width,
                                      int* height, int* offsetX, int* offsetY, const CharT** linkPath) {
    return guard(-1, [&] {
        const auto found = drawing::pictureAt(parts().drawing, DrawingSurroundings(*this), index);
        const auto give = [](int* to, std::int64_t value) {
            if (to != nullptr) *to = static_cast<int>(value);
        };
        give(rowTop, found.place.row);
        give(colLeft, found.place.col);
        give(rowBottom, found.rowBottom);
        give(colRight, found.colRight);
        give(width, found.place.width);
        give(height, found.place.height);
        give(offsetX, found.place.x);
        give(offsetY, found.place.y);
        if (linkPath != nullptr) *linkPath = nullptr;
        return found.id;
    });
}

template <class CharT>
void SheetImplT<CharT>::placeOnSheet(int pictureId, const drawing::PixelPlace& at, int placement) {
    DrawingSurroundings surroundings(*this);
    const auto cut = drawing::placePicture(edit().drawing, surroundings, static_cast<std::uint32_t>(pictureId), at,
                                           drawing::anchorFlags(placement));
    if (cut.x || cut.y)
        lastError().set(cut.x && cut.y ? drawing::msg::offsetsCut
                        : cut.y        ? drawing::msg::offsetYCut
                                       : drawing::msg::offsetXCut);
}

template <class CharT>
bool SheetImplT<CharT>::placePicture(int row, int col, int pictureId, double scale, int offsetX, int offsetY,
                                     int placement) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        requireWorksheet();
        const OfficeArtRecordBase& picture = drawing::usablePicture(_book.drawingGroup(), pictureId);
        const auto scaled = [scale](std::uint32_t pixels) {
            constexpr double most = 1e9;  // beyond any sheet
            const double size = pixels * scale;
            return size > 0.0 ? static_cast<std::int64_t>(std::min(size, most)) : 0;  // no number is no size
        };
        placeOnSheet(
            pictureId,
            {at.row, at.col, offsetX, offsetY, scaled(picture.pictureWidth()), scaled(picture.pictureHeight())},
            placement);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::placePictureSized(int row, int col, int pictureId, int width, int height, int offsetX,
                                          int offsetY, int placement) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        requireWorksheet();
        const OfficeArtRecordBase& picture = drawing::usablePicture(_book.drawingGroup(), pictureId);
        placeOnSheet(pictureId,
                     {at.row, at.col, offsetX, offsetY, width < 0 ? std::int64_t{picture.pictureWidth()} : width,
                      height < 0 ? std::int64_t{picture.pictureHeight()} : height},
                     placement);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::removePictureAt(int row, int col) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        DrawingSurroundings surroundings(*this);
        drawing::removePictureAt(edit().drawing, surroundings, at.row, at.col);
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::removePictureByIndex(int index) {
    return guard(false, [&] {
        DrawingSurroundings surroundings(*this);
        drawing::removePicture(edit().drawing, surroundings, index);
        return true;
    });
}

}  // namespace vellum
