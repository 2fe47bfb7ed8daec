#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const SoughtHeader& sought, Finding& finding) {
    const RangeSpec& range = sought.range;
    if (sought.col < 0) return;
    for (int col = sought.col + 1; col <= range.lastCol; ++col) {
        if (range.ops.cellKind(range.sheet, range.headerRow, col) != quillet::cellText) continue;
        const char* const text = range.ops.readText(range.sheet, range.headerRow, col, nullptr);
        if (text != nullptr && text == sought.name) finding.at(range.headerRow, col);
    }
}

}  // namespace

const Rule duplicateHeader = {
    .name = "duplicate-header",
    .text = "a header stands over another column, too; the first one counts",
    .advice = "Give each column a header of its own, or select the column by its number, as in #2.",
    .onHeader = look,
};

}  // namespace cli::explain
