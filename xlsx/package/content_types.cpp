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
    const auto& elements = std::as_const(_root).choice();
    for (std::size_t i = 0; i < elements.size(); ++i) {  // a later duplicate replaces the earlier entry
        if (const auto* element = elements[i].find_Default()) _defaults[element->Extension()] = i;
        if (const auto* element = elements[i].find_Override()) _overrides[element->PartName()] = i;
    }
}

std::string ContentTypes::typeOf(std::string_view path) const {
    const auto& elements = _root.choice();
    const auto override = _overrides.find(partPath(path));
    if (override != _overrides.end()) return elements[override->second].find_Override()->ContentType();
    const std::string extension = extensionOf(path);
    if (extension.empty()) return {};
    const auto byExtension = _defaults.find(extension);
    if (byExtension != _defaults.end()) return elements[byExtension->second].find_Default()->ContentType();
    return {};
}

void ContentTypes::setOverride(std::string_view path, std::string_view type) {
    const auto found = _overrides.find(path);
    if (found != _overrides.end()) {
        _root.choice()[found->second].Override().ContentType(std::string(type));
        return;
    }
    _overrides.emplace(path, _root.choice().size());
    auto& element = _root.choice().append().Override();
    element.PartName(std::string(path));
    element.ContentType(std::string(type));
}

void ContentTypes::setDefault(std::string_view extension, std::string_view type) {
    const auto found = _defaults.find(extension);
    if (found != _defaults.end()) {
        _root.choice()[found->second].Default().ContentType(std::string(type));
        return;
    }
    _defaults.emplace(extension, _root.choice().size());
    auto& element = _root.choice().append().Default();
    element.Extension(std::string(extension));
    element.ContentType(std::string(type));
}

void ContentTypes::removeOverride(std::string_view path) {
    const auto found = _overrides.find(path);
    if (found == _overrides.end()) return;
    _root.choice().erase(found->second);
    buildMaps();
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
