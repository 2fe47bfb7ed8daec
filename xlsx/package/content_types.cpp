#include "xlsx/package/content_types.h"

#include <algorithm>
#include <utility>

namespace vellum {

ContentTypes::ContentTypes(const PartBytes& part) : XmlFile(part) {
    buildMaps();
}

void ContentTypes::buildMaps() {
    _defaults.clear();
    _overrides.clear();
    _overrideTotal = 0;
    for (auto& element : _root.choice()) {  // a later duplicate replaces the earlier entry
        if (const auto* const known = element.find_Default()) _defaults[known->Extension()] = &element;
        if (const auto* const known = element.find_Override()) {
            _overrides[known->PartName()] = &element;
            ++_overrideTotal;
        }
    }
}

std::string ContentTypes::typeOf(std::string_view path) const {
    const auto override = _overrides.find(partPath(path));
    if (override != _overrides.end()) return override->second->find_Override()->ContentType();
    const std::string extension = extensionOf(path);
    if (extension.empty()) return {};
    const auto byExtension = _defaults.find(extension);
    if (byExtension != _defaults.end()) return byExtension->second->find_Default()->ContentType();
    return {};
}

void ContentTypes::setOverride(std::string_view path, std::string_view type) {
    const auto found = _overrides.find(path);
    if (found != _overrides.end()) {
        found->second->Override().ContentType(std::string(type));
        return;
    }
    Element& made = _root.choice().append();
    _overrides.emplace(path, &made);
    ++_overrideTotal;
    auto& element = made.Override();
    element.PartName(std::string(path));
    element.ContentType(std::string(type));
}

void ContentTypes::setDefault(std::string_view extension, std::string_view type) {
    const auto found = _defaults.find(extension);
    if (found != _defaults.end()) {
        found->second->Default().ContentType(std::string(type));
        return;
    }
    Element& made = _root.choice().append();
    _defaults.emplace(extension, &made);
    auto& element = made.Default();
    element.Extension(std::string(extension));
    element.ContentType(std::string(type));
}

void ContentTypes::removeOverride(std::string_view path) {
    const auto found = _overrides.find(path);
    if (found == _overrides.end()) return;
    auto& elements = _root.choice();
    auto at = elements.end();  // what came last often goes first
    do --at;
    while (&*at != found->second);
    elements.erase(static_cast<std::size_t>(at - elements.begin()));
    if (_overrideTotal != _overrides.size()) return buildMaps();  // an earlier one comes to light
    _overrides.erase(found);
    --_overrideTotal;
}

void ContentTypes::removeOverridesBut(const std::function<bool(const std::string& partName)>& isKnown) {
    auto& elements = _root.choice();
    const auto kept = std::remove_if(elements.begin(), elements.end(), [&](const auto& element) {
        const auto* const override = element.find_Override();
        return override && !isKnown(override->PartName());
    });
    if (kept == elements.end()) return;
    elements.erase(static_cast<std::size_t>(kept - elements.begin()), elements.size());
    buildMaps();
}

}  // namespace vellum
