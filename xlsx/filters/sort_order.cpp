#include "xlsx/filters/sort_order.h"

#include <algorithm>
#include <numeric>

#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace vellum::xlsx {
namespace {

constexpr int kindOf(ValueKind kind) {
    return static_cast<int>(kind);
}

bool isEqual(const Ranked& a, const Ranked& b) {
    return a.kind == b.kind && a.place == b.place;
}

bool isBefore(const Ranked& a, const Ranked& b) {
    return a.kind != b.kind ? a.kind < b.kind : a.place < b.place;
}

/// A row with its value of the first column at hand.
struct Item {
    Ranked first;
    std::uint32_t row;
};

}  // namespace

std::vector<std::uint32_t> sortedOrder(const std::vector<std::vector<Ranked>>& columns, std::size_t rowCount) {
    std::vector<Item> items(rowCount);
    for (std::uint32_t row = 0; row < rowCount; ++row) items[row] = {columns.front()[row], row};
    std::sort(items.begin(), items.end(), [&](const Item& a, const Item& b) {
        if (!isEqual(a.first, b.first)) return isBefore(a.first, b.first);
        for (std::size_t i = 1; i < columns.size(); ++i) {
            const Ranked &inA = columns[i][a.row], &inB = columns[i][b.row];
            if (!isEqual(inA, inB)) return isBefore(inA, inB);
        }
        return a.row < b.row;
    });
    std::vector<std::uint32_t> order(rowCount);
    std::transform(items.begin(), items.end(), order.begin(), [](const Item& item) { return item.row; });
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
    _values.push_back({kindOf(value.kind), isText ? static_cast<double>(textAt(value)) : value.number});
}

template <class Cell>
std::vector<double> Ranking<Cell>::textPlaces() const {
    std::vector<std::size_t> sorted(_texts.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::sort(sorted.begin(), sorted.end(), [&](std::size_t a, std::size_t b) { return _texts[a] < _texts[b]; });
    std::vector<double> places(_texts.size());
    double next = 0;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (i > 0 && _texts[sorted[i]] != _texts[sorted[i - 1]]) ++next;
        places[sorted[i]] = next;
    }
    return places;
}

template <class Cell>
std::vector<Ranked> Ranking<Cell>::take() {
    const std::vector<double> places = textPlaces();
    for (Ranked& value : _values) {
        if (value.kind == kindOf(ValueKind::text)) value.place = places[static_cast<std::size_t>(value.place)];
        if (!_descending || value.kind == kindOf(ValueKind::blank)) continue;
        value.kind = kindOf(ValueKind::error) - value.kind;
        value.place = -value.place;
    }
    return std::move(_values);
}

template class Ranking<sheet::c_CT_Cell>;
template class Ranking<strict::c_CT_Cell>;

}  // namespace vellum::xlsx
