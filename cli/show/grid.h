// A rectangle of a sheet, ready for printing.
#pragma once
#include <string>
#include <vector>

#include "cli/formats/cell_text.h"
#include "cli/tables/area.h"

namespace cli {

struct GridColumn {
    int col = 0;
    int width = 0;  // places
};

struct GridRow {
    int row = 0;                   // from 0; -1 for a gap: rows without content that are left out
    std::vector<ShownCell> cells;  // one a column
};

struct Grid {
    std::vector<GridColumn> columns;
    std::vector<GridRow> rows;
};

/// How the columns get their widths.
enum class Fit {
    sheet,    // as the sheet has them; a number that is wider widens its column
    content,  // as wide as the widest text, within reason
};

/// The visible cells of an area. Rows beyond `maxRows` are left out.
Grid readGrid(vellum::IBookT<char>& book, const SheetArea& area, Fit fit, int maxRows);

}  // namespace cli
