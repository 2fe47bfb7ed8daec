// Between the members of bound objects and the reader or writer.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "bindery/binderyparse/reader.h"
#include "bindery/classes/class_info.h"
#include "bindery/values/holders.h"
#include "bindery/values/value_spec.h"
#include "bindery/writer/xml_writer.h"

namespace bindery {

// Bridges stand on the stack between one member and the reader or the writer for the time of one call.

/// Where a text read goes. Knows the reader, the rules of the value and the member's address.
class c_untyped_unmarshal_bridge {
public:
    /// Whether the member has a value already.
    virtual bool isset() const = 0;
    /// Stores one value. 0, or a code that `userError` of the reader did not forgive; -1 for a value that cannot be
    /// read and has no code of its own.
    virtual int store(std::string_view text) = 0;

    c_xml_reader& reader() const { return _reader; }
    const ValueSpec& spec() const { return _spec; }

protected:
    c_untyped_unmarshal_bridge(c_xml_reader& reader, const ValueSpec& spec, void* member)
        : _reader(reader), _spec(spec), _member(member) {}
    ~c_untyped_unmarshal_bridge() = default;

    /// Text to a value at `value`; reports under the name of the item. `converted()` tells whether there is a value:
    /// not when a handler has forgiven that the text has none.
    int convert(std::string_view text, void* value);
    bool converted() const { return _converted; }

    c_xml_reader& _reader;
    const ValueSpec& _spec;
    void* _member;
    bool _converted = false;

public:
    std::string_view item;     // what reports name,
    bool isAttribute = false;  // with "@" before it
};

/// Where a text to be written comes from.
class c_untyped_marshal_bridge {
public:
    bool isset() const { return _isset; }
    /// Appends the value, escaped.
    virtual void write(std::string& out, bool attribute) const = 0;

protected:
    c_untyped_marshal_bridge(c_xml_writer& writer, const ValueSpec& spec, const void* member, bool set)
        : _writer(writer), _spec(spec), _member(member), _isset(set) {}
    ~c_untyped_marshal_bridge() = default;

