#include "cli/explain/facts/row_keeper.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace cli::explain {

bool RowKeeper::wants(int row) const {
    if (_wishes.last > 0 || _first < _wishes.first) return true;
    return _current && _current->row == row && _first == _wishes.first;
}

RowRecord& RowKeeper::current(int row) {
    if (_current && _current->row != row) finishRow();
    if (!_current) _current = RowRecord{row, false, {}};
    return *_current;
}

void RowKeeper::add(CellRecord cell) {
    RowRecord& row = current(cell.row);
    row.cells.push_back(std::move(cell));
}

void RowKeeper::passOver(int row) {
    current(row).passedOver = true;
}

void RowKeeper::warn(const Rule& rule) {
    if (_current && !_current->cells.empty()) _current->cells.back().warnings.push_back(&rule);
}

void RowKeeper::finishRow() {
    RowRecord row = std::move(*_current);
    _current.reset();
    const bool warned =
        std::any_of(row.cells.begin(), row.cells.end(), [](const CellRecord& c) { return !c.warnings.empty(); });
    if (_first < _wishes.first) {
        ++_first;
        _kept.push_back(std::move(row));
    } else if (warned && _warned < _wishes.warned) {
        ++_warned;
        _kept.push_back(std::move(row));
    } else if (_wishes.last > 0) {
        _last.push_back(std::move(row));
        if (_last.size() > _wishes.last) _last.pop_front();
    }
}

std::vector<RowRecord> RowKeeper::take() {
    if (_current) finishRow();
    std::move(_last.begin(), _last.end(), std::back_inserter(_kept));
    _last.clear();
    std::stable_sort(_kept.begin(), _kept.end(), [](const RowRecord& a, const RowRecord& b) { return a.row < b.row; });
    return std::exchange(_kept, {});
}

}  // namespace cli::explain
