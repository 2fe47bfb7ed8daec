// Writing a class by its tables.

#include <algorithm>

#include "bindery/bridges/bridges.h"
#include "bindery/bridges/member_access.h"
#include "bindery/classes/extras.h"
#include "bindery/writer/xml_writer.h"

namespace bindery {

namespace {

constexpr std::string_view choiceItem = "{anonymous compositor}";

/// Writes what stands inside one element. Unknown elements come behind the known ones that they stood behind.
class BodyWriter {
public:
    BodyWriter(c_xml_writer& writer, const c_bound& object, const ClassInfo& info)
        : _writer(writer), _object(object), _info(info), _extras(object.extras()), _placed(writer, _extras) {
        if (_extras == nullptr) return;
        for (const PlacedAttr& placed : _extras->childAttrs) _childAttrs.push_back(&placed);
        std::ranges::stable_sort(_childAttrs, {}, placeOf);
    }

    int write() {
        for (const MemberInfo& member : _info.attributes) writeAttributeMember(member);
        if (_extras != nullptr)
            for (const Attr& attr : _extras->attrs) _writer.keptAttribute(attr);
        if (_info.content == Content::text) {
            writeText(*_info.text);
            _placed.rest();
            return 0;
        }
        const int code = writeElements(_object, _info);
        _placed.rest();
        return code;
    }

private:
    void writeAttributeMember(const MemberInfo& member) {
        const c_member_marshal_bridge bridge(_writer, member, holderOf(_object, member));
        if (!bridge.isset()) return;
        if (member.ns == namespace_none) {
            writeAttribute(_writer, member.name, bridge);
            return;
        }
        _writer.attribute(member.ns, member.name, {});  // its declaration, its prefix, and an empty value
        _writer.raw().pop_back();
        bridge.write(_writer.raw(), true);
        _writer.raw() += '"';
    }

    void writeText(const MemberInfo& member) {
        const c_member_marshal_bridge bridge(_writer, member, holderOf(_object, member));
        if (!bridge.isset()) return;
        const bool isBlank =
            _extras != nullptr && _extras->isBlankAsRead && isOneBlank(member, holderOf(_object, member));
        writeValue([&](std::string& out) {
            if (isBlank) {
                out += ' ';
            } else {
                bridge.write(out, false);
            }
        });
    }

    /// An empty value leaves the start tag open, so that the element ends with it.
    template <class Write>
    void writeValue(Write&& write) {
        _value.clear();
        write(_value);
        if (_value.empty()) return;
        _writer.closeStartTag();
        _writer.raw() += _value;
    }

    int writeElements(const c_node& object, const ClassInfo& info) {
        if (info.content == Content::choice) return writeChoice(object, info);
        for (std::size_t i = 0; i < info.elements.size(); ++i) {
            const MemberInfo& member = info.elements[i];
            if (&object == &_object) {
                _slot = static_cast<std::uint32_t>(i + 1);
                _placed.before(_slot);
            }
            const bool repeats = member.kind == Kind::multi || member.kind == Kind::children ||
                                 member.kind == Kind::raws || member.kind == Kind::groups;
            const std::size_t count = countOf(object, member);
            if (repeats && (count > member.maxOccurs || (count != 0 && count < member.minOccurs) ||
                            (count == 0 && member.minOccurs != 0 && !isGroup(member))))
                if (const int code = _writer.fail(occurs_on_marshal, nameOf(member), info.sourceFile, member.line))
                    return code;
            if (const int code = writeMember(object, member, count)) return code;
            if (&object == &_object) _placed.behindAll(_slot);
        }
        return 0;
    }

    int writeMember(const c_node& object, const MemberInfo& member, std::size_t count) {
        const void* holder = holderOf(object, member);
        const bool outermost = &object == &_object;
        for (std::size_t i = 0; i < count; ++i) {
            if (outermost) _ordinal = static_cast<std::uint32_t>(i + 1);
            int code = 0;
            switch (member.kind) {
                case Kind::child:
                case Kind::raw:
                case Kind::group:
                    code = writeNode(*static_cast<const ct_child_base*>(holder)->node(), member);
                    break;
                case Kind::children:
                case Kind::raws:
                case Kind::groups:
                    code = writeNode(*static_cast<const ct_container_base*>(holder)->node(i), member);
                    break;
                default:
                    writeSimple(holder, member, i);
            }
            if (code != 0) return code;
            if (outermost) _placed.behind(_slot, _ordinal);
        }
        return 0;
    }

