#include "xlsx/layout/range_index.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vellum::xlsx {
namespace {

void extend(CellRange& box, const CellRange& by) {
    box.rowFirst = std::min(box.rowFirst, by.rowFirst);
    box.rowLast = std::max(box.rowLast, by.rowLast);
    box.colFirst = std::min(box.colFirst, by.colFirst);
    box.colLast = std::max(box.colLast, by.colLast);
}

template <class Items, class RangeOf>
std::vector<CellRange> boxesAround(const Items& items, std::size_t fanOut, RangeOf&& rangeOf) {
    std::vector<CellRange> boxes;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i % fanOut == 0) {
            boxes.push_back(rangeOf(items[i]));
        } else {
            extend(boxes.back(), rangeOf(items[i]));
        }
    }
    return boxes;
}

}  // namespace

RangeIndex::RangeIndex(std::vector<Entry> entries) : _entries(std::move(entries)) {
    sortIntoTiles();
    _levels.push_back(boxesAround(_entries, fanOut, [](const Entry& entry) { return entry.range; }));
    while (_levels.back().size() > 1) {
        _levels.push_back(boxesAround(_levels.back(), fanOut, [](const CellRange& box) { return box; }));
    }
}

/// Slices by rows, each sorted by columns: neighbours in the list are neighbours on the sheet.
void RangeIndex::sortIntoTiles() {
    const auto boxes = static_cast<double>(_entries.size()) / fanOut;
    const auto slice = static_cast<std::size_t>(std::ceil(std::sqrt(boxes))) * fanOut;
    std::sort(_entries.begin(), _entries.end(),
              [](const Entry& a, const Entry& b) { return a.range.rowFirst < b.range.rowFirst; });
    for (std::size_t from = 0; from < _entries.size(); from += slice) {
        const auto begin = _entries.begin() + static_cast<std::ptrdiff_t>(from);
        const auto end = begin + static_cast<std::ptrdiff_t>(std::min(slice, _entries.size() - from));
        std::sort(begin, end, [](const Entry& a, const Entry& b) { return a.range.colFirst < b.range.colFirst; });
    }
}

void RangeIndex::look(std::size_t level, std::size_t box, std::uint32_t row, std::uint32_t col,
                      const Entry*& best) const {
    if (!_levels[level][box].contains(row, col)) return;
    const std::size_t from = box * fanOut;
    if (level > 0) {
        const std::size_t past = std::min(from + fanOut, _levels[level - 1].size());
        for (std::size_t i = from; i < past; ++i) look(level - 1, i, row, col, best);
        return;
    }
    for (std::size_t i = from; i < std::min(from + fanOut, _entries.size()); ++i) {
        const Entry& entry = _entries[i];
        if (entry.range.contains(row, col) && (!best || entry.place < best->place)) best = &entry;
    }
}

auto RangeIndex::firstAt(std::uint32_t row, std::uint32_t col) const -> const Entry* {
    const Entry* best = nullptr;
    if (!_entries.empty()) look(_levels.size() - 1, 0, row, col, best);
    return best;
}

/// The boxes stay as large as they were.
void RangeIndex::drop(const Entry& entry) {
    _entries[static_cast<std::size_t>(&entry - _entries.data())].range = {1, 0, 1, 0};
}

bool RangeIndex::touches(std::size_t level, std::size_t box, std::uint32_t row) const {
    const CellRange& around = _levels[level][box];
    if (row < around.rowFirst || row > around.rowLast) return false;
    const std::size_t from = box * fanOut;
    if (level == 0) {
        const auto begin = _entries.begin() + static_cast<std::ptrdiff_t>(from);
        const auto end = begin + static_cast<std::ptrdiff_t>(std::min(fanOut, _entries.size() - from));
        return std::any_of(begin, end,
                           [&](const Entry& e) { return row >= e.range.rowFirst && row <= e.range.rowLast; });
    }
    const std::size_t past = std::min(from + fanOut, _levels[level - 1].size());
    for (std::size_t i = from; i < past; ++i) {
        if (touches(level - 1, i, row)) return true;
    }
    return false;
}

bool RangeIndex::touchesRow(std::uint32_t row) const {
    return !_entries.empty() && touches(_levels.size() - 1, 0, row);
}

}  // namespace vellum::xlsx
