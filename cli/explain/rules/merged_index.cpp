#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const ReadCell& cell, Finding& finding) {
    if (cell.part != CellPart::index) return;
    Sheet* const sheet = worksheetOf(cell.range);
    int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
    if (!sheet || !sheet->mergeAt(cell.row, cell.col, &rowFirst, &rowLast, &colFirst, &colLast)) return;
    if (cell.row != rowFirst || cell.col != colFirst) finding.at(cell.row, cell.col);
}

}  // namespace

const Rule mergedIndex = {
    .name = "merged-index",
    .text = "an index cell lies in a merged block, beside the cell that has its text",
    .advice = "Split the block and repeat its text in every row.",
    .onRead = look,
};

}  // namespace cli::explain
