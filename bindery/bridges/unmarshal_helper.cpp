#include "bindery/bridges/unmarshal_helper.h"

#include <string>

#include "bindery/bridges/bridges.h"
#include "bindery/bridges/member_access.h"
#include "bindery/classes/extras.h"

namespace bindery {

// ---- the course of one element

c_unmarshal_helper::~c_unmarshal_helper() = default;

bool c_unmarshal_helper::attributeHandler(c_xml_reader&, const RawAttribute&, int&) {
    return false;
}
int c_unmarshal_helper::attributeCheck() {
    return 0;
}
bool c_unmarshal_helper::textHandler(c_xml_reader&, int&) {
    return false;
}
int c_unmarshal_helper::elementHandler(c_xml_reader& reader) {
    reader.nextChild();
    return 0;
}
bool c_unmarshal_helper::hasSimpleContent() const {
    return false;
}

int scanFailure(c_xml_reader& reader, std::string_view name) {
    const int failure = reader.failure() != 0 ? reader.failure() : int(unexpected_end);
    const int code = reader.fail(failure, name);
    return code != 0 ? code : failure;
}

int c_unmarshal_helper::scanFailure() {
    return bindery::scanFailure(_reader, _name);
}

int c_unmarshal_helper::unmarshal() {
    _name = _reader.elementName();
    for (const RawAttribute& attribute : _reader.attributes()) {
        int error = 0;
        const bool taken = attributeHandler(_reader, attribute, error);
        if (_reader.failed()) return scanFailure();
        if (error != 0) return error;
        if (!taken && attribute.ns != namespace_xsi)
            if (const int code = _reader.fail(unexpected_attribute, attributeItem(attribute.name))) return code;
    }
    if (const int code = attributeCheck()) return code;

    if (hasSimpleContent()) {
        int error = 0;
        textHandler(_reader, error);
        return error;
    }
    if (_reader.emptyElement()) {
        _reader.closeElement();
        return _mayBeEmpty ? 0 : _reader.fail(unexpected_empty, _name);
    }
    if (const int code = elementHandler(_reader)) return code;
    if (_reader.token() == token_failed) return scanFailure();
    if (_reader.token() != token_end_tag || !_reader.endTagMatched()) return _reader.fail(bad_end_of_element, _name);
    return 0;
}

// ---- what nobody knows

void keepDeclarations(c_xml_reader& reader, Extras& extras) {
    for (const NamespaceBinding& binding : reader.declarations())
        extras.decls.push_back({binding.prefix, std::string(reader.uriOf(binding.ns))});
}

namespace {

Attr kept(c_xml_reader& reader, const RawAttribute& attribute) {
    Attr attr = {std::string(attribute.name), std::string(reader.uriOf(attribute.ns)),
                 std::string(reader.value(attribute))};
    repairUtf8(attr.value);
    return attr;
}

}  // namespace

int keepAttribute(c_xml_reader& reader, Extras& extras, const RawAttribute& attribute) {
    const bool isReaders = attribute.ns == namespace_xsi;  // may stand on any element
    if (!isReaders)
        if (const int code = reader.fail(unexpected_attribute, attributeItem(attribute.name))) return code;
    if (!reader.keepsUnknown()) return 0;
    if (extras.attribute(attribute.name) != nullptr)  // where that is forgiven, the first one counts
        return reader.fail(attribute_repeated, attributeItem(attribute.name));
    extras.attrs.push_back(kept(reader, attribute));
    return 0;
}

int keepElement(c_xml_reader& reader, Extras& extras, std::uint16_t slot, std::uint32_t ordinal,
                std::string_view parent) {
    const bool isText = reader.token() == token_unknown;
    if (const int code = reader.fail(unknown_element, isText ? parent : reader.elementName())) return code;
    if (!reader.keepsUnknown()) return isText ? 0 : reader.skipElement();
    Placed& placed = extras.elements.emplace_back(Placed{slot, ordinal, {}});
    if (!isText) return placed.node.unmarshal(reader);
    placed.node.text = reader.text();
    repairUtf8(placed.node.text);
    return 0;
}

int checkRepeatedAttributes(c_xml_reader& reader) {
    const RawAttribute* again = reader.repeatedAttribute();
    return again != nullptr ? reader.fail(attribute_repeated, attributeItem(again->name)) : 0;
}

void keepChildAttribute(c_xml_reader& reader, Extras& extras, std::uint16_t slot, std::uint32_t ordinal,
                        const RawAttribute& attribute) {
    auto& all = extras.childAttrs;
    for (auto one = all.rbegin(); one != all.rend() && one->slot == slot && one->ordinal == ordinal; ++one)
        if (one->attr.name == attribute.name) return;
    all.push_back({slot, ordinal, kept(reader, attribute)});
}

// ---- generated classes

c_table_unmarshal_helper::c_table_unmarshal_helper(c_xml_reader& reader, c_bound& object, const ClassInfo& info)
    : c_unmarshal_helper(reader, info.mayBeEmpty), _object(object), _info(info) {
    for (const MemberInfo& member : info.attributes) markMissing(member, holderOf(object, member));
    markElementsMissing(object, info);
    atClass();
    if (!reader.declarations().empty() && reader.keepsUnknown()) keepDeclarations(reader, object.makeExtras());
}

void c_table_unmarshal_helper::at(const MemberInfo& member, const ClassInfo& info) {
    _reader.sourceAt(info.sourceFile, member.line);
}

/// The class has no line of its own: its first member's stands for it.
void c_table_unmarshal_helper::atClass() {
    const MemberInfo* const first = !_info.attributes.empty() ? &_info.attributes.front()
                                    : !_info.elements.empty() ? &_info.elements.front()
                                                              : _info.text;
    _reader.sourceAt(_info.sourceFile, first != nullptr ? first->line : 0);
}

bool c_table_unmarshal_helper::attributeHandler(c_xml_reader& reader, const RawAttribute& attribute, int& error) {
    const int token = reader.tokenise(_info.attributeNames, attribute);
    if (token >= token_first_name) {
        const MemberInfo& member = _info.attributes[static_cast<std::size_t>(token - token_first_name)];
        at(member, _info);
        c_member_unmarshal_bridge bridge(reader, member, holderOf(_object, member));
        error = readAttribute(reader, attribute, bridge);
        return true;
    }
    if (attribute.ns == namespace_xsi && !reader.keepsUnknown()) return true;  // the reader's own
    error = keepAttribute(reader, _object.makeExtras(), attribute);
    if (_object.extras()->empty()) _object.dropExtras();
    return true;
}

int c_table_unmarshal_helper::attributeCheck() {
    for (const MemberInfo& member : _info.attributes) {
        if (member.minOccurs == 0 || isSet(member, holderOf(_object, member))) continue;
        at(member, _info);
        if (const int code = _reader.fail(attribute_missing, attributeItem(member.name))) return code;
    }
    return 0;
}

bool c_table_unmarshal_helper::hasSimpleContent() const {
    return _info.content == Content::text;
}

bool c_table_unmarshal_helper::textHandler(c_xml_reader& reader, int& error) {
    at(*_info.text, _info);
    void* const holder = holderOf(_object, *_info.text);
    c_member_unmarshal_bridge bridge(reader, *_info.text, holder);
    error = readElement(reader, bridge);
    if (reader.keepsUnknown() && isOneBlank(*_info.text, holder)) _object.makeExtras().isBlankAsRead = true;
    return true;
}

int c_table_unmarshal_helper::elementHandler(c_xml_reader& reader) {
    for (;;) {
        int code = 0;
        switch (reader.nextChild()) {
            case token_end_tag:
                atClass();
                return checkElements(_object, _info);
            case token_unknown:
                code = keepUnknown();
                break;
            case token_start_tag: {
                const int token =
                    _info.elementNames != nullptr ? reader.tokenise(_info.elementNames) : int(token_unknown);
                if (token < token_first_name) {
                    code = keepUnknown();
                    break;
                }
                const std::size_t index = static_cast<std::size_t>(token - token_first_name);
                _slot = static_cast<std::uint16_t>(index + 1);
                code = takeChild(_object, _info, index);
                break;
            }
            default:
                return 0;  // the caller looks at the token
        }
        if (reader.failed()) return scanFailure();
        if (code != 0) return code;
    }
}

/// An element, or text between elements, that the class does not know.
int c_table_unmarshal_helper::keepUnknown() {
    atClass();
    const int code = keepElement(_reader, _object.makeExtras(), _slot, _ordinal, _name);
    if (_object.extras()->empty()) _object.dropExtras();
    return code;
}

int c_table_unmarshal_helper::tooMany(const MemberInfo& member, std::size_t already) {
    if (already < member.maxOccurs) return 0;
    return _reader.fail(too_many_elements, member.name[0] != '\0' ? member.name : _reader.elementName());
}

int c_table_unmarshal_helper::readChild(c_node& child, const ClassInfo& info) {
    return unmarshalObject(_reader, child, info);
}

int c_table_unmarshal_helper::takeChild(c_node& object, const ClassInfo& info, std::size_t index) {
    if (info.content == Content::choice) return takeOption(object, info, index);
    const MemberInfo& member = info.elements[index];
    at(member, info);
    void* holder = holderOf(object, member);
    const bool outermost = &object == &_object;
    if (outermost) _ordinal = 1;
    switch (member.kind) {
        case Kind::multi: {
            const std::size_t already = multiSize(*member.spec, holder);
            if (const int code = tooMany(member, already)) return code;
            if (outermost) _ordinal = static_cast<std::uint32_t>(already + 1);
            return readSimpleElement(holder, member);
        }
        case Kind::child:
        case Kind::raw: {
            auto& child = *static_cast<ct_child_base*>(holder);
            if (const int code = tooMany(member, child.isset() ? 1 : 0)) return code;
            child.reset(makeChild(member));
            if (member.kind == Kind::raw) return static_cast<c_raw_node*>(child.node())->unmarshal(_reader);
            return readChild(*child.node(), *member.type);
        }
        case Kind::children:
        case Kind::raws: {
            auto& children = *static_cast<ct_container_base*>(holder);
            const std::size_t already = children.size();
            if (const int code = tooMany(member, already)) return code;
            if (outermost) _ordinal = static_cast<std::uint32_t>(already + 1);
            children.addNode(makeChild(member));
            c_node& child = *children.node(already);
            if (member.kind == Kind::raws) return static_cast<c_raw_node&>(child).unmarshal(_reader);
            return readChild(child, *member.type);
        }
        case Kind::group: {
            auto& group = *static_cast<ct_child_base*>(holder);
            if (!group.isset()) {
                group.reset(member.type->create());
                markElementsMissing(*group.node(), *member.type);
            }
            return takeInGroup(*group.node(), *member.type);
        }
        case Kind::groups:
            return takeInGroups(*static_cast<ct_container_base*>(holder), member, outermost);
        default:
            if (isSet(member, holder)) {
                if (const int code = tooMany(member, 1)) return code;
                if (_object.extras() != nullptr)  // what stood on the earlier one goes with it
                    std::erase_if(_object.makeExtras().childAttrs, [this](const PlacedAttr& one) {
                        return one.slot == _slot && one.ordinal == _ordinal;
                    });
            }
            return readSimpleElement(holder, member);
    }
}

/// The last group of a list takes the element, or a new one when that has all it may have.
int c_table_unmarshal_helper::takeInGroups(ct_container_base& groups, const MemberInfo& member, bool outermost) {
    const int token = _reader.tokenise(member.type->elementNames);
    if (token < token_first_name) return keepUnknown();
    const std::size_t inner = static_cast<std::size_t>(token - token_first_name);
    if (groups.empty() || !groupTakes(*groups.node(groups.size() - 1), *member.type, inner)) {
        if (const int code = tooMany(member, groups.size())) return code;
        groups.addNode(member.type->create());
        markElementsMissing(*groups.node(groups.size() - 1), *member.type);
    }
    if (outermost) _ordinal = static_cast<std::uint32_t>(groups.size());
    return takeInGroup(*groups.node(groups.size() - 1), *member.type);
}

int c_table_unmarshal_helper::takeInGroup(c_node& group, const ClassInfo& info) {
    const int token = _reader.tokenise(info.elementNames);
    if (token < token_first_name) return keepUnknown();
    return takeChild(group, info, static_cast<std::size_t>(token - token_first_name));
}

namespace {

/// The option that a schema adds to a choice for extensions, which files have beside a real one.
bool isExtensions(const MemberInfo& member) {
    return member.kind == Kind::raw && std::string_view(member.name) == "extLst";
}

}  // namespace

/// An element of a choice: selects its option. What was selected before gives way; extensions are kept beside it.
int c_table_unmarshal_helper::takeOption(c_node& object, const ClassInfo& info, std::size_t index) {
    const MemberInfo& member = info.elements[index];
    at(member, info);
    ct_choice& choice = choiceOf(object, info);
    const int option = static_cast<int>(index + 1);
    if (&object == &_object) _ordinal = 1;
    if (member.kind == Kind::group) {
        if (choice.option() != option) {
            if (const int code = tooMany(member, choice.isset() ? 1 : 0)) return code;
            choice.select(option, member.type->create());
            markElementsMissing(*choice.node(), *member.type);
        }
        return takeInGroup(*choice.node(), *member.type);
    }
    if (const int code = tooMany(member, choice.isset() ? 1 : 0)) return code;
    if (choice.isset() && choice.option() != option) {
        if (isExtensions(member)) return keepUnknown();
        if (isExtensions(info.elements[static_cast<std::size_t>(choice.option() - 1)]) && _reader.keepsUnknown()) {
            _object.makeExtras().elements.push_back({_slot, _ordinal, static_cast<c_raw_node&>(*choice.node())});
        }
    }
    if (member.spec != nullptr) {
        choice.select(option, makeBox(*member.spec));
        MemberInfo boxed = member;
        boxed.kind = Kind::single;
        return readSimpleElement(boxedHolder(*member.spec, *choice.node()), boxed);
    }
    choice.select(option, makeChild(member));
    if (member.kind == Kind::raw) return static_cast<c_raw_node*>(choice.node())->unmarshal(_reader);
    return readChild(*choice.node(), *member.type);
}

/// An element of simple type. Attributes on it, in practice `xml:space`, are kept beside the parent.
int c_table_unmarshal_helper::readSimpleElement(void* holder, const MemberInfo& member) {
    if (const int code = checkRepeatedAttributes(_reader)) return code;
    for (const RawAttribute& attribute : _reader.attributes()) {
        const bool isReaders = attribute.ns == namespace_xsi;
        const bool isText = member.spec->storage == Storage::wstring || member.spec->storage == Storage::string;
        if (!isText && !isReaders)
            if (const int code = _reader.fail(unexpected_attribute, attributeItem(attribute.name))) return code;
        if (!_reader.keepsUnknown()) continue;
        keepChildAttribute(_reader, _object.makeExtras(), _slot, _ordinal, attribute);
    }
    c_member_unmarshal_bridge bridge(_reader, member, holder);
    return readElement(_reader, bridge);
}

int c_table_unmarshal_helper::checkElements(const c_node& object, const ClassInfo& info) {
    if (!_reader.endTagMatched()) return 0;
    if (info.content == Content::choice) {
        const ct_choice& choice = choiceOf(object, info);
        if (!choice.isset()) return info.mayBeEmpty ? 0 : _reader.fail(element_missing, _name);
        const MemberInfo& member = info.elements[static_cast<std::size_t>(choice.option() - 1)];
        return member.kind == Kind::group ? checkElements(*choice.node(), *member.type) : 0;
    }
    for (const MemberInfo& member : info.elements) {
        const std::size_t count = countOf(object, member);
        if (count < member.minOccurs && !(isGroup(member) && member.type->mayBeEmpty)) {
            at(member, info);
            const std::string_view name = member.name[0] != '\0' ? member.name : member.type->name;
            if (const int code = _reader.fail(element_missing, name)) return code;
        }
        if (!isGroup(member)) continue;
        const void* holder = holderOf(object, member);
        for (std::size_t i = 0; i < count; ++i) {
            const c_node& group = member.kind == Kind::group ? *static_cast<const ct_child_base*>(holder)->node()
                                                             : *static_cast<const ct_container_base*>(holder)->node(i);
            if (const int code = checkElements(group, *member.type)) return code;
        }
    }
    return 0;
}

// ---- entries

int unmarshalObject(c_xml_reader& reader, c_node& object, const ClassInfo& info) {
    if (info.unmarshal != nullptr) return info.unmarshal(reader, object);
    return c_table_unmarshal_helper(reader, static_cast<c_bound&>(object), info).unmarshal();
}

int unmarshalRootName(c_xml_reader& reader, const NameEntry* roots, std::span<const NamespaceEntry> namespaces,
                      const char* sourceFile, int line, int& error) {
    reader.bindNamespaces(namespaces);
    reader.sourceAt(sourceFile, line);
    error = 0;
    if (reader.nextRoot() == token_failed) {
        error = reader.fail(reader.failure(), reader.elementName());
        if (error == 0) error = reader.failure();
        return 0;
    }
    const int token = reader.tokenise(roots);
    if (token >= token_first_name) return token;
    error = reader.fail(element_not_found, reader.elementName());
    if (error == 0) error = element_not_found;  // without a root there is nothing to go on with
    return 0;
}

int unmarshalRoot(c_xml_reader& reader, c_node& object, const RootInfo& root) {
    const NameEntry names[] = {entry(root.ns, root.name, token_first_name), endOfNames};
    int error = 0;
    if (unmarshalRootName(reader, names, root.namespaces, root.type->sourceFile, root.line, error) == 0) return error;
    return unmarshalObject(reader, object, *root.type);
}

}  // namespace bindery
