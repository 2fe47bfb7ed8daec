// What a bound object keeps that its class does not know.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bindery/classes/raw_node.h"

namespace bindery {

/// Where an unknown element stood: behind repeat `ordinal` (from 1) of the known child `slot`
/// (1 is the first child of the class's table, 0: before all).
struct Placed {
    std::uint16_t slot;
    std::uint32_t ordinal;
    c_raw_node node;
};

/// An unknown attribute on a child element of simple type, such as `xml:space` on a text.
struct PlacedAttr {
    std::uint16_t slot;
    std::uint32_t ordinal;
    Attr attr;
};

/// What the schema does not know of one element, in document order.
struct Extras {
    std::vector<Attr> attrs;
    std::vector<NsDecl> decls;
    std::vector<Placed> elements;
    std::vector<PlacedAttr> childAttrs;
    bool isBlankAsRead = false;  // the element's text was one blank; one that is set goes out as a no-break space

    bool empty() const {
        return attrs.empty() && decls.empty() && elements.empty() && childAttrs.empty() && !isBlankAsRead;
    }

    /// Value of an unknown attribute by its name as written ("x14ac:dyDescent"); null when there is none.
    const std::string* attribute(std::string_view asWritten) const;
    void setAttribute(std::string_view asWritten, std::string_view uri, std::string_view value);
    bool removeAttribute(std::string_view asWritten);
    const NsDecl* declaration(std::string_view prefix) const;
    /// First kept element of that local name, null when there is none.
    const c_raw_node* element(std::string_view local) const;
};

/// Writes the kept elements of an object between its known children.
class PlacedWriter {
public:
    PlacedWriter(c_xml_writer& writer, const Extras* extras);

    /// Those that stand before child `slot`, and those behind its repeat `ordinal`. In the order of writing.
    void before(std::uint32_t slot);
    void behind(std::uint32_t slot, std::uint32_t ordinal);
    /// Those behind the last repeat of a child, then all that are left.
    void behindAll(std::uint32_t slot) { behind(slot, 0xFFFFFFFF); }
    void rest() { before(0xFFFFFFFF); }

private:
    c_xml_writer& _writer;
    std::vector<const Placed*> _placed;
    std::size_t _next = 0;
};

}  // namespace bindery
