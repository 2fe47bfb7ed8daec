// What a comparison of two files finds.
#pragma once
#include <string>
#include <vector>

namespace cli {

/// One entry of the list.
struct Difference {
    std::string sheet;  // of the second file where it has it; empty: of the workbook
    std::string place;  // "B2:B40", "rows 3:5", a name, a part; may be empty
    /// What happened, as a word for programs: "number", "text", "kind", "formula", "format", "look", "cell added",
    /// "cell removed", "rows inserted", "sheet renamed", "name changed", "feature", "comment added", "part changed",
    /// ...
    std::string what;
    long long count = 1;
    std::string before, after;  // of the first cell; empty where there is nothing to tell
};
using Differences = std::vector<Difference>;

}  // namespace cli
