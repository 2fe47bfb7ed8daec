#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"

namespace cli::explain {
namespace {

/// Workbooks give texts of any length; the buffer is for the fields of csv.
bool isNear(const RangeSpec& range, int kind, const std::string& text) {
    if (kind != quillet::cellText || worksheetOf(range)) return false;
    return text.size() * 10 >= static_cast<std::size_t>(range.bufferSize) * 9;
}

void lookRead(const ReadCell& cell, Finding& finding) {
    if (isNear(cell.range, cell.kind, cell.text)) finding.at(cell.row, cell.col);
}

void lookWritten(const WrittenCell& cell, Finding& finding) {
    if (isNear(cell.range, cell.now.kind, cell.now.text)) finding.at(cell.row, cell.col);
}

}  // namespace

const Rule nearBuffer = {
    .name = "near-buffer",
    .text = "a text is within a tenth of the longest that the buffer takes, or longer",
    .advice = "Make the buffer larger with 'bufsize=N;', in KiB, where the file is read.",
    .onRead = lookRead,
    .onWrite = lookWritten,
};

}  // namespace cli::explain
