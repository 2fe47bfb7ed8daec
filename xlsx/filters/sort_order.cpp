#include "xlsx/filters/sort_order.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

#include "ooxml/cells/compact_cell.h"
#include "ooxml/generated/sml-sheet/sml-sheet.h"
#include "ooxml/generated/sml/sml.h"

namespace vellum::xlsx {
namespace {

// Numbers take the places up to that of infinity; what is no number has those behind it.
constexpr SortPlace textPlace = SortPlace{0xFFF1} << 48, booleanPlace = SortPlace{0xFFF2} << 48;
constexpr SortPlace errorPlace = SortPlace{0xFFF3} << 48, blankPlace = ~SortPlace{0};

constexpr bool isText(SortPlace place) {
    return place >= textPlace && place < booleanPlace;
}

/// Unsigned integers in the order of the numbers.
SortPlace numberPlace(double number) {
    const auto bits = std::bit_cast<std::uint64_t>(number + 0.0);  // of the two zeros one
    return bits >> 63 != 0 ? ~bits : bits | std::uint64_t{1} << 63;
}

struct Item {
    SortPlace place;
    std::uint32_t row;
};

constexpr unsigned digitBits = 11, digits = 6;
constexpr std::size_t digitCount = std::size_t{1} << digitBits;

constexpr std::size_t digitOf(SortPlace place, unsigned digit) {
    return place >> digit * digitBits & (digitCount - 1);
}

/// By one digit after the other, from the lowest; one that all items share needs no pass.
void sortByDigits(std::vector<Item>& items, std::vector<Item>& room) {
    std::vector<std::array<std::uint32_t, digitCount>> counts(digits);
    for (const Item& item : items) {
        for (unsigned digit = 0; digit < digits; ++digit) ++counts[digit][digitOf(item.place, digit)];
    }
    room.resize(items.size());
    for (unsigned digit = 0; digit < digits; ++digit) {
        auto& next = counts[digit];
        if (next[digitOf(items.front().place, digit)] == items.size()) continue;
        std::exclusive_scan(next.begin(), next.end(), next.begin(), std::uint32_t{0});
        for (const Item& item : items) room[next[digitOf(item.place, digit)]++] = item;
        items.swap(room);
    }
}

}  // namespace

/// By the last column first: every sort keeps what is equal in the order of the columns behind.
std::vector<std::uint32_t> sortedOrder(const std::vector<std::vector<SortPlace>>& columns, std::size_t rowCount) {
    constexpr std::size_t few = 4 * digitCount;
    std::vector<Item> items(rowCount), room;
    for (std::uint32_t row = 0; row < rowCount; ++row) items[row].row = row;
    for (auto column = columns.rbegin(); column != columns.rend(); ++column) {
        for (Item& item : items) item.place = (*column)[item.row];
        if (rowCount > few) {
            sortByDigits(items, room);
        } else {
            std::stable_sort(items.begin(), items.end(), [](auto& a, auto& b) { return a.place < b.place; });
        }
    }
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
    switch (value.kind) {
        case ValueKind::number:
            return _values.push_back(numberPlace(value.number));
        case ValueKind::text:
            return _values.push_back(textPlace + textAt(value));
        case ValueKind::boolean:
            return _values.push_back(booleanPlace + (value.number != 0 ? 1 : 0));
        case ValueKind::error:
            return _values.push_back(errorPlace);
        case ValueKind::blank:
            return _values.push_back(blankPlace);
    }
}

template <class Cell>
std::vector<SortPlace> Ranking<Cell>::textPlaces() const {
    std::vector<std::size_t> sorted(_texts.size());
    std::iota(sorted.begin(), sorted.end(), std::size_t{0});
    std::sort(sorted.begin(), sorted.end(), [&](std::size_t a, std::size_t b) { return _texts[a] < _texts[b]; });
    std::vector<SortPlace> places(_texts.size());
    SortPlace next = textPlace;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (i > 0 && _texts[sorted[i]] != _texts[sorted[i - 1]]) ++next;
        places[sorted[i]] = next;
    }
    return places;
}

template <class Cell>
std::vector<SortPlace> Ranking<Cell>::take() {
    const std::vector<SortPlace> places = textPlaces();
    for (SortPlace& value : _values) {
        if (isText(value)) value = places[value - textPlace];
        if (_descending && value != blankPlace) value = ~value;
    }
    return std::move(_values);
}

template class Ranking<sheet::c_CT_Cell>;
template class Ranking<strict::c_CT_Cell>;

}  // namespace vellum::xlsx
