// The area of a sheet that is printed, and the rows and columns that stand on every page: built-in names of the sheet.
#pragma once
#include <optional>

#include "biff/names/defined_names.h"

namespace vellum::biff {

/// First and last of rows or columns.
struct Lines {
    int first = 0, last = 0;
};

struct PrintTitles {
    std::optional<Lines> rows, columns;
};

/// Throws "not found" when the sheet has none, or one that is no single area.
NameArea printArea(const DefinedNames& names, int sheet);
/// Throws the text for the first corner's row, the last's, the columns.
void setPrintArea(DefinedNames& names, int sheet, const NameArea& area);

/// What the sheet's name for them says in one of its three forms; empty in another form.
PrintTitles printTitles(const DefinedNames& names, int sheet);
/// The columns stay, and the other way round.
void setRepeatRows(DefinedNames& names, int sheet, Lines rows);
void setRepeatColumns(DefinedNames& names, int sheet, Lines columns);

/// The sheet's own name of that code goes; none is fine.
void clearBuiltin(DefinedNames& names, int sheet, BuiltinName code);

}  // namespace vellum::biff
