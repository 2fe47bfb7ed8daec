#include "refhost/values/set.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace refhost {
namespace {

constexpr std::int64_t maxSetSize = std::numeric_limits<int>::max() - 1;

const char* orEmpty(const char* text) {
    return text ? text : "";
}

std::uint32_t mixed(std::uint64_t bits) {
    bits *= 0x9e3779b97f4a7c15u;
    return static_cast<std::uint32_t>(bits >> 32);
}

}  // namespace

Set::Set(const TypeRegistry& types, HostType elementType, bool dynamic)
    : _types(types),
      _elementType(elementType & hostTypeMask),
      _kind(types.resolve(elementType)),
      _range(false),
      _dynamic(dynamic) {}

Set::Set(const TypeRegistry& types, int first, int last, bool dynamic)
    : _types(types), _elementType(hostTypeInteger), _kind(hostTypeInteger), _range(true), _dynamic(dynamic) {
    if (first <= last && std::int64_t{last} - first < maxSetSize) _first = first, _last = last;
}

Set::~Set() {
    if (isBaseType(_kind)) return;
    for (const HostValue& value : _elements) delete static_cast<Object*>(value.object);
}

HostType Set::flags() const {
    return _elementType | (_dynamic ? HostType{hostFlagDynamic} : 0u) | (_range ? 0u : HostType{hostFlagExplicit});
}

std::uint32_t Set::hashOf(HostValue value) const {
    switch (_kind) {
        case hostTypeInteger:
            return mixed(static_cast<std::uint32_t>(value.integer));
        case hostTypeBoolean:
            return mixed(value.integer != 0);
        case hostTypeReal:
            if (value.real == 0) value.real = 0;  // -0 and 0 are one element, and so are all NaN
            if (std::isnan(value.real)) return 1;
            return mixed(static_cast<std::uint64_t>(value.bits));
        case hostTypeText:
            return static_cast<std::uint32_t>(std::hash<std::string_view>{}(orEmpty(value.text)));
        default: {
            std::string key;
            appendKey(key, static_cast<const Object*>(value.object));
            return static_cast<std::uint32_t>(std::hash<std::string>{}(key));
        }
    }
}

bool Set::equal(HostValue a, HostValue b) const {
    switch (_kind) {
        case hostTypeInteger:
            return a.integer == b.integer;
        case hostTypeBoolean:
            return (a.integer != 0) == (b.integer != 0);
        case hostTypeReal:
            return a.real == b.real || (std::isnan(a.real) && std::isnan(b.real));
        case hostTypeText:
            return std::strcmp(orEmpty(a.text), orEmpty(b.text)) == 0;
        default: {
            std::string keyA, keyB;
            appendKey(keyA, static_cast<const Object*>(a.object));
            appendKey(keyB, static_cast<const Object*>(b.object));
            return keyA == keyB;
        }
    }
}

std::size_t Set::slotOf(HostValue value, std::uint32_t hash) const {
    const std::size_t mask = _slots.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const std::uint32_t position = _slots[at];
        if (position == 0 || (_hashes[position - 1] == hash && equal(_elements[position - 1], value))) return at;
    }
}

std::optional<int> Set::find(HostValue value) const {
    if (_range) {
        if (!hasIndex(value.integer)) return std::nullopt;
        return value.integer;
    }
    if (_slots.empty()) return std::nullopt;
    const std::uint32_t position = _slots[slotOf(value, hashOf(value))];
    if (position == 0) return std::nullopt;
    return static_cast<int>(position);
}

std::optional<int> Set::add(HostValue value) {
    if (_dynamic) return addInitial(value);
    return find(value);
}

std::optional<int> Set::addInitial(HostValue value) {
    if (_range) {
        if (!widen(value.integer)) return std::nullopt;
        return value.integer;
    }
    if (_elements.size() * 4 >= _slots.size() * 3) rehash();
    const std::uint32_t hash = hashOf(value);
    std::uint32_t& position = _slots[slotOf(value, hash)];
    if (position != 0) return static_cast<int>(position);
    if (_kind == hostTypeText) {
        value.text = _texts.keep(orEmpty(value.text));
    } else if (!isBaseType(_kind)) {
        if (!value.object) return std::nullopt;
        value.object = cloneObject(_types, *static_cast<const Object*>(value.object), _elementType).release();
        if (!value.object) return std::nullopt;  // of another type
    }
    _elements.push_back(value);
    _hashes.push_back(hash);
    position = static_cast<std::uint32_t>(_elements.size());
    return static_cast<int>(position);
}

bool Set::widen(int index) {
    if (size() == 0) {
        _first = _last = index;
        return true;
    }
    const int newFirst = std::min(_first, index), newLast = std::max(_last, index);
    if (std::int64_t{newLast} - newFirst >= maxSetSize) return false;
    _first = newFirst;
    _last = newLast;
    return true;
}

bool Set::extendTo(int index) {
    return hasIndex(index) || (_range && _dynamic && widen(index));
}

HostValue Set::element(int index) const {
    HostValue value{};
    if (_range)
        value.integer = index;
    else if (hasIndex(index))
        value = _elements[static_cast<std::size_t>(index) - 1];
    return value;
}

void Set::rehash() {
    _slots.assign(_slots.empty() ? 16 : _slots.size() * 2, 0);
    const std::size_t mask = _slots.size() - 1;
    for (std::size_t i = 0; i < _hashes.size(); ++i) {
        std::size_t at = _hashes[i] & mask;
        while (_slots[at] != 0) at = (at + 1) & mask;
        _slots[at] = static_cast<std::uint32_t>(i + 1);
    }
}

}  // namespace refhost
