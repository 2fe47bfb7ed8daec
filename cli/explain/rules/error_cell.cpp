#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadCell& cell, Finding& finding) {
    if (cell.kind == quillet::cellError) finding.at(cell.row, cell.col, errorIn(cell.range, cell.row, cell.col));
}

}  // namespace

const Rule errorCell = {
    .name = "error-cell",
    .text = "a cell holds an error",
    .advice = "Mend the formula; with 'skiperrcell;' such cells count as empty.",
    .onRead = look,
};

}  // namespace cli::explain
