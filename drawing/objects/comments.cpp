#include "drawing/objects/comments.h"

#include <optional>
#include <vector>

#include "drawing/art/messages.h"
#include "drawing/objects/anchor.h"
#include "drawing/objects/new_shapes.h"
#include "engine/failure/vlerror.h"

namespace vellum::drawing {
namespace {

constexpr int defaultWidth = 128, defaultHeight = 74;
constexpr std::wstring_view defaultAuthor = L"vellum";
constexpr std::uint16_t staysInPlace = AnchorFields::staysWhenCellsMove | AnchorFields::keepsSizeWhenCellsDo;

AnchorFields commentAnchor(const DrawingContext& context, PixelPlace place) {
    if (place.width < 1) place.width = defaultWidth;
    if (place.height < 1) place.height = defaultHeight;
    return anchorFor(context, place, staysInPlace);
}

/// A damaged note may name an object of another kind, which is not its to take along.
void removeShapeOf(SheetDrawing& drawing, DrawingContext& context, const Note& note) {
    const auto shape = drawing.shapeOfObject(note.objectId);
    if (shape && drawing.objectOf(*shape)->ot() == Obj::note) drawing.removeShape(context, *shape);
}

}  // namespace

std::wstring commentText(const SheetDrawing& drawing, const Note& note) {
    const TextObject* const text = drawing.textOfObject(note.objectId);
    return text == nullptr ? std::wstring() : text->text();
}

void addComment(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const Note& note, std::wstring_view text,
                const AnchorFields* anchor) {
    AnchorFields atCell{.flags = staysInPlace, .colL = note.col, .rwT = note.row, .colR = note.col, .rwB = note.row};
    Note added = note;
    added.objectId = drawing.newObjectId();
    drawing.addShape(context, noteShape(anchor != nullptr ? *anchor : atCell), Obj::makeNote(added.objectId),
                     TextObject::makeNote(text, context.noteFont()));
    notes.put(std::move(added));
}

void addOlderNote(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const OlderNote& older) {
    constexpr int lastCol = sheetColumns - 1;
    const std::wstring_view text = std::wstring_view(older.text).substr(0, TextObject::maxText);
    if (older.col > lastCol || notes.find(older.row, older.col) != nullptr) return;
    Note note;
    note.row = older.row;
    note.col = older.col;
    note.setAuthor({});  // the older form has none
    std::optional<AnchorFields> anchor;
    try {
        anchor = commentAnchor(context, {older.row, older.col, 0, 0, 0, 0});
    } catch (const vlerror&) {
        anchor.reset();
    }
    addComment(drawing, notes, context, note, text, anchor ? &*anchor : nullptr);
}

void writeComment(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const NewComment& comment) {
    const AnchorFields anchor = commentAnchor(context, {comment.row, comment.col, 0, 0, comment.width, comment.height});
    auto text = TextObject::makeNote(comment.text, context.noteFont());
    Note note;
    note.row = comment.row;
    note.col = comment.col;
    note.setAuthor(comment.author.empty() ? defaultAuthor : comment.author);
    note.objectId = drawing.newObjectId();
    drawing.addShape(context, noteShape(anchor), Obj::makeNote(note.objectId), std::move(text));
    if (const Note* const old = notes.find(note.row, note.col)) removeShapeOf(drawing, context, *old);
    notes.put(std::move(note));
}

void removeComment(SheetDrawing& drawing, Notes& notes, DrawingContext& context, std::uint16_t row, std::uint16_t col) {
    const Note* const note = notes.find(row, col);
    if (note == nullptr) throw vlerror(msg::noComment);
    removeShapeOf(drawing, context, *note);
    notes.remove(row, col);
}

void moveComments(SheetDrawing& drawing, Notes& notes, DrawingContext& context, bool rows, int first, int difference) {
    const int limit = rows ? sheetRows : sheetColumns;
    std::vector<Note> gone;
    notes.forEach([&](const Note& note) {
        const int place = rows ? note.row : note.col;
        if (place >= first && (place < first - difference || place + difference >= limit)) gone.push_back(note);
    });
    for (const Note& note : gone) removeComment(drawing, notes, context, note.row, note.col);
    notes.move(rows, first, difference);
}

}  // namespace vellum::drawing
