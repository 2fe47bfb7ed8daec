#include "hosts/python/values/known_objects.h"

#include <bit>

namespace pyhost {

/// The slot of a key, or the free one where it belongs.
std::size_t KnownObjects::placeOf(std::uint64_t key) const {
    const std::size_t mask = _slots.size() - 1;
    const auto mixed = (key * 0x9E3779B97F4A7C15U) >> (64 - std::countr_zero(_slots.size()));
    std::size_t at = static_cast<std::size_t>(mixed);
    while (_slots[at].key != key && _slots[at].key != 0) at = (at + 1) & mask;
    return at;
}

const py::object* KnownObjects::findKnown(std::uint64_t key) const {
    if (_slots.empty() || key == 0) return nullptr;
    const Slot& slot = _slots[placeOf(key)];
    return slot.key == key ? &slot.made : nullptr;
}

void KnownObjects::keep(std::uint64_t key, const py::object& made) {
    if (key == 0) return;
    if (_count * 2 >= _slots.size()) {
        std::vector<Slot> before(_slots.empty() ? 64 : _slots.size() * 2);
        before.swap(_slots);
        for (Slot& slot : before)
            if (slot.key != 0) _slots[placeOf(slot.key)] = std::move(slot);
    }
    _slots[placeOf(key)] = {key, made};
    ++_count;
}

}  // namespace pyhost
