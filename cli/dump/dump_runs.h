// Rows and columns as runs of equal ones.
#pragma once
#include "cli/workbook/json_lines.h"
#include "cli/workbook/sheet_answers.h"

namespace cli {

/// Runs of equal rows that have a height or are hidden: [[first, last, points, hidden], ...]. The sheet's last row
/// tells the height of a row that has none. In a package rows behind the used area and `rowEnd` are not looked at.
void dumpRows(SheetAnswers& answers, bool package, int rowEnd, JsonLines& out);

/// Runs of equal columns that differ from the sheet's last one: [[first, last, characters, hidden], ...].
void dumpColumns(SheetAnswers& answers, bool package, JsonLines& out);

}  // namespace cli
