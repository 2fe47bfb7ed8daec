#include "xlsx/filters/filter_ref.h"

#include <string>

#include "engine/failure/vlerror.h"
#include "xlsx/filters/messages.h"

namespace vellum::xlsx {

std::optional<CellRange> findFilterRef(std::string_view ref) {
    const std::wstring text(ref.begin(), ref.end());
    const std::size_t colon = text.find(L':');
    const auto first = readCellAddress(std::wstring_view(text).substr(0, colon));
    const auto last = colon == std::wstring::npos ? first : readCellAddress(std::wstring_view(text).substr(colon + 1));
    if (first && last) return CellRange{first->row, last->row, first->col, last->col};
    return readCellRange(text);  // whole rows or columns
}

CellRange readFilterRef(std::string_view ref) {
    const auto range = findFilterRef(ref);
    if (!range) throw vlerror(msg::refUnrecognized);
    return *range;
}

}  // namespace vellum::xlsx
