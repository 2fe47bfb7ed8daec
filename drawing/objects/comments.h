// Comments of cells: a note, the shape of its number, and the text of that.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "drawing/objects/sheet_drawing.h"
#include "drawing/records/note.h"

namespace vellum::drawing {

/// The text of a note; empty when it has none.
std::wstring commentText(const SheetDrawing& drawing, const Note& note);

struct NewComment {
    std::uint16_t row = 0, col = 0;
    std::wstring_view text, author;  // no author stands for the engine's own name
    int width = 0, height = 0;       // pixels; below 1 as other programs make a comment
};
/// In place of the cell's comment, if it has one.
void writeComment(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const NewComment& comment);

/// A comment like the note of another sheet; a null anchor stands for none that is known, and a cell that is none.
void addComment(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const Note& note, std::wstring_view text,
                const AnchorFields* anchor);

/// A note of the layout before shapes, which has its text itself.
struct OlderNote {
    std::uint16_t row = 0, col = 0;
    std::wstring text;
};
/// Made a comment as `writeComment` makes it; where the sheet has no room for its box that has the cell's size.
void addOlderNote(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const OlderNote& note);

/// Throws when the cell has none.
void removeComment(SheetDrawing& drawing, Notes& notes, DrawingContext& context, std::uint16_t row, std::uint16_t col);

/// Rows, or columns, were inserted before `first` (a positive difference) or removed from it on: comments behind move,
/// those of removed cells and those pushed off the sheet go. The boxes stay where they are.
void moveComments(SheetDrawing& drawing, Notes& notes, DrawingContext& context, bool rows, int first, int difference);

}  // namespace vellum::drawing
