#include "cli/explain/facts/hidden.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadRow& row, Finding& finding) {
    if (hiddenBy(row.range, row.row) == Hidden::byFilter) finding.at(row.row, row.range.firstCol);
}

}  // namespace

const Rule filteredRows = {
    .name = "filtered-rows",
    .text = "a row that the sheet's filter hides is read",
    .advice = "Copy the rows that are left to another sheet, and read that; filters do not count.",
    .onRow = look,
};

}  // namespace cli::explain
