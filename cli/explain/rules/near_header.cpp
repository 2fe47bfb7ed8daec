#include <string>

#include "cli/explain/facts/texts.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const SoughtHeader& sought, Finding& finding) {
    if (sought.col >= 0) return;
    const RangeSpec& range = sought.range;
    for (int col = range.firstCol; col <= range.lastCol; ++col) {
        if (range.ops.cellKind(range.sheet, range.headerRow, col) != quillet::cellText) continue;
        const char* const found = range.ops.readText(range.sheet, range.headerRow, col, nullptr);
        if (found == nullptr) continue;
        const std::string header = found;
        if (distance(withoutBlanks(header), withoutBlanks(sought.name), 1) > 1) continue;
        finding.at(range.headerRow, col, inQuotes(sought.name).append(" is not ").append(inQuotes(header)));
    }
}

}  // namespace

const Rule nearHeader = {
    .name = "near-header",
    .text = "a header is nearly what the selection names",
    .advice = "Write the name in the selection exactly as it stands in the sheet.",
    .onHeader = look,
};

}  // namespace cli::explain
