#include "bindery/classes/raw_node.h"

#include <algorithm>

#include "bindery/binderyparse/reader.h"
#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/values/value_spec.h"
#include "bindery/writer/xml_writer.h"

namespace bindery {

namespace {

std::string_view prefixOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string_view localOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// Finds the prefixes that a subtree uses and does not declare.
class NeededPrefixes {
public:
    explicit NeededPrefixes(const c_raw_node& root) { visit(root); }
    const std::vector<std::string_view>& prefixes() const { return _needed; }

private:
    void visit(const c_raw_node& node) {
        const std::size_t outside = _declared.size();
        for (const NsDecl& decl : node.decls) _declared.push_back(decl.prefix);
        use(prefixOf(node.name));
        for (const Attr& attr : node.attrs) {
            if (const std::string_view prefix = prefixOf(attr.name); !prefix.empty()) use(prefix);
            if (namesPrefixes(localOf(attr.name))) useList(attr.value);
        }
        for (const auto& child : node.children)
            if (!child->isText()) visit(*child);
        _declared.resize(outside);
    }

    /// Attributes of markup compatibility whose values are lists of prefixes.
    static bool namesPrefixes(std::string_view local) {
        return local == "Requires" || local == "Ignorable" || local == "ProcessContent" || local == "MustUnderstand";
    }

    void useList(std::string_view list) {
        while (!list.empty()) {
            const std::size_t blank = std::min(list.find_first_of(" \t\n\r"), list.size());
            const std::string_view item = list.substr(0, blank);
            list.remove_prefix(std::min(blank + 1, list.size()));
            if (const std::string_view prefix = item.substr(0, item.find(':')); !prefix.empty()) use(prefix);
        }
    }

    void use(std::string_view prefix) {
        if (prefix == "xml" || has(_declared, prefix) || has(_needed, prefix)) return;
        _needed.push_back(prefix);
    }

    static bool has(const std::vector<std::string_view>& list, std::string_view prefix) {
        return std::find(list.begin(), list.end(), prefix) != list.end();
    }

    std::vector<std::string_view> _declared, _needed;
};

std::string repaired(std::string_view text) {
    std::string out(text);
    repairUtf8(out);
    return out;
}

}  // namespace

c_raw_node::~c_raw_node() = default;

c_raw_node::c_raw_node(const c_raw_node& other)
    : c_node(other),
      name(other.name),
      uri(other.uri),
      decls(other.decls),
      attrs(other.attrs),
      text(other.text),
      needs(other.needs) {
    children.reserve(other.children.size());
    for (const auto& child : other.children) children.push_back(std::make_unique<c_raw_node>(*child));
}

c_raw_node& c_raw_node::operator=(const c_raw_node& other) {
    if (this != &other) *this = c_raw_node(other);
    return *this;
}

c_raw_node* c_raw_node::clone() const {
    return std::make_unique<c_raw_node>(*this).release();
}

std::string_view c_raw_node::localName() const {
    return localOf(name);
}

const std::string* c_raw_node::attribute(std::string_view asWritten) const {
    for (const Attr& attr : attrs)
        if (attr.name == asWritten) return &attr.value;
    return nullptr;
}

const c_raw_node* c_raw_node::child(std::string_view local) const {
    for (const auto& node : children)
        if (!node->isText() && node->localName() == local) return node.get();
    return nullptr;
}

std::string c_raw_node::textContent() const {
    std::string out = text;
    for (const auto& node : children) out += node->textContent();
    return out;
}

int c_raw_node::unmarshal(c_xml_reader& reader) {
    if (const int code = readTree(reader)) return code;
    needs.clear();
    const NeededPrefixes needed(*this);
    for (const std::string_view prefix : needed.prefixes()) {
        const int ns = reader.resolve(prefix);
        if (ns != namespace_unresolved) needs.push_back({std::string(prefix), std::string(reader.uriOf(ns))});
    }
    return 0;
}

int c_raw_node::readTree(c_xml_reader& reader) {
    const bool again = reader.repeatedAttribute() != nullptr;
    if (again)
        if (const int code = checkRepeatedAttributes(reader)) return code;
    name = reader.elementName();
    uri = reader.uriOf(reader.elementNamespace());
    for (const NamespaceBinding& binding : reader.declarations())
        decls.push_back({binding.prefix, std::string(reader.uriOf(binding.ns))});
    attrs.reserve(reader.attributes().size());
    for (const RawAttribute& attribute : reader.attributes()) {
        if (again && this->attribute(attribute.name) != nullptr) continue;
        attrs.push_back(
            {std::string(attribute.name), std::string(reader.uriOf(attribute.ns)), repaired(reader.value(attribute))});
    }
    if (reader.emptyElement()) {
        reader.closeElement();
        return reader.failure();
    }
    for (;;) {
        switch (reader.nextContent()) {
            case token_end_tag:
                return 0;
            case token_unknown:
                if (children.empty() || !children.back()->isText()) children.push_back(std::make_unique<c_raw_node>());
                children.back()->text += repaired(reader.text());
                break;
            case token_start_tag:
                children.push_back(std::make_unique<c_raw_node>());
                if (const int code = children.back()->readTree(reader)) return code;
                break;
            default:
                return reader.failure();
        }
    }
}

int c_raw_node::marshal(c_xml_writer& writer) const {
    writeTree(writer, true);
    return 0;
}

void c_raw_node::writeTree(c_xml_writer& writer, bool root) const {
    if (isText()) {
        writer.text(text);
        return;
    }
    writer.startElement(name);
    if (root) writer.keepContent();
    for (const NsDecl& decl : decls) writer.declare(decl.prefix, decl.uri);
    if (root)
        for (const NsDecl& need : needs) writer.declare(need.prefix, need.uri);
    for (const Attr& attr : attrs) writer.attribute(attr.name, attr.value);
    for (const auto& child : children) child->writeTree(writer, false);
    writer.endElement();
}

}  // namespace bindery
