// The pictures and comments of a sheet of another book.
#pragma once
#include "drawing/objects/sheet_drawing.h"
#include "drawing/records/note.h"

namespace vellum::drawing {

/// Makes them anew in a sheet without a drawing: pictures with their data, comments with text and author. Whatever
/// else a drawing holds names sheets, cells or storages of its own book, and stays there.
void copyFromOther(SheetDrawing& drawing, Notes& notes, DrawingContext& context, const SheetDrawing& source,
                   const Notes& sourceNotes, const DrawingGroup& sourceGroup);

}  // namespace vellum::drawing
