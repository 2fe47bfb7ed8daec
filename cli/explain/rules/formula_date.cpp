#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadCell& cell, Finding& finding) {
    if (cell.kind != quillet::cellNumber || !isFormula(cell.range, cell.row, cell.col)) return;
    if (cell.range.ops.cellIsDate(cell.range.sheet, cell.row, cell.col)) return;
    if (hasDateFormat(cell.range, cell.row, cell.col)) finding.at(cell.row, cell.col);
}

}  // namespace

const Rule formulaDate = {
    .name = "formula-date",
    .text = "a formula shows a date and reads as its number of days",
    .advice = "Replace the formula by its value, or read the number and count from the workbook's first day.",
    .onRead = look,
};

}  // namespace cli::explain
