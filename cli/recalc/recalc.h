// quillet recalc: the results of a workbook's formulas made anew.
#pragma once
#include <iosfwd>
#include <string>

namespace cli {

/// Replaces the cached results of all formulas by those that LibreOffice calculates from a copy, and nothing else.
/// Tells how many changed, and lists the formulas that it could not calculate, which keep theirs. 0, or 2 after a
/// message.
int recalc(const std::string& path, std::ostream& out, std::ostream& errors);

}  // namespace cli
