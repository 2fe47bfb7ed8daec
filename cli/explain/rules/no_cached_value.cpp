#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadCell& cell, Finding& finding) {
    if (isUncalculated(cell.range, cell.row, cell.col)) finding.at(cell.row, cell.col);
}

}  // namespace

const Rule noCachedValue = {
    .name = "no-cached-value",
    .text = "the result of a formula was never calculated; it reads as 0 or as empty",
    .advice = "Open and save the workbook in a spreadsheet program.",
    .onRead = look,
};

}  // namespace cli::explain
