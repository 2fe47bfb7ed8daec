#include "tests/bindery/sample_classes.h"

#include <cstddef>

#include "bindery/bridges/unmarshal_helper.h"
#include "bindery/values/regex.h"

// offsetof on classes with a virtual base table is what the tables are made of; both compilers support it.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace sample {

using namespace std::string_view_literals;
using bindery::Kind;

namespace {

constexpr bindery::NamespaceEntry namespaces[] = {
    {2, "", "urn:sample:main", true},
    {3, "r", "urn:sample:relations", true},
};

constexpr std::string_view ST_Mode_texts[] = {"External"sv, "Internal"sv};
constexpr bindery::Facets ST_Level_facets = {.minimum = 0, .maximum = 7};
constinit bindery::c_regex ST_Code_pattern("[A-Z]{2}[0-9]+");
constexpr const bindery::c_regex* ST_Code_patterns[] = {&ST_Code_pattern};
constexpr bindery::Facets ST_Code_facets = {.maxLength = 6, .patterns = ST_Code_patterns};

}  // namespace

constinit const bindery::ValueSpec ST_Mode =
    bindery::valueSpec(bindery::Atomic::narrow, bindery::Whitespace::collapse, {.enumeration = ST_Mode_texts});
constinit const bindery::ValueSpec ST_Level =
    bindery::valueSpec(bindery::Atomic::int32, bindery::Whitespace::collapse, {.facets = &ST_Level_facets});
constinit const bindery::ValueSpec ST_Code =
    bindery::valueSpec(bindery::Atomic::narrow, bindery::Whitespace::collapse, {.facets = &ST_Code_facets});
constinit const bindery::ValueSpec ST_Refs = bindery::valueSpec(bindery::Atomic::narrow, bindery::Whitespace::collapse);

// ---- CT_Item

constinit const bindery::MemberInfo c_CT_Item::_attributes[] = {
    {.name = "mode", .kind = Kind::optional, .offset = offsetof(c_CT_Item, _mode), .line = __LINE__, .spec = &ST_Mode},
    {.name = "id",
     .kind = Kind::single,
     .offset = offsetof(c_CT_Item, _id),
     .line = __LINE__,
     .minOccurs = 1,
     .spec = &ST_Code},
    {.name = "id",
     .ns = 3,
     .kind = Kind::optional,
     .offset = offsetof(c_CT_Item, _rel),
     .line = __LINE__,
     .spec = &ST_Refs},
};
static constexpr bindery::NameEntry c_CT_Item_attributeNames[] = {
    bindery::entry(1, "mode", 13), bindery::entry(1, "id", 14), bindery::entry(3, "id", 15), bindery::endOfNames};
constinit const bindery::MemberInfo c_CT_Item::_text = {
    .kind = Kind::optional, .offset = offsetof(c_CT_Item, _value), .line = __LINE__, .spec = &bindery::builtin::string};
constinit const bindery::ClassInfo c_CT_Item::info = {.name = "c_CT_Item",
                                                      .sourceFile = "tests/bindery/sample_classes",
                                                      .content = bindery::Content::text,
                                                      .attributeNames = c_CT_Item_attributeNames,
                                                      .attributes = _attributes,
                                                      .text = &_text,
                                                      .create = bindery::makeNode<c_CT_Item>};

c_CT_Item* c_CT_Item::clone() const {
    return std::make_unique<c_CT_Item>(*this).release();
}

int c_CT_Item::unmarshal(bindery::c_xml_reader& reader, const char*) {
    return bindery::unmarshalObject(reader, *this, info);
}

int c_CT_Item::marshal(bindery::c_xml_writer& writer, const char* name) const {
    return bindery::marshalObject(writer, *this, info, name);
}

// ---- EG_Shape

constinit const bindery::MemberInfo c_EG_Shape::_elements[] = {
    {.name = "circle", .ns = 2, .kind = Kind::child, .line = __LINE__, .minOccurs = 1, .type = &c_CT_Item::info},
    {.name = "square", .ns = 2, .kind = Kind::raw, .line = __LINE__, .minOccurs = 1},
};
static constexpr bindery::NameEntry c_EG_Shape_elementNames[] = {bindery::entry(2, "circle", 13),
                                                                 bindery::entry(2, "square", 14), bindery::endOfNames};
constinit const bindery::ClassInfo c_EG_Shape::info = {.name = "c_EG_Shape",
                                                       .sourceFile = "tests/bindery/sample_classes",
                                                       .content = bindery::Content::choice,
                                                       .mayBeEmpty = false,
                                                       .elementNames = c_EG_Shape_elementNames,
                                                       .elements = _elements,
                                                       .choiceOffset = offsetof(c_EG_Shape, _choice),
                                                       .create = bindery::makeNode<c_EG_Shape>};

