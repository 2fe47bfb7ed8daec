// What lies on the sheet beside its cells: pictures, comments, controls, other shapes.
#include "engine/failure/vlerror.h"
#include "engine/text/conversions.h"
#include "xlsx/layout/row_heights.h"
#include "xlsx/package/relationships.h"
#include "xlsx/parts/comments.h"
#include "xlsx/parts/control_list.h"
#include "xlsx/parts/drawing.h"
#include "xlsx/parts/form_control.h"
#include "xlsx/parts/object_messages.h"
#include "xlsx/parts/sheet_parts.h"
#include "xlsx/sheet/sheet.h"

namespace vellum {
namespace {

void put(int* out, std::int64_t value) {
    if (out) *out = xlsx::clampToInt(value);
}

template <class CharT>
std::basic_string<CharT> converted(std::wstring_view text, bool utf8) {
    if constexpr (std::is_same_v<CharT, wchar_t>) {
        return std::wstring(text);
    } else {
        return toNarrow(text, utf8);
    }
}

}  // namespace

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::columnPixels(int col) {
    return _columns.pixels(static_cast<std::uint32_t>(col), metrics());
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::rowPixels(int row) {
    return xlsx::RowHeights<Tag>(this->_root, metrics()).pixels(findRow(static_cast<std::uint32_t>(row)));
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::firstEqualRow() {
    if (!_numbered) return static_cast<int>(sheetRows);
    return _rows->empty() ? 0 : static_cast<int>(std::min(_rows->back().r(), sheetRows));
}

template <class CharT, class Tag>
xlsx::SheetPictures<Tag> XMLSheetImplT<CharT, Tag>::pictures() {
    return {book(), this->_root, book().sheetPath(_index), *this};
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::pictureTotalOnSheet() {
    return guard(0, [&] { return static_cast<int>(pictures().total()); });
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::sheetPictureAt(int index, int* rowTop, int* colLeft, int* rowBottom, int* colRight,
                                              int* width, int* height, int* offsetX, int* offsetY,
                                              const CharT** linkPath) {
    if (linkPath) *linkPath = nullptr;
    return guard(-1, [&] {
        const xlsx::PictureOnSheet picture = pictures().at(index);
        const xlsx::Placement& place = picture.placement;
        put(rowTop, place.top.cell);
        put(colLeft, place.left.cell);
        put(rowBottom, place.bottom.cell);
        put(colRight, place.right.cell);
        put(width, place.width);
        put(height, place.height);
        put(offsetX, place.left.offset);
        put(offsetY, place.top.offset);
        if (linkPath && !picture.link.empty()) *linkPath = giveUtf8(picture.link);
        if (picture.pictureId < 0) throw vlerror(xlsx::msg::pictureNotFound);
        return picture.pictureId;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::placePicture(int row, int col, int pictureId, double scale, int offsetX, int offsetY,
                                             int placement) {
    return guard(false, [&] {
        place(row, col);
        xlsx::PictureRequest request{row, col, pictureId};
        request.offsetX = offsetX;
        request.offsetY = offsetY;
        request.mode = placement;
        pictures().placeScaled(request, scale);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::placePictureSized(int row, int col, int pictureId, int width, int height, int offsetX,
                                                  int offsetY, int placement) {
    return guard(false, [&] {
        place(row, col);
        pictures().place({row, col, pictureId, width, height, offsetX, offsetY, placement});
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removePictureAt(int row, int col) {
    return guard(false, [&] {
        pictures().removeAt(row, col);
        return true;
    });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removePictureByIndex(int index) {
    return guard(false, [&] {
        pictures().remove(index);
        return true;
    });
}

template <class CharT, class Tag>
Comments<Tag>* XMLSheetImplT<CharT, Tag>::findComments() {
    return dynamic_cast<Comments<Tag>*>(
        book().findPart(xlsx::firstPartOfEnding(book().sheetPath(_index), "comments", book())));
}

/// One text stands for every way in which there is no comment to read.
template <class CharT, class Tag>
const CharT* XMLSheetImplT<CharT, Tag>::readComment(int row, int col) {
    const CharT* const text = guard<const CharT*>(nullptr, [&]() -> const CharT* {
        Comments<Tag>* const list = findComments();
        const auto* const comment = list ? list->find(row, col) : nullptr;
        return comment ? give(list->text(*comment)) : nullptr;
    });
    if (!text) lastError().set(xlsx::msg::commentNotRead);
    return text;
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::writeComment(int, int, const CharT*, const CharT*, int, int) {
    return guard(false, []() -> bool { throw vlerror(xlsx::msg::notSupported); });
}

template <class CharT, class Tag>
bool XMLSheetImplT<CharT, Tag>::removeComment(int, int) {
    return guard(false, []() -> bool { throw vlerror(xlsx::msg::notSupported); });
}

template <class CharT, class Tag>
const std::vector<std::string>& XMLSheetImplT<CharT, Tag>::controls() {
    if (!_controls) _controls = xlsx::controlIds(std::as_const(this->_root).find_controls(), this->_root.extras());
    return *_controls;
}

template <class CharT, class Tag>
int XMLSheetImplT<CharT, Tag>::formControlTotal() {
    return guard(-1, [&] { return static_cast<int>(controls().size()); });
}

template <class CharT, class Tag>
IFormControlT<CharT>* XMLSheetImplT<CharT, Tag>::formControlAt(int index) {
    return guard<IFormControlT<CharT>*>(nullptr, [&] {
        if (index < 0 || static_cast<std::size_t>(index) >= controls().size())
            throw vlerror(xlsx::msg::indexOutOfRange);
        const std::string path = book().sheetPath(_index);
        const Relationships* const relationships = book().findRelationshipsOf(path);
        const std::string target =
            relationships ? relationships->targetById(controls()[static_cast<std::size_t>(index)]) : std::string();
        XFile* const part = target.empty() ? nullptr : book().findPart(xlsx::partOfTarget(path, target, book()));
        auto* const control = dynamic_cast<XMLControlPr<CharT, Tag>*>(part);
        if (!control) throw vlerror(xlsx::msg::noControlProperties);
        control->bind(book());
        return control;
    });
}

template <class CharT, class Tag>
std::vector<SheetComment<CharT>> XMLSheetImplT<CharT, Tag>::comments() {
    using List = std::vector<SheetComment<CharT>>;
    return guard(List(), [&] {
        List found;
        Comments<Tag>* const list = findComments();
        if (!list) return found;
        for (const auto& entry : list->entries()) {
            SheetComment<CharT>& comment = found.emplace_back();
            comment.row = static_cast<int>(entry.row);
            comment.col = static_cast<int>(entry.col);
            comment.text = converted<CharT>(list->text(entry), book().isUtf8());
            if (const auto author = list->author(entry)) comment.author = converted<CharT>(*author, book().isUtf8());
        }
        return found;
    });
}

template <class CharT, class Tag>
std::vector<SheetShape> XMLSheetImplT<CharT, Tag>::shapes() {
    return guard(std::vector<SheetShape>(), [&] {
        auto all = pictures();
        const Drawing<Tag>* const drawing = all.findDrawing();
        return drawing ? drawing->shapes(*this) : std::vector<SheetShape>();
    });
}

}  // namespace vellum
