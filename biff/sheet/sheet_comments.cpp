// Comments of a sheet's cells.
#include "biff/sheet/drawing_surroundings.h"
#include "drawing/art/messages.h"
#include "drawing/objects/chart_drawings.h"
#include "drawing/objects/comments.h"
#include "drawing/objects/foreign_copy.h"

namespace vellum {

template <class CharT>
void SheetImplT<CharT>::requireWorksheet() const {
    if (!parts().isWorksheet()) throw vlerror(drawing::msg::noDrawingOnChart);
}

template <class CharT>
const CharT* SheetImplT<CharT>::readComment(int row, int col) {
    return guard<const CharT*>(nullptr, [&]() -> const CharT* {
        const CellPlace at = place(row, col);
        const Note* const note = parts().notes.empty() ? nullptr : edit().notes.find(at.row, at.col);
        return note == nullptr ? nullptr : give(drawing::commentText(parts().drawing, *note));
    });
}

template <class CharT>
bool SheetImplT<CharT>::writeComment(int row, int col, const CharT* text, const CharT* author, int width, int height) {
    return guard(false, [&] {
        const CellPlace at = place(row, col);
        requireWorksheet();
        const std::wstring wideAuthor(_book.widen(author));  // the buffer serves for one text at a time
        DrawingSurroundings surroundings(*this);
        drawing::writeComment(edit().drawing, edit().notes, surroundings,
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
        drawing::removeComment(edit().drawing, edit().notes, surroundings, at.row, at.col);
        return true;
    });
}

template <class CharT>
void SheetImplT<CharT>::moveComments(bool rows, int first, int difference) {
    if (parts().notes.empty()) return;
    DrawingSurroundings surroundings(*this);
    drawing::moveComments(edit().drawing, edit().notes, surroundings, rows, first, difference);
}

template <class CharT>
void SheetImplT<CharT>::copyDrawing(const SheetImplT& source) {
    DrawingSurroundings surroundings(*this);
    if (!parts().isWorksheet()) {
        drawing::joinGroup(_content.edit().foreign, _book.drawingGroup(), surroundings.largestDgid());
        return;
    }
    // What is no tree cannot get identifiers of its own: two sheets would have the same shapes.
    if (!source.parts().drawing.empty() && !source.parts().drawing.hasTree()) return;
    if (&_book == &source._book) {
        edit().notes = source.parts().notes;
        edit().drawing.copyWithin(surroundings, source.parts().drawing);
    } else {
        drawing::copyFromOther(edit().drawing, edit().notes, surroundings, source.parts().drawing, source.parts().notes,
                               source._book.drawingGroup());
    }
}

template <class CharT>
void SheetImplT<CharT>::releaseDrawing() {
    if (_content.isParked()) return;
    _content.edit().drawing.leaveBook(_book.drawingGroup());
    drawing::leaveGroup(parts().foreign, _book.drawingGroup());
}

}  // namespace vellum
