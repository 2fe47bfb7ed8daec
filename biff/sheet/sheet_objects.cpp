// Comments and shapes of a sheet as reports want them.
#include <algorithm>
#include <tuple>

#include "biff/sheet/sheet.h"
#include "drawing/objects/comments.h"

namespace vellum {
namespace {

ShapeClass classOf(const Obj* object) {
    if (object == nullptr) return ShapeClass::other;
    if (object->ot() == Obj::chart) return ShapeClass::chart;
    return object->isControl() ? ShapeClass::control : ShapeClass::other;
}

}  // namespace

template <class CharT>
std::vector<SheetComment<CharT>> SheetImplT<CharT>::comments() {
    return guard(std::vector<SheetComment<CharT>>(), [&] {
        std::vector<SheetComment<CharT>> found;
        parts().notes.forEach([&](const Note& note) {
            SheetComment<CharT> comment;
            comment.row = note.row;
            comment.col = note.col;
            comment.author = give(note.authorText());
            comment.text = give(drawing::commentText(parts().drawing, note));
            found.push_back(std::move(comment));
        });
        const auto cellOf = [](const SheetComment<CharT>& comment) { return std::tuple(comment.row, comment.col); };
        std::ranges::stable_sort(found, {}, cellOf);
        const auto sameCell = [&](const auto& one, const auto& other) { return cellOf(one) == cellOf(other); };
        found.erase(std::unique(found.begin(), found.end(), sameCell), found.end());
        return found;
    });
}

// A note's object that no note names is a shape like others.
template <class CharT>
std::vector<SheetShape> SheetImplT<CharT>::shapes() {
    return guard(std::vector<SheetShape>(), [&] {
        std::vector<std::uint16_t> noted;
        parts().notes.forEach([&](const Note& note) { noted.push_back(note.objectId); });
        std::ranges::sort(noted);
        std::vector<SheetShape> found;
        const auto& drawing = parts().drawing;
        drawing.forEachShape([&](drawing::SheetDrawing::ShapeRef shape) {
            if (!drawing.standsAlone(*shape) || drawing::SheetDrawing::pictureOf(*shape) != 0) return;
            const Obj* const object = drawing::SheetDrawing::objectOf(shape);
            const bool isNote = object != nullptr && object->ot() == Obj::note;
            if (isNote && std::ranges::binary_search(noted, object->objectId())) return;
            SheetShape one;
            one.type = object == nullptr ? "object" : object->typeName();
            one.shapeClass = classOf(object);
            if (const auto* const anchor = drawing.anchorOf(shape)) {
                constexpr int lastCol = SheetIndex::colLimit - 1;
                one.row = anchor->rwT;
                one.col = std::min<int>(anchor->colL, lastCol);
                one.rowBottom = anchor->rwB;
                one.colRight = std::min<int>(anchor->colR, lastCol);
            }
            found.push_back(std::move(one));
        });
        return found;
    });
}

}  // namespace vellum