    int writeNode(const c_node& node, const MemberInfo& member) {
        switch (member.kind) {
            case Kind::raw:
            case Kind::raws:
                return static_cast<const c_raw_node&>(node).marshal(_writer);
            case Kind::group:
            case Kind::groups:
                return writeElements(node, *member.type);
            default:
                if (isEmptyContainer(node, *member.type)) return 0;
                return marshalObject(_writer, node, *member.type, member);
        }
    }

    int writeChoice(const c_node& object, const ClassInfo& info) {
        const ct_choice& choice = choiceOf(object, info);
        if (!choice.isset()) {
            if (info.mayBeEmpty) return 0;
            const int line = info.elements.empty() ? 0 : info.elements.front().line;
            return _writer.fail(wrong_choice, choiceItem, info.sourceFile, line);
        }
        const MemberInfo& member = info.elements[static_cast<std::size_t>(choice.option() - 1)];
        const bool outermost = &object == &_object;
        if (outermost) {
            _slot = static_cast<std::uint32_t>(choice.option());
            _placed.before(_slot);
            _ordinal = 1;
        }
        int code = 0;
        if (member.spec != nullptr) {
            MemberInfo boxed = member;
            boxed.kind = Kind::single;
            writeSimple(boxedHolder(*member.spec, *choice.node()), boxed, 0);
        } else {
            code = writeNode(*choice.node(), member);
        }
        return code;
    }

    void writeSimple(const void* holder, const MemberInfo& member, std::size_t i) {
        _writer.startElement(member.ns, member.name);
        const std::pair place(_slot, _ordinal);
        for (auto one = std::ranges::lower_bound(_childAttrs, place, {}, placeOf);
             one != _childAttrs.end() && placeOf(*one) == place; ++one)
            _writer.keptAttribute((*one)->attr);
        writeValue([&](std::string& out) {
            if (member.kind == Kind::multi)
                writeMulti(*member.spec, holder, i, out, false);
            else
                c_member_marshal_bridge(_writer, member, holder).write(out, false);
        });
        _writer.endElement();
    }

    /// A container whose schema asks for one child at least, and that has none, is not written.
    static bool isEmptyContainer(const c_node& node, const ClassInfo& info) {
        if (info.marshal != nullptr || info.content != Content::children) return false;
        bool asksForOne = false;
        for (const MemberInfo& member : info.elements) {
            if (countOf(node, member) != 0) return false;
            const bool repeats =
                member.kind == Kind::children || member.kind == Kind::raws || member.kind == Kind::multi;
            asksForOne = asksForOne || (repeats && member.minOccurs != 0 && member.maxOccurs != 1);
        }
        if (!asksForOne) return false;
        const Extras* extras = static_cast<const c_bound&>(node).extras();
        return extras == nullptr || (extras->attrs.empty() && extras->elements.empty());
    }

    static std::pair<std::uint32_t, std::uint32_t> placeOf(const PlacedAttr* placed) {
        return {placed->slot, placed->ordinal};
    }

    static std::string_view nameOf(const MemberInfo& member) {
        return member.name[0] != '\0' ? member.name : member.type->name;
    }

    c_xml_writer& _writer;
    const c_bound& _object;
    const ClassInfo& _info;
    const Extras* _extras;
    PlacedWriter _placed;
    std::vector<const PlacedAttr*> _childAttrs;  // by their place
    std::uint32_t _slot = 0;
    std::uint32_t _ordinal = 0;
    std::string _value;
};

int writeInside(c_xml_writer& writer, const c_node& object, const ClassInfo& info, bool root) {
    const auto& bound = static_cast<const c_bound&>(object);
    if (!root && bound.extras() != nullptr) writer.keptDeclarations(bound.extras()->decls);
    const int code = BodyWriter(writer, bound, info).write();
    writer.endElement();
    return code;
}

}  // namespace

int marshalObject(c_xml_writer& writer, const c_node& object, const ClassInfo& info, const MemberInfo& member) {
    if (info.marshal != nullptr) return info.marshal(writer, object, member);
    writer.startElement(member.ns, member.name);
    return writeInside(writer, object, info, false);
}

int marshalObject(c_xml_writer& writer, const c_node& object, const ClassInfo& info, std::string_view name) {
    if (info.marshal != nullptr) {
        const std::string terminated(name);
        const MemberInfo member = {.name = terminated.c_str(), .ns = namespace_none};
        return info.marshal(writer, object, member);
    }
    writer.startElement(name);
    return writeInside(writer, object, info, false);
}

int marshalRoot(c_xml_writer& writer, const c_node& object, const RootInfo& root) {
    writer.header();
    writer.startRoot(root, static_cast<const c_bound&>(object).extras());
    const int code = writeInside(writer, object, *root.type, true);
    if (code != 0) return code;
    return writer.flush() ? 0 : int(undefined_error);
}

}  // namespace bindery
