#include "bindery/classes/extras.h"

#include <algorithm>

namespace bindery {

c_bound::c_bound() = default;
c_bound::~c_bound() = default;
c_bound::c_bound(c_bound&&) noexcept = default;
c_bound& c_bound::operator=(c_bound&&) noexcept = default;

c_bound::c_bound(const c_bound& other)
    : c_node(other), _extras(other._extras ? std::make_unique<Extras>(*other._extras) : nullptr) {}

c_bound& c_bound::operator=(const c_bound& other) {
    if (this != &other) _extras = other._extras ? std::make_unique<Extras>(*other._extras) : nullptr;
    return *this;
}

Extras& c_bound::makeExtras() {
    if (!_extras) _extras = std::make_unique<Extras>();
    return *_extras;
}

void c_bound::dropExtras() {
    _extras.reset();
}

const std::string* Extras::attribute(std::string_view asWritten) const {
    for (const Attr& attr : attrs)
        if (attr.name == asWritten) return &attr.value;
    return nullptr;
}

void Extras::setAttribute(std::string_view asWritten, std::string_view uri, std::string_view value) {
    for (Attr& attr : attrs) {
        if (attr.name != asWritten) continue;
        attr.value = value;
        return;
    }
    attrs.push_back({std::string(asWritten), std::string(uri), std::string(value)});
}

bool Extras::removeAttribute(std::string_view asWritten) {
    return std::erase_if(attrs, [&](const Attr& attr) { return attr.name == asWritten; }) != 0;
}

const NsDecl* Extras::declaration(std::string_view prefix) const {
    for (const NsDecl& decl : decls)
        if (decl.prefix == prefix) return &decl;
    return nullptr;
}

const c_raw_node* Extras::element(std::string_view local) const {
    for (const Placed& placed : elements)
        if (!placed.node.isText() && placed.node.localName() == local) return &placed.node;
    return nullptr;
}

PlacedWriter::PlacedWriter(c_xml_writer& writer, const Extras* extras) : _writer(writer) {
    if (extras == nullptr) return;
    _placed.reserve(extras->elements.size());
    for (const Placed& placed : extras->elements) _placed.push_back(&placed);
    std::stable_sort(_placed.begin(), _placed.end(), [](const Placed* a, const Placed* b) {
        return a->slot != b->slot ? a->slot < b->slot : a->ordinal < b->ordinal;
    });
}

void PlacedWriter::before(std::uint32_t slot) {
    for (; _next < _placed.size() && _placed[_next]->slot < slot; ++_next) _placed[_next]->node.marshal(_writer);
}

void PlacedWriter::behind(std::uint32_t slot, std::uint32_t ordinal) {
    before(slot);
    for (; _next < _placed.size(); ++_next) {
        const Placed& placed = *_placed[_next];
        if (placed.slot != slot || placed.ordinal > ordinal) return;
        placed.node.marshal(_writer);
    }
}

}  // namespace bindery
