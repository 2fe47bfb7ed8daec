#include "cli/explain/facts/texts.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

// Under `alltxt` every cell is a text by request, and where a text is wanted nothing is lost.
void look(const ReadCell& cell, Finding& finding) {
    if (cell.kind != quillet::cellText || cell.value == nullptr || cell.type == hostTypeText) return;
    if (cell.range.has(quillet::optAllText) || !isNumber(cell.text, decimalSeparator(cell.range))) return;
    finding.at(cell.row, cell.col);
}

}  // namespace

const Rule numberStoredAsText = {
    .name = "number-stored-as-text",
    .text = "a text is a number through and through",
    .advice = "Turn the cells into numbers in the sheet: other programs take them for texts.",
    .onRead = look,
};

}  // namespace cli::explain
