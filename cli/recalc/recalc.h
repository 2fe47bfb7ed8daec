// quillet recalc, and run --recalc: the results of a workbook's formulas made anew.
#pragma once
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace cli {

class Backups;

constexpr int recalcSeconds = 300;  // that LibreOffice has for a workbook unless the user says otherwise

struct Recalculated {
    long long formulas = 0, changed = 0;     // `changed` of their results
    std::vector<std::string> notCalculated;  // cells whose formulas LibreOffice could not calculate, with their sheets
};

/// Replaces the cached results of all formulas in the file by those that LibreOffice calculates from a copy, and
/// nothing else. Formulas that it could not calculate keep theirs. Nothing, and why in `error`, on failure; the file is
/// then as it was. `backups` holds the file as it was, and is the caller's to finish; null: a copy lies beside the file
/// until what was saved has been loaded again.
std::optional<Recalculated> makeResultsAnew(const std::string& path, int seconds, Backups* backups, std::string& error);

/// The same as a command, which tells how many results changed and lists what was not calculated. 0, or 2 after a
/// message.
int recalc(const std::string& path, int seconds, std::ostream& out, std::ostream& errors);

}  // namespace cli
