// Arrays over index sets, static and dynamic, of any dimension.
#pragma once
#include <memory>
#include <variant>
#include <vector>

#include "refhost/values/entry_store.h"
#include "refhost/values/object.h"
#include "refhost/values/set.h"

namespace refhost {

/// An array. A static one has an entry at every tuple of its sets, zero where nothing was stored; a dynamic one has
/// what was stored. The array's order is that of its tuples, the last index running fastest. Sets are not owned and may
/// grow.
class Array {
public:
    /// At least one set.
    Array(const TypeRegistry& types, std::vector<Set*> sets, HostType elementType, bool dynamic);
    ~Array();
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;

    int dims() const { return static_cast<int>(_sets.size()); }
    const std::vector<Set*>& sets() const { return _sets; }
    HostType elementType() const { return _elementType; }
    bool isDynamic() const { return _dynamic; }
    HostType flags() const { return _elementType | (_dynamic ? HostType{hostFlagDynamic} : 0u); }
    /// Number of existing entries, at most INT_MAX.
    int count() const;

    /// All tuples, and the existing entries alone. Each writes the first or next tuple and answers true, or false when
    /// there is none. The tuple given to the next...() need not exist.
    bool firstTuple(int* tuple) const;
    bool nextTuple(int* tuple) const;
    bool firstEntry(int* tuple);
    bool nextEntry(int* tuple);

    bool exists(const int* tuple);
    /// The value, zero where there is none. The records of a static array come into being when they are asked for.
    HostValue get(const int* tuple);

    /// The slot for a value, made where it is new; an object type has its object in it. Extends dynamic ranges. Null
    /// when an index lies outside of its set, or the array would take too much memory.
    HostValue* slot(const int* tuple);

    /// Where the entries are kept, for whoever takes them whole: a dynamic array has a table, a static one a grid, or a
    /// table where the grid would take too much memory. Null for the other.
    SparseStore* sparse() { return std::get_if<SparseStore>(&_store); }
    DenseStore* dense() { return std::get_if<DenseStore>(&_store); }
    /// Takes another set for a dimension, in which every index means what it meant before. False, and nothing is done,
    /// when the two do not reach equally far.
    bool exchangeSet(std::size_t dimension, Set& set);

private:
    bool inSets(const int* tuple) const;
    HostValue& place(const int* tuple);

    const TypeRegistry& _types;
    std::vector<Set*> _sets;
    const HostType _elementType;
    const bool _dynamic, _ofObjects, _ofRecords;
    std::variant<DenseStore, SparseStore> _store;
};

}  // namespace refhost
