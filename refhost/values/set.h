// Ordered sets: explicit ones, whose elements have positions from 1 in the order they came, and ranges of integers.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "refhost/values/object.h"
#include "refhost/values/text_pool.h"

namespace refhost {

/// A set. Its *index* of an element is what stands in an index tuple: the integer itself in a range, the position from
/// 1 otherwise. Not to be used from two threads at once.
class Set {
public:
    /// An explicit set without elements.
    Set(const TypeRegistry& types, HostType elementType, bool dynamic);
    /// A range; empty when `last` is below `first`.
    Set(const TypeRegistry& types, int first, int last, bool dynamic);
    ~Set();
    Set(const Set&) = delete;
    Set& operator=(const Set&) = delete;

    HostType elementType() const { return _elementType; }
    bool isRange() const { return _range; }
    bool isDynamic() const { return _dynamic; }
    /// As hostSetFlags gives it.
    HostType flags() const;
    int size() const { return _range ? _last - _first + 1 : static_cast<int>(_elements.size()); }

    /// Smallest and largest index; `last` is `first` less one in an empty set.
    int first() const { return _range ? _first : 1; }
    int last() const { return _range ? _last : size(); }
    bool hasIndex(int index) const { return index >= first() && index <= last(); }

    /// Index of a value, nothing when it is absent.
    std::optional<int> find(HostValue value) const;
    /// Finds or adds. Texts and objects are copied. Nothing when the value is absent and the set is not dynamic, or
    /// when it is full.
    std::optional<int> add(HostValue value);
    /// Adds, dynamic or not: for a set that is being filled by its declaration.
    std::optional<int> addInitial(HostValue value);
    /// Makes a dynamic range reach to `index`; false when the set is no dynamic range, or the range would get too long.
    bool extendTo(int index);
    /// The element at an index that the set has.
    HostValue element(int index) const;
    /// No more elements from now on.
    void finish() { _dynamic = false; }

    int openWalks = 0;

private:
    std::uint32_t hashOf(HostValue value) const;
    bool equal(HostValue a, HostValue b) const;
    /// Slot of the value, or of the free slot where it belongs.
    std::size_t slotOf(HostValue value, std::uint32_t hash) const;
    bool widen(int index);
    void rehash();

    const TypeRegistry& _types;
    const HostType _elementType;
    const HostType _kind;  // element type with aliases resolved
    const bool _range;
    bool _dynamic;
    int _first = 1, _last = 0;
    std::vector<HostValue> _elements;
    std::vector<std::uint32_t> _hashes;  // of the elements
    std::vector<std::uint32_t> _slots;   // open addressing: position from 1, 0 a free slot
    TextArena _texts;
};

}  // namespace refhost
