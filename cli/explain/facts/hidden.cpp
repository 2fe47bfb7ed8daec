#include "cli/explain/facts/hidden.h"

#include "cli/explain/facts/sheet_view.h"
#include "engine/api/iautofilter.h"

namespace cli::explain {
namespace {

bool isFiltered(Sheet& sheet, int row) {
    auto* const filter = sheet.hasFilter() ? sheet.filterObject() : nullptr;
    int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
    if (!filter || filter->filterColumnTotal() <= 0) return false;
    return filter->filterRange(&rowFirst, &rowLast, &colFirst, &colLast) && row > rowFirst && row <= rowLast;
}

}  // namespace

Hidden hiddenBy(const RangeSpec& range, int row) {
    Sheet* const sheet = worksheetOf(range);
    if (!sheet || !sheet->isRowHidden(row)) return Hidden::no;
    return isFiltered(*sheet, row) ? Hidden::byFilter : Hidden::byHand;
}

}  // namespace cli::explain
