#include "cli/explain/facts/hidden.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadRow& row, Finding& finding) {
    if (hiddenBy(row.range, row.row) == Hidden::byHand) finding.at(row.row, row.range.firstCol);
}

}  // namespace

const Rule hiddenRows = {
    .name = "hidden-rows",
    .text = "a hidden row is read",
    .advice = "Show or remove the rows; what is hidden counts like all else.",
    .onRow = look,
};

}  // namespace cli::explain
