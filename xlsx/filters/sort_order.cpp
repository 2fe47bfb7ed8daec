#include "xlsx/filters/sort_order.h"

#include <algorithm>
#include <numeric>

#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace vellum::xlsx {
namespace {

/// Below 0 when `a` stands first, 0 when the next key decides.
int compare(const Ranked& a, const Ranked& b, bool descending) {
    if (a.kind == ValueKind::blank || b.kind == ValueKind::blank) {
        return static_cast<int>(a.kind == ValueKind::blank) - static_cast<int>(b.kind == ValueKind::blank);
    }
    int order = static_cast<int>(a.kind) - static_cast<int>(b.kind);
    if (order == 0) order = static_cast<int>(a.place > b.place) - static_cast<int>(a.place < b.place);
    return descending ? -order : order;
}

}  // namespace

std::vector<std::uint32_t> sortedOrder(const std::vector<RankedColumn>& columns, std::size_t rowCount) {
    std::vector<std::uint32_t> order(rowCount);
    std::iota(order.begin(), order.end(), 0u);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        for (const RankedColumn& column : columns) {
            const int found = compare(column.values[a], column.values[b], column.descending);
            if (found != 0) return found < 0;
        }
        return false;
    });
    return order;
}

template <class Cell>
std::size_t Ranking<Cell>::textAt(const FilterValue& value) {
    if (value.shared == FilterValue::notShared) {
        _texts.emplace_back(_reader.textOf(value));
        return _texts.size() - 1;
    }
    if (_ofShared.empty()) _ofShared.resize(_reader.book().sharedTotal());
    std::size_t& known = _ofShared[value.shared];
    if (known == 0) {
        _texts.emplace_back(_reader.textOf(value));
        known = _texts.size();
    }
    return known - 1;
}

template <class Cell>
void Ranking<Cell>::add(const Cell* cell) {
    const FilterValue value = _reader.read(cell);
    const bool isText = value.kind == ValueKind::text;
    _values.push_back({value.kind, isText ? static_cast<double>(textAt(value)) : value.number});
}

template <class Cell>
std::vector<Ranked> Ranking<Cell>::take() {
    std::vector<std::size_t> sorted(_texts.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::sort(sorted.begin(), sorted.end(), [&](std::size_t a, std::size_t b) { return _texts[a] < _texts[b]; });
    std::vector<double> place(_texts.size());
    double next = 0;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (i > 0 && _texts[sorted[i]] != _texts[sorted[i - 1]]) ++next;
        place[sorted[i]] = next;
    }
    for (Ranked& value : _values) {
        if (value.kind == ValueKind::text) value.place = place[static_cast<std::size_t>(value.place)];
    }
    return std::move(_values);
}

template class Ranking<sheet::c_CT_Cell>;
template class Ranking<strict::c_CT_Cell>;

}  // namespace vellum::xlsx
