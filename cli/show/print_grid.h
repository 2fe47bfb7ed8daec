// Grids in characters.
#pragma once
#include <ostream>

#include "cli/show/grid.h"

namespace cli {

/// The grid with its heads, cut to `width` places; 0: as wide as it is. A text that is too long for its column runs
/// over empty cells beside it and ends in "…" where it must.
///
///       |    A     |    B     |
///     --+----------+----------+
///     1 | anvil    |     12.5 |
void printGrid(const Grid& grid, int width, std::ostream& out);

}  // namespace cli
