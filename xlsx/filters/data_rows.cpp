#include "xlsx/filters/data_rows.h"

#include <algorithm>

#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace vellum::xlsx {

template <class Cell>
std::size_t firstCellFrom(const std::vector<Cell>& cells, std::uint32_t col, std::size_t hint) {
    if (hint < cells.size() && cells[hint].column() == col) return hint;
    const auto found = std::lower_bound(cells.begin(), cells.end(), col,
                                        [](const Cell& cell, std::uint32_t wanted) { return cell.column() < wanted; });
    return static_cast<std::size_t>(found - cells.begin());
}

template <class Cell>
const Cell* cellOf(const std::vector<Cell>& cells, std::uint32_t col, std::size_t& hint) {
    const std::size_t at = firstCellFrom(cells, col, hint);
    if (at == cells.size() || cells[at].column() != col) return nullptr;
    hint = at;
    return &cells[at];
}

#define VELLUM_DATA_ROWS(family)                                                                           \
    template std::size_t firstCellFrom(const std::vector<family::c_CT_Cell>&, std::uint32_t, std::size_t); \
    template const family::c_CT_Cell* cellOf(const std::vector<family::c_CT_Cell>&, std::uint32_t, std::size_t&);
VELLUM_DATA_ROWS(sheet)
VELLUM_DATA_ROWS(strict)
#undef VELLUM_DATA_ROWS

}  // namespace vellum::xlsx
