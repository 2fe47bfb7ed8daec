#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadCell& cell, Finding& finding) {
    if (cell.part == CellPart::index && cell.range.passesOver(cell.kind)) finding.at(cell.row, cell.col);
}

}  // namespace

const Rule emptyIndex = {
    .name = "empty-index",
    .text = "an index cell is empty",
    .advice = "Fill the cell, or leave its row out of the range; with 'emptyndx;' it counts as 0 or the empty text.",
    .onRead = look,
};

}  // namespace cli::explain
