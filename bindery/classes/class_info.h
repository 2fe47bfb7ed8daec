// The tables that describe a bound class.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

#include "bindery/binderyparse/names.h"
#include "bindery/values/value_spec.h"

namespace bindery {

class c_node;
class c_xml_reader;
class c_xml_writer;
struct ClassInfo;

/// How a member is held.
enum class Kind : std::uint8_t {
    single,        // ct_simple_pod_single: attribute, element or text of atomic type
    optional,      // ct_simple_pod_optional
    multi,         // ct_simple_pod_multi
    listSingle,    // ct_simple_pod_list_single
    listOptional,  // ct_simple_pod_list_optional
    child,         // ct_child: an element of complex type
    children,      // ct_non_pod_container: the same, repeating
    raw,           // ct_child<c_raw_node>: an element kept as it is
    raws,          // ct_non_pod_container<c_raw_node>
    group,         // ct_child of a class without an element of its own: a group or compositor
    groups,        // ct_non_pod_container of such, a new one for each repeat
};

inline constexpr std::uint32_t unbounded = noLimit;

/// One attribute, child element, compositor or text of a class. The table stands in schema order.
/// Member i of a table has the token `token_first_name + i`.
struct MemberInfo {
    const char* name = "";  // local name, for writing and reports; of a compositor ""
    std::uint16_t ns = namespace_none;
    Kind kind = Kind::optional;
    std::uint16_t offset = 0;  // of the holder in its object; not used for an option of a choice
    std::uint16_t line = 0;    // where the member stands in its generated source
    std::uint32_t minOccurs = 0;
    std::uint32_t maxOccurs = 1;
    const ValueSpec* spec = nullptr;  // of a value
    const ClassInfo* type = nullptr;  // of a child or group
};

enum class Content : std::uint8_t {
    children,  // elements in a sequence; also a class without any
    choice,    // one of its elements; the object's ct_choice is at `choiceOffset`
    text,      // simple content: `text` is read from the body
};

/// All that the generic loops know of a generated class.
struct ClassInfo {
    const char* name;        // "c_CT_Row"
    const char* sourceFile;  // of its reports, "ooxml/sml-sheet"
    Content content = Content::children;
    bool mayBeEmpty = true;                     // no child is mandatory
    const NameEntry* attributeNames = nullptr;  // null: no attributes
    std::span<const MemberInfo> attributes = {};
    const NameEntry* elementNames = nullptr;  // names of a compositor's elements all have its token
    std::span<const MemberInfo> elements = {};
    const MemberInfo* text = nullptr;
    std::uint16_t choiceOffset = 0;
    c_node* (*create)() = nullptr;

    // A class written by hand stands in for the generic loops. The start tag has been scanned; the end tag is
    // passed. The name is written as it is given.
    int (*unmarshal)(c_xml_reader& reader, c_node& object) = nullptr;
    int (*marshal)(c_xml_writer& writer, const c_node& object, const MemberInfo& member) = nullptr;
};

/// A global element: the root of a document.
struct RootInfo {
    const char* name;
    std::uint16_t ns;
    const ClassInfo* type;
    std::span<const NamespaceEntry> namespaces;  // of the unit
    /// Declared on the root, in this order, when the document has them not yet; for mc:Ignorable see below.
    std::span<const NamespaceEntry> whenMissing = {};
    /// Value of an mc:Ignorable that is added when there is none; null: none is added.
    const char* ignorable = nullptr;
    std::uint16_t line = 0;
};

}  // namespace bindery
