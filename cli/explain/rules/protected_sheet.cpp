#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const WrittenItem& item, Finding& finding) {
    Sheet* const sheet = worksheetOf(item.range);
    if (item.cells > 0 && sheet && sheet->isProtected()) finding.add("cells written", item.cells);
}

}  // namespace

const Rule protectedSheet = {
    .name = "protected-sheet",
    .text = "a cell of a protected sheet is written",
    .advice = "Ask who protected the sheet: the module writes there, a person could not.",
    .onWritten = look,
};

}  // namespace cli::explain
