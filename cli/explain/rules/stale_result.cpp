#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadCell& cell, Finding& finding) {
    if (cell.freshness == Freshness::stale) finding.at(cell.row, cell.col, "depends on what the script wrote");
    if (cell.freshness == Freshness::cannotTell) finding.at(cell.row, cell.col, "cannot tell what it depends on");
}

}  // namespace

const Rule staleResult = {
    .name = "stale-result",
    .text = "the result of a formula is the one from before the script wrote",
    .advice = "Read the results in a run of their own, after the workbook was calculated by a spreadsheet program.",
    .onRead = look,
};

}  // namespace cli::explain
