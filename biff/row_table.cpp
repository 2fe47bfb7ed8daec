#include "biff/row_table.h"

#include <algorithm>

namespace vellum {

const Row* RowTable::find(std::uint16_t rw) const {
    const auto at = _ascending
                        ? std::lower_bound(_rows.begin(), _rows.end(), rw,
                                           [](const Row& row, std::uint16_t wanted) { return row.rw < wanted; })
                        : std::find_if(_rows.begin(), _rows.end(), [rw](const Row& row) { return row.rw == rw; });
    return at != _rows.end() && at->rw == rw ? &*at : nullptr;
}

Row* RowTable::find(std::uint16_t rw) {
    return const_cast<Row*>(static_cast<const RowTable&>(*this).find(rw));
}

Row& RowTable::ensure(std::uint16_t rw) {
    if (Row* row = find(rw)) return *row;
    Row row;
    row.rw = rw;
    append(row);
    return _rows.back();
}

void RowTable::append(const Row& row) {
    if (!_rows.empty() && row.rw < _rows.back().rw) _ascending = false;
    _rows.push_back(row);
}

void RowTable::clear() {
    *this = RowTable();
}

}  // namespace vellum
