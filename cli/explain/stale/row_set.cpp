#include "cli/explain/stale/row_set.h"

#include <algorithm>
#include <iterator>

namespace cli::explain {

bool RowSet::has(int row) const {
    const auto behind = _runs.upper_bound(row);
    return behind != _runs.begin() && std::prev(behind)->second >= row;
}

void RowSet::add(Rows rows, std::vector<Rows>* fresh) {
    if (rows.last < rows.first) return;
    auto at = _runs.upper_bound(rows.first);
    if (at != _runs.begin() && std::prev(at)->second >= rows.first - 1) --at;
    Rows merged = rows;
    int next = rows.first;  // the first row that is not known to be in the set
    while (at != _runs.end() && at->first <= rows.last + 1) {
        if (fresh != nullptr && at->first > next) fresh->push_back({next, std::min(at->first - 1, rows.last)});
        next = std::max(next, at->second + 1);
        merged.first = std::min(merged.first, at->first);
        merged.last = std::max(merged.last, at->second);
        at = _runs.erase(at);
    }
    if (fresh != nullptr && next <= rows.last) fresh->push_back({next, rows.last});
    _runs[merged.first] = merged.last;
}

}  // namespace cli::explain
