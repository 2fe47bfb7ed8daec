#include "refhost/values/entry_store.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace refhost {

int compareTuples(std::size_t dims, const int* a, const int* b) {
    for (std::size_t d = 0; d < dims; ++d)
        if (a[d] != b[d]) return a[d] < b[d] ? -1 : 1;
    return 0;
}

HostValue* DenseStore::find(const int* tuple) {
    std::size_t offset = 0;
    for (std::size_t d = 0; d < _low.size(); ++d) {
        const auto step = static_cast<std::size_t>(std::int64_t{tuple[d]} - _low[d]);  // wraps below the box
        if (step >= _extent[d]) return nullptr;
        offset = offset * _extent[d] + step;
    }
    return &_values[offset];
}

HostValue* DenseStore::at(const int* tuple, std::span<const int> low, std::span<const int> high) {
    if (HostValue* value = find(tuple)) return value;
    return grow(tuple, low, high) ? find(tuple) : nullptr;
}

bool DenseStore::grow(const int* tuple, std::span<const int> low, std::span<const int> high) {
    const std::size_t dims = _low.size();
    std::vector<int> newLow(dims);
    std::vector<std::size_t> newExtent(dims);
    const bool fresh = _values.empty();
    for (const bool withSlack : {true, false}) {
        std::size_t cells = 1;
        for (std::size_t d = 0; d < dims; ++d) {
            std::int64_t from = std::min(tuple[d], low[d]), to = std::max(tuple[d], high[d]);
            if (!fresh) {
                const std::int64_t oldTo = std::int64_t{_low[d]} + static_cast<std::int64_t>(_extent[d]) - 1;
                from = std::min<std::int64_t>(from, _low[d]);
                // A dimension that grew once will grow again: half as much room on top keeps the copying linear.
                if (withSlack && to > oldTo) to += static_cast<std::int64_t>(_extent[d] / 2);
                to = std::max(to, oldTo);
            }
            newLow[d] = static_cast<int>(from);
            newExtent[d] = static_cast<std::size_t>(to - from + 1);
            if (newExtent[d] > maxCells / cells) {
                cells = 0;
                break;
            }
            cells *= newExtent[d];
        }
        if (cells == 0) continue;

        std::vector<HostValue> larger(cells);
        if (!fresh) {
            // One run of the last dimension at a time.
            const std::size_t run = _extent[dims - 1];
            std::vector<std::size_t> place(dims, 0);
            for (std::size_t source = 0; source < _values.size(); source += run) {
                std::size_t target = 0;
                for (std::size_t d = 0; d < dims; ++d)
                    target =
                        target * newExtent[d] + place[d] + static_cast<std::size_t>(std::int64_t{_low[d]} - newLow[d]);
                std::memcpy(&larger[target], &_values[source], run * sizeof(HostValue));
                for (std::size_t d = dims - 1; d-- > 0;) {
                    if (++place[d] < _extent[d]) break;
                    place[d] = 0;
                }
            }
        }
        _values.swap(larger);
        _low.swap(newLow);
        _extent.swap(newExtent);
        return true;
    }
    return false;
}

std::uint32_t SparseStore::hashOf(const int* tuple) const {
    std::uint64_t hash = 0x9e3779b97f4a7c15u;
    for (std::size_t d = 0; d < _dims; ++d) {
        hash ^= static_cast<std::uint32_t>(tuple[d]);
        hash *= 0xff51afd7ed558ccdu;
        hash ^= hash >> 33;
    }
    return static_cast<std::uint32_t>(hash);
}

std::size_t SparseStore::slotOf(const int* tuple) const {
    const std::size_t mask = _slots.size() - 1;
    for (std::size_t at = hashOf(tuple) & mask;; at = (at + 1) & mask)
        if (_slots[at] == 0 || compareTuples(_dims, tupleOf(_slots[at] - 1), tuple) == 0) return at;
}

HostValue* SparseStore::find(const int* tuple) {
    if (_slots.empty()) return nullptr;
    const std::uint32_t entry = _slots[slotOf(tuple)];
    return entry == 0 ? nullptr : &_values[entry - 1];
}

HostValue& SparseStore::at(const int* tuple) {
    if (_values.size() * 2 >= _slots.size()) rehash();
    std::uint32_t& entry = _slots[slotOf(tuple)];
    if (entry == 0) {
        const std::size_t last = _values.size();
        if (last > 0 && compareTuples(_dims, tupleOf(static_cast<std::uint32_t>(last - 1)), tuple) > 0)
            _cameInOrder = false;
        _sorted = _cameInOrder;
        _tuples.insert(_tuples.end(), tuple, tuple + _dims);
        _values.push_back({});
        entry = static_cast<std::uint32_t>(_values.size());
    }
    return _values[entry - 1];
}

void SparseStore::sort() {
    if (_sorted) return;
    _order.resize(_values.size());
    std::iota(_order.begin(), _order.end(), 0u);
    std::sort(_order.begin(), _order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return compareTuples(_dims, tupleOf(a), tupleOf(b)) < 0; });
    _sorted = true;
    _cursor = 0;
}

const std::vector<std::uint32_t>* SparseStore::order() {
    sort();
    return _cameInOrder ? nullptr : &_order;
}

const int* SparseStore::first() {
    if (_values.empty()) return nullptr;
    sort();
    _cursor = 0;
    return tupleOf(_cameInOrder ? 0 : _order[0]);
}

const int* SparseStore::next(const int* tuple) {
    sort();
    const std::size_t count = _values.size();
    const auto nth = [&](std::size_t place) {
        return tupleOf(_cameInOrder ? static_cast<std::uint32_t>(place) : _order[place]);
    };
    if (_cursor < count && compareTuples(_dims, nth(_cursor), tuple) == 0) {
        ++_cursor;
    } else {  // not where the last walk stood: search
        std::size_t low = 0, high = count;
        while (low < high) {
            const std::size_t middle = low + (high - low) / 2;
            if (compareTuples(_dims, nth(middle), tuple) <= 0)
                low = middle + 1;
            else
                high = middle;
        }
        _cursor = low;
    }
    return _cursor < count ? nth(_cursor) : nullptr;
}

void SparseStore::rehash() {
    _slots.assign(_slots.empty() ? 16 : _slots.size() * 2, 0);
    const std::size_t mask = _slots.size() - 1;
    for (std::uint32_t entry = 0; entry < _values.size(); ++entry) {
        std::size_t at = hashOf(tupleOf(entry)) & mask;
        while (_slots[at] != 0) at = (at + 1) & mask;
        _slots[at] = entry + 1;
    }
}

}  // namespace refhost
