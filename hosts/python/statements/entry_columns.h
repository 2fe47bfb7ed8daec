// The entries of an array in its order, taken whole.
#pragma once
#include <vector>

#include "hosts/python/statements/container.h"

namespace pyhost {

/// Looks at an array's entries where they lie, or copies them where they lie otherwise. Valid until the array changes.
class EntryColumns {
public:
    explicit EntryColumns(refhost::Array& array);
    EntryColumns(const EntryColumns&) = delete;
    EntryColumns& operator=(const EntryColumns&) = delete;

    static constexpr std::size_t mostEntries = std::size_t{1} << 28;
    /// Number of entries. Throws MemoryError for a static array that nobody can walk.
    static std::size_t countOf(const refhost::Array& array);

    std::size_t count() const { return _values.count; }
    const ValueColumn& values() const { return _values; }
    bool areCopied() const { return !_copied.empty(); }
    /// Place of an entry's element in the set of a dimension, from 0.
    std::size_t code(std::size_t entry, std::size_t dimension) const;

private:
    void takeStored(refhost::SparseStore& store);
    void takeAll(refhost::Array& array);

    std::vector<std::int64_t> _first;  // index of each set's first element
    std::vector<std::size_t> _extent;  // sizes of the sets
    const int* _tuples = nullptr;      // of a dynamic array
    ValueColumn _values;
    std::vector<HostValue> _copied;
};

}  // namespace pyhost
