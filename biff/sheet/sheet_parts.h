// What a sheet of a binary workbook consists of, and its way from and to the workbook stream.
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "biff/cells/area_bounds.h"
#include "biff/cells/cell_store.h"
#include "biff/cells/column_table.h"
#include "biff/cells/placed_records.h"
#include "biff/cells/row_table.h"
#include "biff/cells/shared_tokens.h"
#include "biff/cells/sheet_records.h"
#include "biff/features/sheet_features.h"
#include "biff/features/sheet_settings.h"
#include "biff/records/bof.h"
#include "biff/sheet/book_context.h"
#include "drawing/objects/comments.h"
#include "drawing/objects/sheet_drawing.h"
#include "drawing/records/note.h"

namespace vellum {

class StrMap;
class StringPool;
class Xls;

/// The content of one sheet. Texts and tokens are memory of the book's pool.
struct SheetParts {
    Bof bof{.dt = Bof::worksheet};
    SheetSettings settings;
    std::optional<Index> index = Index();
    Window2 window2;
    RowTable rows;
    ColumnTable columns;
    CellStore cells;
    SharedTokens sharedTokens;
    std::vector<biff::CellRange> merges;
    biff::SheetFeatures features;
    drawing::SheetDrawing drawing;
    drawing::Notes notes;
    PlacedRecords kept;
    /// A sheet that is no worksheet, from its Bof to its EOF in wire form; empty for a worksheet.
    std::vector<std::byte> foreign;

    /// `used` holds every cell, `filled` those that are no blanks. A removal marks them dirty, and who
    /// asks next has them counted anew.
    mutable AreaBounds used, filled;
    mutable bool boundsDirty = false;

    [[nodiscard]] bool isWorksheet() const { return bof.dt == Bof::worksheet; }
    void recountBounds() const;
    const AreaBounds& usedBounds() const {
        if (boundsDirty) recountBounds();
        return used;
    }
    const AreaBounds& filledBounds() const {
        if (boundsDirty) recountBounds();
        return filled;
    }
};

/// What the stream and the book say about a sheet that is being loaded.
struct SheetSource {
    Xls& in;
    StringPool& pool;
    StrMap& strings;  // uses of its strings are noted there
    SheetLoad what;
    bool biff5;
    std::vector<drawing::OlderNote>& olderNotes;  // of a sheet of the older layout
    bool countsStrings = true;                    // notes uses of its strings
};

/// Reads a sheet into fresh parts, from the next Bof to the EOF that closes it or the stream's end.
void loadSheet(SheetParts& sheet, const SheetSource& source);

/// Writes a sheet from its Bof to its EOF, always in the BIFF8 layout. Formulas whose tokens are of the older one go
/// out as their values, and a sheet of a BIFF5 file that is no worksheet empty.
void saveSheet(SheetParts& sheet, Xls& out);

}  // namespace vellum
