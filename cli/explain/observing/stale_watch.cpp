#include "cli/explain/observing/stale_watch.h"

#include <utility>

#include "cli/explain/facts/sheet_view.h"
#include "cli/workbook/cell_name.h"
#include "host/sources/driver_context.h"

namespace cli::explain {

std::optional<refhost::StaleResults> StaleWatch::take() {
    if (_seen.count == 0 && _seen.cannotTell == 0) return std::nullopt;
    return std::exchange(_seen, {});
}

void StaleWatch::itemBegins(int, const quillet::DriverContext& source, const char*, quillet::ItemUse) {
    _cells.enter(source.path);
}

void StaleWatch::cellWritten(const quillet::RangeSpec& range, int row, int col, bool done) {
    if (done) _cells.wrote(range, range.firstRow + row, range.firstCol + col);
}

void StaleWatch::look(const quillet::RangeSpec& range, int row, int col) {
    constexpr std::size_t shownCells = 3;
    const int atRow = range.firstRow + row, atCol = range.firstCol + col;
    const Freshness freshness = _cells.read(range, atRow, atCol);
    if (freshness == Freshness::fresh) return;
    ++(freshness == Freshness::stale ? _seen.count : _seen.cannotTell);
    if (freshness != Freshness::stale || _seen.cells.size() >= shownCells) return;
    const char* const sheet = range.ops.sheetName(range.sheet);
    std::string cell = sheet != nullptr ? sheet : "";
    _seen.cells.push_back(cell.append("!").append(cellName(atRow, atCol)));
}

}  // namespace cli::explain