    c_xml_writer& _writer;
    const ValueSpec& _spec;
    const void* _member;
    bool _isset;
};

/// A value without a holder.
class c_atomic_unmarshal_bridge final : public c_untyped_unmarshal_bridge {
public:
    c_atomic_unmarshal_bridge(c_xml_reader& reader, const ValueSpec& spec, void* value)
        : c_untyped_unmarshal_bridge(reader, spec, value) {}
    bool isset() const override { return false; }
    int store(std::string_view text) override { return convert(text, _member); }
};

class c_atomic_marshal_bridge final : public c_untyped_marshal_bridge {
public:
    c_atomic_marshal_bridge(c_xml_writer& writer, const ValueSpec& spec, const void* value)
        : c_untyped_marshal_bridge(writer, spec, value, true) {}
    void write(std::string& out, bool attribute) const override;
};

/// A member of a class with tables: the holder is known by its kind and the storage of its value.
class c_member_unmarshal_bridge final : public c_untyped_unmarshal_bridge {
public:
    c_member_unmarshal_bridge(c_xml_reader& reader, const MemberInfo& info, void* holder)
        : c_untyped_unmarshal_bridge(reader, *info.spec, holder), _kind(info.kind) {}
    bool isset() const override;
    int store(std::string_view text) override;

private:
    Kind _kind;
};

class c_member_marshal_bridge final : public c_untyped_marshal_bridge {
public:
    c_member_marshal_bridge(c_xml_writer& writer, const MemberInfo& info, const void* holder);
    void write(std::string& out, bool attribute) const override;

private:
    Kind _kind;
};

/// Number of values of a holder of kind `multi`, and one of them written.
std::size_t multiSize(const ValueSpec& spec, const void* holder);
void writeMulti(const ValueSpec& spec, const void* holder, std::size_t i, std::string& out, bool attribute);
/// Marks a mandatory value as not there.
void markMissing(const MemberInfo& info, void* holder);
/// An empty `ct_boxed` for a value, and the holder in it.
c_node* makeBox(const ValueSpec& spec);
void* boxedHolder(const ValueSpec& spec, c_node& box);
/// Whether a value of simple type is set.
bool isSet(const MemberInfo& info, const void* holder);
/// Whether it is a wide text of one blank.
bool isOneBlank(const MemberInfo& info, const void* holder);

/// The bridge of a holder whose type is known, for classes written by hand.
template <class Reader, class Holder, class Type>
class c_unmarshal_bridge final : public c_untyped_unmarshal_bridge {
public:
    c_unmarshal_bridge(Reader& reader, const ValueSpec& spec, Holder& holder)
        : c_untyped_unmarshal_bridge(reader, spec, &holder) {}
    bool isset() const override { return static_cast<Holder*>(_member)->isset(); }
    int store(std::string_view text) override {
        Type value{};
        const int code = convert(text, &value);
        if (code == 0 && converted()) static_cast<Holder*>(_member)->set(std::move(value));
        return code;
    }
};

template <class Writer, class Holder, class Type>
class c_marshal_bridge final : public c_untyped_marshal_bridge {
public:
    c_marshal_bridge(Writer& writer, const ValueSpec& spec, const Holder& holder)
        : c_untyped_marshal_bridge(writer, spec, &holder, holder.isset()) {}
    void write(std::string& out, bool attribute) const override {
        const Type& value = static_cast<const Holder*>(_member)->get();
        c_atomic_marshal_bridge(_writer, _spec, &value).write(out, attribute);
    }
};

/// The same for list types: blanks separate the items.
template <class Reader, class Holder, class Type>
class c_unmarshal_list_bridge final : public c_untyped_unmarshal_bridge {
public:
    c_unmarshal_list_bridge(Reader& reader, const ValueSpec& spec, Holder& holder)
        : c_untyped_unmarshal_bridge(reader, spec, &holder) {}
    bool isset() const override { return static_cast<Holder*>(_member)->isset(); }
    int store(std::string_view text) override;
};

template <class Writer, class Holder, class Type>
class c_marshal_list_bridge final : public c_untyped_marshal_bridge {
public:
    c_marshal_list_bridge(Writer& writer, const ValueSpec& spec, const Holder& holder)
        : c_untyped_marshal_bridge(writer, spec, &holder, holder.isset()) {}
    void write(std::string& out, bool attribute) const override;
};

/// Next item of a whitespace separated list; false at the end.
bool nextListItem(std::string_view& rest, std::string_view& item);

template <class Reader, class Holder, class Type>
int c_unmarshal_list_bridge<Reader, Holder, Type>::store(std::string_view text) {
    auto& values = static_cast<Holder*>(_member)->ref();
    values.clear();
    std::string_view one;
    while (nextListItem(text, one)) {
        Type value{};
        if (const int code = convert(one, &value)) return code;
        if (converted()) values.push_back(std::move(value));
    }
    return 0;
}

template <class Writer, class Holder, class Type>
void c_marshal_list_bridge<Writer, Holder, Type>::write(std::string& out, bool attribute) const {
    bool first = true;
    for (const Type& value : static_cast<const Holder*>(_member)->get()) {
        if (!first) out += ' ';
        first = false;
        c_atomic_marshal_bridge(_writer, _spec, &value).write(out, attribute);
    }
}

/// Writes ` name="value"` when the bridge's member is set.
void writeAttribute(c_xml_writer& writer, std::string_view name, const c_untyped_marshal_bridge& bridge);

/// Reads one attribute through a bridge: code 3 when its member is set already; 28 when the value cannot be
/// read and has no code of its own.
int readAttribute(c_xml_reader& reader, const RawAttribute& attribute, c_untyped_unmarshal_bridge& bridge);

/// Reads the text of the current element through a bridge, and its end tag.
int readElement(c_xml_reader& reader, c_untyped_unmarshal_bridge& bridge);

}  // namespace bindery
