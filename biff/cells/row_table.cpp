#include "biff/cells/row_table.h"

#include <algorithm>

namespace vellum {

const Row* RowTable::find(std::uint16_t rw) const {
    if (!_ascending) {
        const auto place = _places.find(rw);
        return place == _places.end() ? nullptr : &_rows[place->second];
    }
    const auto at = std::ranges::lower_bound(_rows, rw, {}, &Row::rw);
    return at != _rows.end() && at->rw == rw ? &*at : nullptr;
}

Row* RowTable::find(std::uint16_t rw) {
    return const_cast<Row*>(static_cast<const RowTable&>(*this).find(rw));
}

Row& RowTable::ensure(std::uint16_t rw, std::uint16_t defaultHeight) {
    if (Row* row = find(rw)) return *row;
    Row row;
    row.rw = rw;
    row.miyRw = defaultHeight;
    append(row);
    return _rows.back();
}

void RowTable::append(const Row& row) {
    if (_ascending && !_rows.empty() && row.rw < _rows.back().rw) {
        _ascending = false;
        for (std::size_t i = 0; i < _rows.size(); ++i) _places.try_emplace(_rows[i].rw, i);
    }
    if (!_ascending) _places.try_emplace(row.rw, _rows.size());
    _rows.push_back(row);
}

void RowTable::clear() {
    *this = RowTable();
}

std::span<const Row> RowTable::from(std::uint16_t rw) const {
    if (!_ascending) return _rows;
    return {std::ranges::lower_bound(_rows, rw, {}, &Row::rw), _rows.end()};
}

std::vector<Row> RowTable::takeFrom(std::uint16_t rw) {
    const auto taken = from(rw);
    std::vector<Row> rows(taken.begin(), taken.end());
    if (_ascending) {
        _rows.resize(_rows.size() - rows.size());
    } else {
        clear();
    }
    return rows;
}

}  // namespace vellum
