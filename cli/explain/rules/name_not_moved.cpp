#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const WrittenItem& item, Finding& finding) {
    if (!item.byName || !item.range.has(quillet::optGrow)) return;
    const int rows = item.lastWritten - item.firstRow + 1;
    if (rows > item.height) finding.add("rows outside of the name", rows - item.height);
}

}  // namespace

const Rule nameNotMoved = {
    .name = "name-not-moved",
    .text = "a row is written beneath the range that the name stands for; the name stays as it is",
    .advice = "Set the name anew afterwards, or let it stand for enough rows from the start.",
    .onWritten = look,
};

}  // namespace cli::explain
