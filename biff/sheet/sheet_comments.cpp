// Comments of a sheet's cells.
#include "biff/sheet/drawing_surroundings.h"
#include "drawing/art/messages.h"
#include "drawing/objects/comments.h"
#include "drawing/objects/foreign_copy.h"

namespace vellum {

template <class CharT>
void SheetImplT<CharT>::requireWorksheet() const {
    if (!_parts.isWorksheet()) throw vlerror(drawing::msg::noDrawingOnChart);
}

template <class CharT>
const CharT* SheetImplT<CharT>::readComment(int row, int col) {
    return guard<const CharT*>(nullptr, [&]() -> const CharT* {
        const CellPlace at = place(row, col);
        const Note* const note = _parts.notes.find(at.row, at.col);
        return note == nullptr ? nullptr : give(drawing::commentText(_parts.drawing, *note));
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeComment(int row, int col, const CharT* text, const CharT* author, int width, int height) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        requireWorksheet();
        const std::wstring wideAuthor(_book.widen(author));  // the buffer serves for one text at a time
        DrawingSurroundings surroundings(*this);
        drawing::writeComment(_parts.drawing, _parts.notes, surroundings,
                              {at.row, at.col, _book.widen(text), wideAuthor, width, height});
        return true;
    });
}

template <class CharT>
bool SheetImplT<CharT>::removeComment(int row, int col) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        requireWorksheet();
        DrawingSurroundings surroundings(*this);
        drawing::removeComment(_parts.drawing, _parts.notes, surroundings, at.row, at.col);
        return true;
    });
}

template <class CharT>
void SheetImplT<CharT>::moveComments(bool rows, int first, int difference) {
    if (_parts.notes.empty()) return;
    DrawingSurroundings surroundings(*this);
    drawing::moveComments(_parts.drawing, _parts.notes, surroundings, rows, first, difference);
}

template <class CharT>
void SheetImplT<CharT>::copyDrawing(const SheetImplT& source) {
    if (!_parts.isWorksheet()) return;
    DrawingSurroundings surroundings(*this);
    // What is no tree cannot get identifiers of its own: two sheets would have the same shapes.
    if (!source._parts.drawing.empty() && !source._parts.drawing.hasTree()) return;
    if (&_book == &source._book) {
        _parts.notes = source._parts.notes;
        _parts.drawing.copyWithin(surroundings, source._parts.drawing);
    } else {
        drawing::copyFromOther(_parts.drawing, _parts.notes, surroundings, source._parts.drawing, source._parts.notes,
                               source._book.drawingGroup());
    }
}

}  // namespace vellum
