#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const IndexedRow& row, Finding& finding) {
    if (row.sameAs >= 0) finding.at(row.row, row.col);
}

}  // namespace

const Rule duplicateIndex = {
    .name = "duplicate-index",
    .text = "a row has the index of an earlier row; the last one stays",
    .advice = "Remove one of the rows, or add the column that tells them apart as an index.",
    .onIndex = look,
};

}  // namespace cli::explain
