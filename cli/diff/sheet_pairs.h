// Which sheets of two workbooks belong together.
#pragma once
#include <vector>

#include "cli/diff/difference.h"
#include "engine/api/ibook.h"

namespace cli {

/// Indexes of sheets in both books; -1 where one has none.
struct SheetMatch {
    int first = -1, second = -1;
};

/// Sheets by their names, then what is left by equal or similar cells, which makes a renamed one. In the second book's
/// order; removed sheets last. What was added, removed, renamed and moved goes to `out`.
std::vector<SheetMatch> matchSheets(vellum::IBookT<char>& first, vellum::IBookT<char>& second, Differences& out);

}  // namespace cli
