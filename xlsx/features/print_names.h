// What of a sheet is printed, and which of its rows and columns on each page: names that are local to the sheet.
#pragma once
#include <cstdint>
#include <optional>

#include "xlsx/features/defined_names.h"

namespace vellum::xlsx {

/// The first area of the print area, with whether there are more. Nothing when the sheet has none.
struct FirstArea {
    CellRange range;
    bool hasMore = false;
};
template <class Tag>
std::optional<FirstArea> printArea(DefinedNames<Tag>& names, const NamedSheet& sheet);
template <class Tag>
void setPrintArea(DefinedNames<Tag>& names, const NamedSheet& sheet, const CellRange& range);
template <class Tag>
void clearPrintArea(DefinedNames<Tag>& names, const NamedSheet& sheet);

/// The parts of the name of the titles, in the order in which they are written.
enum RepeatPart : int { repeatedColumns = 0, repeatedRows = 1 };

template <class Tag>
std::optional<Span> repeated(DefinedNames<Tag>& names, const NamedSheet& sheet, RepeatPart part);
/// Keeps the other part, and what is neither. Throws for a part that is none.
template <class Tag>
void setRepeat(DefinedNames<Tag>& names, const NamedSheet& sheet, int part, Span span);
template <class Tag>
void clearRepeats(DefinedNames<Tag>& names, const NamedSheet& sheet);

}  // namespace vellum::xlsx
