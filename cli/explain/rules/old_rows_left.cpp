#include <algorithm>

#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

/// A scalar stands alone: what is under it is no older row of its.
void look(const WrittenItem& item, Finding& finding) {
    const RangeSpec& range = item.range;
    if (item.layout == Layout::scalar || range.sheet == nullptr) return;
    const int end = range.ops.lastRow(range.sheet);
    for (int row = std::max(item.lastWritten + 1, item.firstRow); row <= end; ++row) {
        for (int c = 0; c < range.columnCount; ++c) {
            const int col = range.firstCol + range.column(c);
            if (range.ops.cellKind(range.sheet, row, col) != quillet::cellEmpty) finding.at(row, col);
        }
    }
}

}  // namespace

const Rule oldRowsLeft = {
    .name = "old-rows-left",
    .text = "a filled cell stands under what is written, in its columns",
    .advice = "Clear the columns first, or write to a sheet of their own, when these are rows of an earlier run.",
    .onWritten = look,
};

}  // namespace cli::explain
