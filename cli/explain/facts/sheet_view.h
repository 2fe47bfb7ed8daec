// What the workbook engine knows of cells beside what the drivers ask it.
#pragma once
#include <string>

#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "host/labels/range_spec.h"

namespace cli::explain {

using quillet::RangeSpec;
using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

/// The engine's objects behind a range; null for csv.
Book* workbookOf(const RangeSpec& range);
Sheet* worksheetOf(const RangeSpec& range);

/// The text of the error in a cell, such as "#N/A"; "error" where the source does not tell.
std::string errorIn(const RangeSpec& range, int row, int col);

/// Whether the cell's format shows a date or time, whatever the cell holds.
bool hasDateFormat(const RangeSpec& range, int row, int col);

/// What a person sees in the cell, by its number format.
std::string shownText(const RangeSpec& range, int row, int col);

/// "number", "text", "boolean", "error", "empty", or "formula" in front of one of these.
std::string kindName(const RangeSpec& range, int row, int col);

/// A formula cell of which the file has no result.
bool isUncalculated(const RangeSpec& range, int row, int col);

bool isFormula(const RangeSpec& range, int row, int col);

}  // namespace cli::explain
