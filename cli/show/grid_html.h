// Grids as pages for a browser.
#pragma once
#include <ostream>
#include <string>

#include "cli/show/grid.h"

namespace cli {

/// One page with the grid; a cell tells its address and its text when it is pointed at or reached by keyboard.
void writeGridPage(const Grid& grid, const std::string& title, std::ostream& out);

}  // namespace cli
