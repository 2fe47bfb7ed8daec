#include "xlsx/package/part_map.h"

#include <algorithm>
#include <utility>

namespace vellum::xlsx {

auto PartMap::findIgnoringCase(std::string_view path) -> iterator {
    const auto [first, last] = _inAnyCase.equal_range(path);
    if (first == last) return _parts.end();
    return std::min_element(first, last, [](const auto& a, const auto& b) { return a.second->first < b.second->first; })
        ->second;
}

void PartMap::insert_or_assign(const std::string& path, std::unique_ptr<XFile> part) {
    const auto [place, isNew] = _parts.insert_or_assign(path, std::move(part));
    if (!isNew) return;
    try {
        _inAnyCase.emplace(place->first, place);
    } catch (...) {
        _parts.erase(place);
        throw;
    }
}

auto PartMap::erase(iterator part) -> iterator {
    const auto [first, last] = _inAnyCase.equal_range(part->first);
    _inAnyCase.erase(std::find_if(first, last, [&](const auto& known) { return known.second == part; }));
    return _parts.erase(part);
}

void PartMap::erase(const std::string& path) {
    if (const auto found = _parts.find(path); found != _parts.end()) erase(found);
}

void PartMap::clear() {
    _inAnyCase.clear();
    _parts.clear();
}

}  // namespace vellum::xlsx
