// Elements of any content, kept as a tree.
#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bindery/values/node.h"

namespace bindery {

class c_xml_reader;
class c_xml_writer;

/// An attribute that no class knows: name as written, URI of its namespace ("" for none), value as read.
struct Attr {
    std::string name;
    std::string uri;
    std::string value;
};

/// A namespace declaration; prefix "" declares the default namespace.
struct NsDecl {
    std::string prefix;
    std::string uri;
};

/// An element kept as it was found, or a piece of text between elements. Comments and instructions are
/// dropped, CDATA becomes text, character data is kept exactly. Prefixes that the subtree uses and does not
/// declare stand in `needs` of its root, so that it can be written anywhere.
class c_raw_node final : public c_node {
public:
    std::string name;  // as written, with its prefix; "" for text
    std::string uri;
    std::vector<NsDecl> decls;  // declared on this element
    std::vector<Attr> attrs;
    std::vector<std::unique_ptr<c_raw_node>> children;
    std::string text;           // of a piece of text
    std::vector<NsDecl> needs;  // root of a kept subtree only

    c_raw_node() = default;
    c_raw_node(const c_raw_node& other);
    c_raw_node& operator=(const c_raw_node& other);
    c_raw_node(c_raw_node&&) noexcept = default;
    c_raw_node& operator=(c_raw_node&&) noexcept = default;
    ~c_raw_node() override;

    c_raw_node* clone() const override;

    bool isText() const { return name.empty(); }
    std::string_view localName() const;

    /// Value of an attribute by its name as written, null when there is none.
    const std::string* attribute(std::string_view asWritten) const;
    /// First child element of that local name, null when there is none.
    const c_raw_node* child(std::string_view local) const;
    /// All text below, in document order.
    std::string textContent() const;

    /// Reads the element whose start tag the reader has just scanned, with all below it. 0 or a code.
    int unmarshal(c_xml_reader& reader);
    int marshal(c_xml_writer& writer) const;

private:
    int readTree(c_xml_reader& reader);
    void writeTree(c_xml_writer& writer, bool root) const;
};

}  // namespace bindery
