#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "cli/explain/facts/sheet_view.h"
#include "cli/explain/rules/rules.h"
#include "host/interface/host.h"
#include "host/text/c_locale.h"

namespace cli::explain {
namespace {

void lookRead(const ReadCell& cell, Finding& finding) {
    if (cell.value == nullptr || cell.type != hostTypeInteger || cell.kind != quillet::cellNumber) return;
    const double held = std::trunc(cell.range.ops.readReal(cell.range.sheet, cell.row, cell.col, nullptr));
    if (held != cell.value->integer) finding.at(cell.row, cell.col, "integers cut to 32 bits");
}

// Workbooks keep all digits.
void lookWritten(const WrittenCell& cell, Finding& finding) {
    if (!cell.done || cell.now.kind != quillet::cellNumber || worksheetOf(cell.range)) return;
    char text[512];
    const int length =
        quillet::hostApi().hostFormatReal(nullptr, text, sizeof text, cell.range.realFormat, cell.now.number);
    if (length < 1 || length >= static_cast<int>(sizeof text)) return;
    const bool same = quillet::strtodC(text, nullptr) == cell.now.number;
    if (!same && !std::isnan(cell.now.number)) finding.at(cell.row, cell.col, "reals with fewer digits");
}

}  // namespace

const Rule lostDigits = {
    .name = "lost-digits",
    .text = "a number loses digits",
    .advice = "Read integers beyond 32 bits as reals, and write reals with a real format of 17 digits.",
    .onRead = lookRead,
    .onWrite = lookWritten,
};

}  // namespace cli::explain
