// Blocks of cells, as the interfaces give and take them.
#pragma once
#include "engine/facts/cell_address.h"

namespace vellum::xlsx {

/// A block whose corners may come in any order. Throws for what lies outside of a sheet.
CellRange block(int rowFirst, int rowLast, int colFirst, int colLast);
/// The same for a block whose last row and column must not come before the first ones.
CellRange orderedBlock(int rowFirst, int rowLast, int colFirst, int colLast);

/// Each pointer may be null.
void giveBlock(const CellRange& range, int* rowFirst, int* rowLast, int* colFirst, int* colLast);

}  // namespace vellum::xlsx
