#include "bindery/bridges/bridges.h"

#include "bindery/values/chars.h"
#include "bindery/values/storage.h"

namespace bindery {

namespace {

/// Calls `f` with the holder of a value, as its own type.
template <class F>
auto visitHolder(Kind kind, Storage storage, void* holder, F&& f) {
    return visitStorage(storage, [&](auto type) {
        using T = typename decltype(type)::type;
        switch (kind) {
            case Kind::single:
                return f(*static_cast<ct_simple_pod_single<T>*>(holder));
            case Kind::multi:
                return f(*static_cast<ct_simple_pod_multi<T>*>(holder));
            case Kind::listSingle:
                return f(*static_cast<ct_simple_pod_list_single<T>*>(holder));
            case Kind::listOptional:
                return f(*static_cast<ct_simple_pod_list_optional<T>*>(holder));
            default:
                return f(*static_cast<ct_simple_pod_optional<T>*>(holder));
        }
    });
}

// How each holder takes a text. `convert(text, value, stored)` gives a code.

template <class Holder, class Convert>
int storeIn(Holder& holder, std::string_view text, Convert& convert) {
    typename Holder::value_type value{};
    bool stored = false;
    const int code = convert(text, &value, stored);
    if (stored) holder.set(std::move(value));
    return code;
}

template <class T, class Convert>
int storeIn(ct_simple_pod_multi<T>& holder, std::string_view text, Convert& convert) {
    T value{};
    bool stored = false;
    const int code = convert(text, &value, stored);
    if (stored) holder.push_back(std::move(value));
    return code;
}

template <class Values, class Convert>
int storeItems(Values& values, std::string_view text, Convert& convert) {
    values.clear();
    std::string_view item;
    while (nextListItem(text, item)) {
        typename Values::value_type value{};
        bool stored = false;
        if (const int code = convert(item, &value, stored)) return code;
        if (stored) values.push_back(std::move(value));
    }
    return 0;
}

template <class T, class Convert>
int storeIn(ct_simple_pod_list_single<T>& holder, std::string_view text, Convert& convert) {
    return storeItems(holder.ref(), text, convert);
}

template <class T, class Convert>
int storeIn(ct_simple_pod_list_optional<T>& holder, std::string_view text, Convert& convert) {
    return storeItems(holder.ref(), text, convert);
}

template <class T>
void writeValue(const ValueSpec& spec, const T& value, std::string& out, bool attribute) {
    if constexpr (std::is_same_v<T, std::wstring>)
        appendEscaped(out, std::wstring_view(value), attribute);
    else if constexpr (std::is_same_v<T, std::string>)
        appendEscaped(out, std::string_view(value), attribute);
    else
        spec.toText(spec, &value, out);
}

// How each holder is written.

template <class Holder>
void writeHolder(const ValueSpec& spec, const Holder& holder, std::string& out, bool attribute) {
    writeValue(spec, holder.get(), out, attribute);
}

template <class T>
void writeHolder(const ValueSpec& spec, const ct_simple_pod_multi<T>& holder, std::string& out, bool attribute) {
    for (const T& value : holder) writeValue(spec, value, out, attribute);
}

template <class Values>
void writeItems(const ValueSpec& spec, const Values& values, std::string& out, bool attribute) {
    bool first = true;
    for (const auto& value : values) {
        if (!first) out += ' ';
        first = false;
        writeValue(spec, value, out, attribute);
    }
}

template <class T>
void writeHolder(const ValueSpec& spec, const ct_simple_pod_list_single<T>& holder, std::string& out, bool attribute) {
    writeItems(spec, holder.get(), out, attribute);
}

template <class T>
void writeHolder(const ValueSpec& spec, const ct_simple_pod_list_optional<T>& holder, std::string& out,
                 bool attribute) {
    writeItems(spec, holder.get(), out, attribute);
}

}  // namespace

bool nextListItem(std::string_view& rest, std::string_view& item) {
    const char* end = rest.data() + rest.size();
    const char* first = skipSpace(rest.data(), end);
    if (first == end) return false;
    const char* last = first;
    while (last != end && !is(*last, char_space)) ++last;
    item = std::string_view(first, static_cast<std::size_t>(last - first));
    rest = std::string_view(last, static_cast<std::size_t>(end - last));
    return true;
}

int c_untyped_unmarshal_bridge::convert(std::string_view text, void* value) {
    int facetCode = 0;
    const int valueCode = readValue(_spec, text, value, facetCode);
    _converted = valueCode == 0;
    if (valueCode == 0 && facetCode == 0) return 0;
    const int code =
        _reader.fail(valueCode != 0 ? valueCode : facetCode, isAttribute ? attributeItem(item) : std::string(item));
    if (code != 0) _converted = false;
    return code;
}

void c_atomic_marshal_bridge::write(std::string& out, bool attribute) const {
    visitStorage(_spec.storage, [&](auto type) {
        writeValue(_spec, *static_cast<const typename decltype(type)::type*>(_member), out, attribute);
    });
}

bool c_member_unmarshal_bridge::isset() const {
    if (_kind == Kind::multi) return false;
    return visitHolder(_kind, _spec.storage, _member, [](auto& holder) { return holder.isset(); });
}

int c_member_unmarshal_bridge::store(std::string_view text) {
    const auto one = [this](std::string_view piece, void* value, bool& stored) {
        const int code = convert(piece, value);
        stored = converted();
        return code;
    };
    return visitHolder(_kind, _spec.storage, _member, [&](auto& holder) { return storeIn(holder, text, one); });
}

c_member_marshal_bridge::c_member_marshal_bridge(c_xml_writer& writer, const MemberInfo& info, const void* holder)
    : c_untyped_marshal_bridge(writer, *info.spec, holder, isSet(info, holder)), _kind(info.kind) {}

void c_member_marshal_bridge::write(std::string& out, bool attribute) const {
    visitHolder(_kind, _spec.storage, const_cast<void*>(_member),
                [&](const auto& holder) { writeHolder(_spec, holder, out, attribute); });
}

bool isSet(const MemberInfo& info, const void* holder) {
    return visitHolder(info.kind, info.spec->storage, const_cast<void*>(holder),
                       [](const auto& one) { return one.isset(); });
}

bool isOneBlank(const MemberInfo& info, const void* holder) {
    if (info.spec->storage != Storage::wstring) return false;
    if (info.kind == Kind::single) return static_cast<const ct_simple_pod_single<std::wstring>*>(holder)->get() == L" ";
    if (info.kind == Kind::optional)
        return static_cast<const ct_simple_pod_optional<std::wstring>*>(holder)->get() == L" ";
    return false;
}

std::size_t multiSize(const ValueSpec& spec, const void* holder) {
    return visitStorage(spec.storage, [&](auto type) {
        return static_cast<const ct_simple_pod_multi<typename decltype(type)::type>*>(holder)->size();
    });
}

void writeMulti(const ValueSpec& spec, const void* holder, std::size_t i, std::string& out, bool attribute) {
    visitStorage(spec.storage, [&](auto type) {
        using T = typename decltype(type)::type;
        writeValue(spec, (*static_cast<const ct_simple_pod_multi<T>*>(holder))[i], out, attribute);
    });
}

void markMissing(const MemberInfo& info, void* holder) {
    if (info.kind != Kind::single && info.kind != Kind::listSingle) return;
    visitHolder(info.kind, info.spec->storage, holder, [](auto& one) {
        if constexpr (requires { one.markMissing(); }) one.markMissing();
    });
}

c_node* makeBox(const ValueSpec& spec) {
    return visitStorage(spec.storage, [](auto type) { return makeNode<ct_boxed<typename decltype(type)::type>>(); });
}

void* boxedHolder(const ValueSpec& spec, c_node& box) {
    return visitStorage(spec.storage, [&](auto type) -> void* {
        return &static_cast<ct_boxed<typename decltype(type)::type>&>(box).value;
    });
}

void writeAttribute(c_xml_writer& writer, std::string_view name, const c_untyped_marshal_bridge& bridge) {
    if (!bridge.isset()) return;
    std::string& out = writer.raw();
    (out += ' ') += name;
    out += "=\"";
    bridge.write(out, true);
    out += '"';
}

int readAttribute(c_xml_reader& reader, const RawAttribute& attribute, c_untyped_unmarshal_bridge& bridge) {
    bridge.item = attribute.local;
    bridge.isAttribute = true;
    if (bridge.isset())
        if (const int code = reader.fail(attribute_repeated, attributeItem(attribute.local))) return code;
    const std::string_view value = reader.value(attribute);
    if (reader.failed()) return reader.failure();
    const int code = bridge.store(value);
    return code < 0 ? reader.fail(bad_attribute_value, attributeItem(attribute.local)) : code;
}

int readElement(c_xml_reader& reader, c_untyped_unmarshal_bridge& bridge) {
    const std::string_view name = reader.elementName();
    bridge.item = name;
    std::string_view text;
    if (reader.emptyElement()) {
        reader.closeElement();
    } else {
        int token = reader.readText(text);
        while (token == token_start_tag) {
            const std::string before(text);  // a child has no place in a value
            if (const int code = reader.fail(unknown_element, reader.elementName())) return code;
            if (const int code = reader.skipElement()) return code;
            text = before;
            token = reader.readMoreText(text);
        }
        if (token != token_end_tag) {
            const int code = reader.fail(reader.failure(), name);
            return code != 0 ? code : reader.failure();
        }
        if (!reader.endTagMatched())
            if (const int code = reader.fail(bad_end_of_element, name)) return code;
    }
    const int code = bridge.store(text);
    return code < 0 ? reader.fail(bad_element_value, name) : code;
}

}  // namespace bindery
