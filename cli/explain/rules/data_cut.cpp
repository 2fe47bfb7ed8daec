#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

void look(const WrittenItem& item, Finding& finding) {
    if (item.rowsCut > 0) finding.add("rows that have no place", item.rowsCut);
}

}  // namespace

const Rule dataCut = {
    .name = "data-cut",
    .text = "a row of data has no place in the range and is not written",
    .advice = "Make the range larger, or let it grow with 'grow;'.",
    .onWritten = look,
};

}  // namespace cli::explain
