#include "refhost/values/array.h"

#include <algorithm>
#include <limits>

namespace refhost {

namespace {
using Store = std::variant<DenseStore, SparseStore>;
Store storeFor(std::size_t dims, bool dynamic) {
    if (dynamic) return SparseStore(dims);
    return DenseStore(dims);
}
bool isRecord(const TypeInfo* info) {
    return info && info->classWord == hostClassRecord;
}
}  // namespace

Array::Array(const TypeRegistry& types, std::vector<Set*> sets, HostType elementType, bool dynamic)
    : _types(types),
      _sets(std::move(sets)),
      _elementType(elementType & hostTypeMask),
      _dynamic(dynamic),
      _ofObjects(!isBaseType(_elementType)),
      _ofRecords(isRecord(types.resolved(_elementType))),
      _store(storeFor(_sets.size(), dynamic)) {}

Array::~Array() {
    if (!_ofObjects) return;
    std::visit(
        [](auto& store) {
            for (const HostValue& value : store.values()) delete static_cast<Object*>(value.object);
        },
        _store);
}

int Array::count() const {
    if (_dynamic) return static_cast<int>(std::get<SparseStore>(_store).size());
    std::int64_t product = 1;
    for (const Set* set : _sets)
        product = std::min<std::int64_t>(product * set->size(), std::numeric_limits<int>::max());
    return static_cast<int>(product);
}

bool Array::inSets(const int* tuple) const {
    for (std::size_t d = 0; d < _sets.size(); ++d)
        if (!_sets[d]->hasIndex(tuple[d])) return false;
    return true;
}

bool Array::firstTuple(int* tuple) const {
    for (std::size_t d = 0; d < _sets.size(); ++d) {
        if (_sets[d]->size() == 0) return false;
        tuple[d] = _sets[d]->first();
    }
    return true;
}

bool Array::nextTuple(int* tuple) const {
    for (std::size_t d = _sets.size(); d-- > 0;) {
        if (tuple[d] < _sets[d]->last()) {
            ++tuple[d];
            return true;
        }
        tuple[d] = _sets[d]->first();
    }
    return false;
}

bool Array::firstEntry(int* tuple) {
    if (!_dynamic) return firstTuple(tuple);
    const int* first = std::get<SparseStore>(_store).first();
    if (first) std::copy_n(first, _sets.size(), tuple);
    return first != nullptr;
}

bool Array::nextEntry(int* tuple) {
    if (!_dynamic) return nextTuple(tuple);
    const int* next = std::get<SparseStore>(_store).next(tuple);
    if (next) std::copy_n(next, _sets.size(), tuple);
    return next != nullptr;
}

bool Array::exists(const int* tuple) {
    return _dynamic ? std::get<SparseStore>(_store).find(tuple) != nullptr : inSets(tuple);
}

HostValue Array::get(const int* tuple) {
    if (_ofRecords && !_dynamic && inSets(tuple)) {
        const HostValue* record = slot(tuple);
        return record ? *record : HostValue{};
    }
    const HostValue* value = std::visit([&](auto& store) { return store.find(tuple); }, _store);
    return value ? *value : HostValue{};
}

HostValue* Array::slot(const int* tuple) {
    for (std::size_t d = 0; d < _sets.size(); ++d)
        if (!_sets[d]->extendTo(tuple[d])) return nullptr;
    HostValue& value = place(tuple);
    if (_ofObjects && !value.object) value.object = createObject(_types, _elementType).release();
    return &value;
}

bool Array::exchangeSet(std::size_t dimension, Set& set) {
    const Set& before = *_sets.at(dimension);
    if (set.first() != before.first() || set.last() != before.last()) return false;
    _sets[dimension] = &set;
    return true;
}

HostValue& Array::place(const int* tuple) {
    if (auto* sparse = std::get_if<SparseStore>(&_store)) return sparse->at(tuple);
    auto& dense = std::get<DenseStore>(_store);
    if (HostValue* value = dense.find(tuple)) return *value;
    std::vector<int> low, high;
    for (const Set* set : _sets) {
        low.push_back(set->first());
        high.push_back(set->last());
    }
    if (HostValue* value = dense.at(tuple, low, high)) return *value;
    SparseStore sparse(_sets.size());
    dense.forEachStored([&](const int* stored, HostValue value) { sparse.at(stored) = value; });
    _store = std::move(sparse);
    return std::get<SparseStore>(_store).at(tuple);
}

}  // namespace refhost
