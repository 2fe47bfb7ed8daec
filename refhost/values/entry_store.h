// Where an array keeps its entries: a grid for static arrays, a table of tuples for dynamic ones.
#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "host/interface/host_api.h"

namespace refhost {

/// A value for every tuple of a box that grows in any direction, zero where nothing was stored.
class DenseStore {
public:
    explicit DenseStore(std::size_t dims) : _low(dims), _extent(dims) {}

    static constexpr std::size_t maxCells = std::size_t{1} << 24;  // 128 MB of slots

    /// Null when the tuple lies outside of the box.
    HostValue* find(const int* tuple);
    /// The tuple's slot; the box grows to hold it and the box given by `low` and `high`. Null when that takes more than
    /// maxCells.
    HostValue* at(const int* tuple, std::span<const int> low, std::span<const int> high);
    std::vector<HostValue>& values() { return _values; }
    const std::vector<HostValue>& values() const { return _values; }
    /// The box: its least tuple, and how far it reaches in each dimension, 0 before the first store.
    const std::vector<int>& low() const { return _low; }
    const std::vector<std::size_t>& extent() const { return _extent; }
    /// Calls `visit(tuple, value)` for every value that is not zero.
    template <class Visit>
    void forEachStored(Visit&& visit) const {
        std::vector<int> tuple(_low.size());
        for (std::size_t offset = 0; offset < _values.size(); ++offset) {
            if (_values[offset].bits == 0) continue;
            std::size_t rest = offset;
            for (std::size_t d = tuple.size(); d-- > 0; rest /= _extent[d])
                tuple[d] = static_cast<int>(_low[d] + static_cast<std::int64_t>(rest % _extent[d]));
            visit(tuple.data(), _values[offset]);
        }
    }

private:
    bool grow(const int* tuple, std::span<const int> low, std::span<const int> high);

    std::vector<int> _low;             // of the box, by dimension
    std::vector<std::size_t> _extent;  // 0 before the first store
    std::vector<HostValue> _values;    // the last dimension runs fastest
};

/// Only the tuples that were stored, in any order of coming, walked in ascending order.
class SparseStore {
public:
    explicit SparseStore(std::size_t dims) : _dims(dims) {}

    std::size_t size() const { return _values.size(); }
    HostValue* find(const int* tuple);
    /// The tuple's value, made at zero when it is new.
    HostValue& at(const int* tuple);
    /// The least tuple, or the least one above `tuple`. Null when there is none.
    const int* first();
    const int* next(const int* tuple);
    std::vector<HostValue>& values() { return _values; }
    /// The tuples beside the values, in the order of coming.
    const std::vector<int>& tuples() const { return _tuples; }
    /// Places of values and tuples in ascending order of tuples; null when they came in this order.
    const std::vector<std::uint32_t>* order();

private:
    const int* tupleOf(std::uint32_t entry) const { return _tuples.data() + entry * _dims; }
    std::uint32_t hashOf(const int* tuple) const;
    std::size_t slotOf(const int* tuple) const;
    void sort();
    void rehash();

    std::size_t _dims;
    std::vector<int> _tuples;  // _dims integers for each entry
    std::vector<HostValue> _values;
    std::vector<std::uint32_t> _slots;  // open addressing: entry number from 1, 0 a free slot
    std::vector<std::uint32_t> _order;  // entry numbers in ascending order of tuples; empty when they came in order
    bool _cameInOrder = true, _sorted = true;
    std::size_t _cursor = 0;  // place in the order where the last walk stood
};

/// Negative, 0, positive: the first difference decides.
int compareTuples(std::size_t dims, const int* a, const int* b);

}  // namespace refhost