c_EG_Shape* c_EG_Shape::clone() const {
    return std::make_unique<c_EG_Shape>(*this).release();
}

// ---- CT_Root

constinit const bindery::MemberInfo c_CT_Root::_attributes[] = {
    {.name = "count", .offset = offsetof(c_CT_Root, _count), .line = __LINE__, .spec = &bindery::builtin::unsignedInt},
    {.name = "flag", .offset = offsetof(c_CT_Root, _flag), .line = __LINE__, .spec = &bindery::builtin::boolean},
    {.name = "size", .offset = offsetof(c_CT_Root, _size), .line = __LINE__, .spec = &bindery::builtin::real},
    {.name = "refs",
     .kind = Kind::listOptional,
     .offset = offsetof(c_CT_Root, _refs),
     .line = __LINE__,
     .spec = &ST_Refs},
    {.name = "level", .offset = offsetof(c_CT_Root, _level), .line = __LINE__, .spec = &ST_Level},
};
static constexpr bindery::NameEntry c_CT_Root_attributeNames[] = {
    bindery::entry(1, "count", 13), bindery::entry(1, "flag", 14),  bindery::entry(1, "size", 15),
    bindery::entry(1, "refs", 16),  bindery::entry(1, "level", 17), bindery::endOfNames};
constinit const bindery::MemberInfo c_CT_Root::_elements[] = {
    {.name = "title",
     .ns = 2,
     .kind = Kind::single,
     .offset = offsetof(c_CT_Root, _title),
     .line = __LINE__,
     .minOccurs = 1,
     .spec = &bindery::builtin::string},
    {.name = "item",
     .ns = 2,
     .kind = Kind::children,
     .offset = offsetof(c_CT_Root, _item),
     .line = __LINE__,
     .maxOccurs = 3,
     .type = &c_CT_Item::info},
    {.name = "note",
     .ns = 2,
     .kind = Kind::multi,
     .offset = offsetof(c_CT_Root, _note),
     .line = __LINE__,
     .maxOccurs = bindery::unbounded,
     .spec = &bindery::builtin::string},
    {.name = "last",
     .ns = 2,
     .kind = Kind::child,
     .offset = offsetof(c_CT_Root, _last),
     .line = __LINE__,
     .type = &c_CT_Item::info},
    {.kind = Kind::groups,
     .offset = offsetof(c_CT_Root, _shapes),
     .line = __LINE__,
     .maxOccurs = bindery::unbounded,
     .type = &c_EG_Shape::info},
    {.name = "extLst", .ns = 2, .kind = Kind::raw, .offset = offsetof(c_CT_Root, _extLst), .line = __LINE__},
};
static constexpr bindery::NameEntry c_CT_Root_elementNames[] = {
    bindery::entry(2, "title", 13),  bindery::entry(2, "item", 14),
    bindery::entry(2, "note", 15),   bindery::entry(2, "last", 16),
    bindery::entry(2, "circle", 17), bindery::entry(2, "square", 17),
    bindery::entry(2, "extLst", 18), bindery::endOfNames};
constinit const bindery::ClassInfo c_CT_Root::info = {.name = "c_CT_Root",
                                                      .sourceFile = "tests/bindery/sample_classes",
                                                      .mayBeEmpty = false,
                                                      .attributeNames = c_CT_Root_attributeNames,
                                                      .attributes = _attributes,
                                                      .elementNames = c_CT_Root_elementNames,
                                                      .elements = _elements,
                                                      .create = bindery::makeNode<c_CT_Root>};

c_CT_Root* c_CT_Root::clone() const {
    return std::make_unique<c_CT_Root>(*this).release();
}

int c_CT_Root::unmarshal(bindery::c_xml_reader& reader, const char*) {
    return bindery::unmarshalObject(reader, *this, info);
}

int c_CT_Root::marshal(bindery::c_xml_writer& writer, const char* name) const {
    return bindery::marshalObject(writer, *this, info, name);
}

// ---- root

constinit const bindery::RootInfo c_root::root = {
    .name = "root", .ns = 2, .type = &c_CT_Root::info, .namespaces = namespaces, .line = __LINE__};

c_root* c_root::clone() const {
    return std::make_unique<c_root>(*this).release();
}

int c_root::unmarshal(bindery::c_xml_reader& reader) {
    return bindery::unmarshalRoot(reader, *this, root);
}

int c_root::marshal(bindery::c_xml_writer& writer) const {
    return bindery::marshalRoot(writer, *this, root);
}

}  // namespace sample
