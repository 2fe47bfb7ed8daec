#include "cli/explain/report/names.h"

#include "cli/workbook/cell_name.h"

namespace cli::explain {

const char* nameOf(quillet::CellPart part) {
    switch (part) {
        case quillet::CellPart::index:
            return "index";
        case quillet::CellPart::header:
            return "header";
        default:
            return "value";
    }
}

const char* nameOf(quillet::Layout layout) {
    constexpr const char* names[] = {"scalar",  "set",     "list",    "records",   "rangesize",     "index columns",
                                     "partndx", "noindex", "autondx", "dataframe", "list of arrays"};
    return names[static_cast<int>(layout)];
}

const char* nameOf(Fate fate) {
    constexpr const char* names[] = {"read", "not converted", "passed over", "written", "refused"};
    return names[static_cast<int>(fate)];
}

std::string areaOf(const ItemRecord& item) {
    if (!item.done || item.lastCol < item.firstCol || item.lastRow < item.firstRow || item.sheet.empty()) return {};
    const std::string first = cellName(item.firstRow, item.firstCol), last = cellName(item.lastRow, item.lastCol);
    return first == last ? first : first + ":" + last;
}

std::string columnLetters(int col) {
    std::string name = cellName(0, col);
    name.pop_back();
    return name;
}

}  // namespace cli::explain
