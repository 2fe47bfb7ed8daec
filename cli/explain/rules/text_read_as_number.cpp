#include "cli/explain/facts/texts.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadCell& cell, Finding& finding) {
    if (cell.kind != quillet::cellText || cell.value == nullptr) return;
    if (cell.type != hostTypeInteger && cell.type != hostTypeReal) return;
    if (isNumber(cell.text, decimalSeparator(cell.range)) || isSpecialText(cell.range, cell.text)) return;
    finding.at(cell.row, cell.col);
}

}  // namespace

const Rule textReadAsNumber = {
    .name = "text-read-as-number",
    .text = "a text is read as a number: 0, or the number that it begins with",
    .advice = "Make the cells numbers, read them into texts, or leave them out of the range.",
    .onRead = look,
};

}  // namespace cli::explain
