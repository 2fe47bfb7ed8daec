// Lists of differences, for people and for programs.
#pragma once
#include <ostream>

#include "cli/diff/difference.h"

namespace cli {

/// A line for each, grouped by sheet as they come: "Sheet1!B2:B40  39 numbers changed, first 3.5 -> 3.7".
void printDifferences(const Differences& list, std::ostream& out);

/// {"sheet":"Sheet1","place":"B2:B40","what":"number","count":39,"before":"3.5","after":"3.7"}, a line for each.
void printDifferencesJson(const Differences& list, std::ostream& out);

}  // namespace cli
