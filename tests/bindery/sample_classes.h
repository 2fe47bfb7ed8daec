#pragma once

// Classes as the schema compiler emits them, for a small schema of our own: the tests of the generic loops
// run on them, and docs/xml-binding.md shows them.

#include "bindery/binderyparse/reader.h"
#include "bindery/classes/class_info.h"
#include "bindery/values/holders.h"
#include "bindery/writer/xml_writer.h"

namespace sample {

class c_CT_Item;
class c_EG_Shape;

extern const bindery::ValueSpec ST_Mode;
extern const bindery::ValueSpec ST_Level;
extern const bindery::ValueSpec ST_Code;
extern const bindery::ValueSpec ST_Refs;

/// An entry of a list: two attributes, one of them mandatory, and a text body.
class c_CT_Item : public bindery::c_bound {
public:
    c_CT_Item() = default;
    c_CT_Item* clone() const override;
    int unmarshal(bindery::c_xml_reader& reader, const char* name);
    int marshal(bindery::c_xml_writer& writer, const char* name) const;

    bindery::ct_simple_pod_optional<std::string>& mode() { return _mode; }
    const bindery::ct_simple_pod_optional<std::string>& mode() const { return _mode; }
    bindery::ct_simple_pod_single<std::string>& id() { return _id; }
    const bindery::ct_simple_pod_single<std::string>& id() const { return _id; }
    bindery::ct_simple_pod_optional<std::string>& rel() { return _rel; }
    const bindery::ct_simple_pod_optional<std::string>& rel() const { return _rel; }
    bindery::ct_simple_pod_optional<std::wstring>& value() { return _value; }
    const bindery::ct_simple_pod_optional<std::wstring>& value() const { return _value; }

    static const bindery::ClassInfo info;

private:
    static const bindery::MemberInfo _attributes[];
    static const bindery::MemberInfo _text;

    bindery::ct_simple_pod_optional<std::string> _mode;
    bindery::ct_simple_pod_single<std::string> _id;
    bindery::ct_simple_pod_optional<std::string> _rel;
    bindery::ct_simple_pod_optional<std::wstring> _value;
};

/// A choice of two elements.
class c_EG_Shape : public bindery::c_bound {
public:
    enum option { none, circle_option, square_option };
    c_EG_Shape() = default;
    c_EG_Shape* clone() const override;

    int option() const { return _choice.option(); }
    void unset() { _choice.unset(); }
    c_CT_Item& circle() { return _choice.get<c_CT_Item>(circle_option); }
    const c_CT_Item* getIf_circle() const { return _choice.getIf<c_CT_Item>(circle_option); }
    bindery::c_raw_node& square() { return _choice.get<bindery::c_raw_node>(square_option); }
    const bindery::c_raw_node* getIf_square() const { return _choice.getIf<bindery::c_raw_node>(square_option); }

    static const bindery::ClassInfo info;

private:
    static const bindery::MemberInfo _elements[];

    bindery::ct_choice _choice;
};

/// The root: attributes of several types, and children of each kind.
class c_CT_Root : public bindery::c_bound {
public:
    c_CT_Root() = default;
    c_CT_Root* clone() const override;
    int unmarshal(bindery::c_xml_reader& reader, const char* name);
    int marshal(bindery::c_xml_writer& writer, const char* name) const;

    bindery::ct_simple_pod_optional<unsigned int>& count() { return _count; }
    bindery::ct_simple_pod_optional<bool>& flag() { return _flag; }
    bindery::ct_simple_pod_optional<double>& size() { return _size; }
    bindery::ct_simple_pod_list_optional<std::string>& refs() { return _refs; }
    bindery::ct_simple_pod_optional<int>& level() { return _level; }
    bindery::ct_simple_pod_single<std::wstring>& title() { return _title; }
    bindery::ct_non_pod_container<c_CT_Item>& item() { return _item; }
    bindery::ct_simple_pod_multi<std::wstring>& note() { return _note; }
    bindery::ct_child<c_CT_Item>& last() { return _last; }
    bindery::ct_non_pod_container<c_EG_Shape>& shapes() { return _shapes; }
    bindery::ct_child<bindery::c_raw_node>& extLst() { return _extLst; }

    static const bindery::ClassInfo info;

private:
    static const bindery::MemberInfo _attributes[];
    static const bindery::MemberInfo _elements[];

    bindery::ct_simple_pod_optional<unsigned int> _count;
    bindery::ct_simple_pod_optional<bool> _flag;
    bindery::ct_simple_pod_optional<double> _size;
    bindery::ct_simple_pod_list_optional<std::string> _refs;
    bindery::ct_simple_pod_optional<int> _level;
    bindery::ct_simple_pod_single<std::wstring> _title;
    bindery::ct_non_pod_container<c_CT_Item> _item;
    bindery::ct_simple_pod_multi<std::wstring> _note;
    bindery::ct_child<c_CT_Item> _last;
    bindery::ct_non_pod_container<c_EG_Shape> _shapes;
    bindery::ct_child<bindery::c_raw_node> _extLst;
};

/// The global element `root`.
class c_root : public c_CT_Root {
public:
    c_root* clone() const override;
    int unmarshal(bindery::c_xml_reader& reader);
    int marshal(bindery::c_xml_writer& writer) const;
    static const bindery::RootInfo root;
};

}  // namespace sample
