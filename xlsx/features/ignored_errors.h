// Cells whose suspected errors are not pointed out.
#pragma once
#include "engine/facts/cell_address.h"

namespace vellum::xlsx {

/// Kinds of errors by bits, in the order of the format's attributes: 1 evaluation, 2 years of two digits, 4 numbers
/// stored as text, 8 formulas that differ from their neighbours', 16 that omit cells, 32 unlocked, 64 that refer to
/// empty cells, 128 values against a rule. Throws when one of them is ignored for exactly this range already.
template <class Worksheet>
void addIgnoredErrors(Worksheet& worksheet, const CellRange& range, int flags);

}  // namespace vellum::xlsx
