// Python's objects that are made once for values that come again.
#pragma once
#include <pybind11/pybind11.h>

#include <cstdint>
#include <string_view>
#include <vector>

#include "hosts/python/values/texts.h"
#include "refhost/values/text_pool.h"

namespace pyhost {

/// Immutable objects by a key of 64 bits. Most columns have few different values; where they have not, no more are
/// kept.
class KnownObjects {
public:
    /// `enough`: how many different ones are kept in any case.
    explicit KnownObjects(std::size_t enough = std::size_t{1} << 16) : _enough(enough) {}
    /// The object of a key; `make()` gives it when it is not known. One of key 0 is never kept.
    template <class Make>
    py::object find(std::uint64_t key, Make&& make) {
        ++_asked;
        if (const py::object* known = findKnown(key)) return *known;
        py::object made = make();
        if (pays()) keep(key, made);
        return made;
    }
    /// Whether keeping more is worth its room: half of what was asked for was known.
    bool pays() const { return _count < _enough || _count * 2 < _asked; }

private:
    struct Slot {
        std::uint64_t key = 0;  // 0: free
        py::object made;
    };

    std::size_t placeOf(std::uint64_t key) const;
    const py::object* findKnown(std::uint64_t key) const;
    void keep(std::uint64_t key, const py::object& made);

    std::vector<Slot> _slots;  // a power of two of them
    std::size_t _enough, _count = 0, _asked = 0;
};

/// Texts as Python's, by what they say: so few that they stay near the processor, where finding one takes less time
/// than making it.
class KnownTexts {
public:
    py::object find(std::string_view text) {
        if (!_objects.pays()) return pythonText(text);
        const char* const kept = _pool.intern(text);
        return _objects.find(reinterpret_cast<std::uintptr_t>(kept), [&] { return pythonText(text); });
    }

private:
    refhost::TextPool _pool;
    KnownObjects _objects{4096};
};

}  // namespace pyhost
