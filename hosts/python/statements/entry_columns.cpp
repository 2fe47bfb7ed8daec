#include "hosts/python/statements/entry_columns.h"

#include <algorithm>

namespace pyhost {

EntryColumns::EntryColumns(refhost::Array& array) {
    for (const refhost::Set* set : array.sets()) {
        _first.push_back(set->first());
        _extent.push_back(static_cast<std::size_t>(set->size()));
    }
    if (array.isDynamic())
        takeStored(*array.sparse());
    else
        takeAll(array);
}

std::size_t EntryColumns::countOf(const refhost::Array& array) {
    if (array.isDynamic()) return static_cast<std::size_t>(array.count());
    std::size_t count = 1;
    for (const refhost::Set* set : array.sets()) {
        const auto size = static_cast<std::size_t>(set->size());
        if (size == 0) return 0;
        if (size > mostEntries / count) throw std::bad_alloc();
        count *= size;
    }
    return count;
}

void EntryColumns::takeStored(refhost::SparseStore& store) {
    _values.order = store.order();
    _values.count = store.size();
    _values.first = store.values().data();
    _tuples = store.tuples().data();
}

void EntryColumns::takeAll(refhost::Array& array) {
    _values.count = countOf(array);
    if (_values.count == 0) return;
    const refhost::DenseStore* store = array.dense();
    // A grid of objects has none where nothing was stored: asking for them makes those of records.
    if (store != nullptr && refhost::isBaseType(array.elementType()) &&
        std::equal(_first.begin(), _first.end(), store->low().begin(), store->low().end()) &&
        _extent == store->extent()) {
        _values.first = store->values().data();
        return;
    }
    _copied.reserve(_values.count);
    std::vector<int> tuple(_first.size());
    for (bool more = array.firstTuple(tuple.data()); more; more = array.nextTuple(tuple.data()))
        _copied.push_back(array.get(tuple.data()));
    _values.first = _copied.data();
}

std::size_t EntryColumns::code(std::size_t entry, std::size_t dimension) const {
    if (_tuples != nullptr) {
        const std::size_t place = _values.order != nullptr ? (*_values.order)[entry] : entry;
        return static_cast<std::size_t>(_tuples[place * _first.size() + dimension] - _first[dimension]);
    }
    std::size_t rest = entry;
    for (std::size_t d = _first.size(); d-- > dimension + 1;) rest /= _extent[d];
    return rest % _extent[dimension];
}

}  // namespace pyhost
