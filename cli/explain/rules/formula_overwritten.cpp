#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const WrittenCell& cell, Finding& finding) {
    if (cell.done && cell.before.formula) finding.at(cell.row, cell.col);
}

}  // namespace

const Rule formulaOverwritten = {
    .name = "formula-overwritten",
    .text = "a formula is replaced by a value",
    .advice = "Choose a range without formulas, and let them refer to what is written.",
    .onWrite = look,
};

}  // namespace cli::explain
