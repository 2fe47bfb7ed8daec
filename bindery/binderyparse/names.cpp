// Prefixes, namespaces and their ids.

#include <algorithm>

#include "bindery/binderyparse/reader.h"

namespace bindery {

int c_xml_reader::intern(std::string_view uri) {
    if (uri.empty()) return namespace_none;
    const auto known = _uris.find(uri);
    if (known != _uris.end()) return known->second;
    const int id = std::max(int(namespace_first_unknown), static_cast<int>(_uriOfId.size()));
    nameUri(uri, id);
    return id;
}

void c_xml_reader::nameUri(std::string_view uri, int id) {
    const auto place = static_cast<std::size_t>(id);
    if (_uriOfId.size() <= place) _uriOfId.resize(place + 1);
    _uriOfId[place] = _uris.insert_or_assign(std::string(uri), id).first->first;
}

void c_xml_reader::bindNamespaces(std::span<const NamespaceEntry> table) {
    for (const NamespaceEntry& entry : table) nameUri(entry.uri, entry.id);
}

int c_xml_reader::resolve(std::string_view prefix) const {
    return prefix.empty() ? _defaultNs : boundTo(prefix);
}

int c_xml_reader::boundTo(std::string_view prefix) const {
    for (auto binding = _bindings.rbegin(); binding != _bindings.rend(); ++binding)
        if (binding->prefix == prefix) return binding->ns;
    if (prefix.empty()) return namespace_none;
    if (prefix == "xml") return _uris.find(xmlUri)->second;
    return namespace_unresolved;
}

std::string_view c_xml_reader::uriOf(int ns) const {
    const auto place = static_cast<std::size_t>(ns);
    return place < _uriOfId.size() ? _uriOfId[place] : std::string_view();
}

std::span<const NamespaceBinding> c_xml_reader::declarations() const {
    if (_open.empty()) return {};
    return std::span(_bindings).subspan(_open.back().bindings);
}

void c_xml_reader::resolveNames() {
    const std::size_t colon = _elementName.find(':');
    const bool prefixed = colon != std::string_view::npos;
    _elementNs = resolve(prefixed ? _elementName.substr(0, colon) : std::string_view());
    _elementLocal = prefixed ? _elementName.substr(colon + 1) : _elementName;
    for (RawAttribute& attribute : _attributes)
        if (!attribute.prefix.empty()) attribute.ns = resolve(attribute.prefix);
}

const RawAttribute* c_xml_reader::repeatedAttribute() const {
    constexpr std::size_t few = 16;
    if (_attributes.size() <= few) {
        for (auto one = _attributes.begin(); one != _attributes.end(); ++one)
            if (std::any_of(_attributes.begin(), one, [&](const RawAttribute& a) { return a.name == one->name; }))
                return &*one;
        return nullptr;
    }
    std::vector<const RawAttribute*> sorted;
    for (const RawAttribute& attribute : _attributes) sorted.push_back(&attribute);
    std::ranges::sort(sorted, {}, &RawAttribute::name);
    const auto again = std::ranges::adjacent_find(sorted, {}, &RawAttribute::name);
    return again != sorted.end() ? *again : nullptr;
}

int c_xml_reader::tokenise(const NameEntry* table, const RawAttribute& attribute) const {
    static constexpr NameEntry instance[] = {
        entry(namespace_xsi, "type", token_xsi_type),
        entry(namespace_xsi, "nil", token_xsi_nil),
        entry(namespace_xsi, "schemaLocation", token_xsi_schema_location),
        entry(namespace_xsi, "noNamespaceSchemaLocation", token_xsi_no_namespace_schema_location),
        endOfNames,
    };
    if (attribute.ns == namespace_xsi) {
        const int token = findToken(instance, attribute.ns, attribute.local);
        if (token != token_unknown) return token;
    }
    return table != nullptr ? findToken(table, attribute.ns, attribute.local) : int(token_unknown);
}

}  // namespace bindery
