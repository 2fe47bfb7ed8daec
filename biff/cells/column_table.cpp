#include "biff/cells/column_table.h"

#include <algorithm>

namespace vellum {

const ColInfo* ColumnTable::find(std::uint32_t col) const {
    const auto at = std::find_if(_records.begin(), _records.end(),
                                 [col](const ColInfo& info) { return info.colFirst <= col && col <= info.colLast; });
    return at == _records.end() ? nullptr : &*at;
}

void ColumnTable::noteFormat(const ColInfo& info) {
    if (_formats.empty()) _formats.assign(columns, -1);
    const std::uint32_t end = std::min<std::uint32_t>(info.colLast + 1U, columns);
    for (std::uint32_t col = info.colFirst; col < end; ++col) _formats[col] = info.ixfe;
}

void ColumnTable::append(const ColInfo& info) {
    _records.push_back(info);
    noteFormat(info);
}

void ColumnTable::assign(const ColInfo& info) {
    std::vector<ColInfo> cut;
    cut.reserve(_records.size() + 2);
    for (const ColInfo& old : _records) {
        if (old.colLast < info.colFirst || old.colFirst > info.colLast) {
            cut.push_back(old);
            continue;
        }
        if (old.colFirst < info.colFirst) {
            cut.push_back(old);
            cut.back().colLast = static_cast<std::uint16_t>(info.colFirst - 1);
        }
        if (old.colLast > info.colLast) {
            cut.push_back(old);
            cut.back().colFirst = static_cast<std::uint16_t>(info.colLast + 1);
        }
    }
    cut.push_back(info);
    _records = std::move(cut);
    noteFormat(info);
}

void ColumnTable::sort() {
    std::stable_sort(_records.begin(), _records.end(),
                     [](const ColInfo& a, const ColInfo& b) { return a.colFirst < b.colFirst; });
    _formats.clear();
    for (const ColInfo& info : _records) noteFormat(info);
}

void ColumnTable::clear() {
    *this = ColumnTable();
}

}  // namespace vellum
