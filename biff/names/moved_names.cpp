#include "biff/names/moved_names.h"

#include <algorithm>

namespace vellum::biff {

namespace {

constexpr int lastRow = 65535;

bool isOf(const Links& links, const PlainRange& range, int sheet) {
    return links.ownSheets(range.xti) == SheetSpan{sheet, sheet};
}

}  // namespace

void moveNames(DefinedNames& names, int sheet, int firstRow, int count) {
    const auto moved = [&](int row) { return row < firstRow ? row : row + count; };
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!names.at(i).isAlive()) continue;
        const auto tokens = names.at(i).tokens();
        auto range = PlainRange::of(tokens);
        if (!range || !isOf(names.links, *range, sheet)) continue;
        NameArea& area = range->area;
        if (tokens.size() == PlainRange::areaSize) {
            if (area.rowFirst == 0 && area.rowLast == lastRow) continue;
            area.rowFirst = std::clamp(moved(area.rowFirst), 0, lastRow);
            area.rowLast = std::clamp(moved(area.rowLast), 0, lastRow);
        } else {
            area.rowFirst = area.rowLast = moved(area.rowFirst);
            if (area.rowFirst < 0 || area.rowFirst > lastRow) {
                names.remove(i);
                continue;
            }
        }
        range->patchRows(names.change(i).patchTokens());
    }
}

}  // namespace vellum::biff
