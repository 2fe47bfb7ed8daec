// Formulas whose cells moved.
#pragma once
#include <functional>
#include <string>
#include <string_view>

#include "cli/diff/sheet_alignment.h"

namespace cli {

/// The alignment of the sheet of that name, null for a sheet without one.
using AlignmentOf = std::function<const SheetAlignment*(std::string_view sheet)>;

/// The text of a formula after the moves: each reference to a cell with the place that the cell has now. `own` is for
/// references without a sheet. What stands in quotes, whole rows and whole columns stay.
std::string movedFormula(std::string_view text, const SheetAlignment& own, const AlignmentOf& alignmentOf);

}  // namespace cli
