// Values that are more than a slot: dates, unions, records and aliases of these.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "refhost/values/date.h"
#include "refhost/values/types.h"

namespace refhost {

enum class ObjectKind : std::uint8_t { date, anyUnion, record };

/// What the module sees as an opaque object. Knows its own type, so that an operation given an alias, a union or what
/// the union holds does the right thing. Owned by whoever holds the slot.
struct Object {
    Object(HostType type_, ObjectKind kind_) : type(static_cast<std::uint16_t>(type_)), kind(kind_) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    const std::uint16_t type;  // a HostType without class bits; may be an alias
    const ObjectKind kind;
};
using ObjectPtr = std::unique_ptr<Object>;

struct DateObject final : Object {
    explicit DateObject(HostType type_) : Object(type_, ObjectKind::date) {}
    Date date;
};

/// A value of any type. Texts are not owned: they are registered with the host; objects are. Small, since a list of any
/// has one for each item.
struct UnionObject final : Object {
    explicit UnionObject(HostType type_) : Object(type_, ObjectKind::anyUnion) {}
    ~UnionObject() override { delete held(); }
    void clear();
    void set(HostType kind, HostValue slot);
    void set(ObjectPtr object);
    /// What another one holds, copied.
    void assign(const TypeRegistry& types, const UnionObject& from);
    /// The object that it owns; null for none.
    Object* held() const { return isBaseType(holds) ? nullptr : static_cast<Object*>(value.object); }
    /// 0 nothing, 1 to 4 a base type, above that the type of the object.
    HostType holds = hostTypeAny;
    HostValue value{};
};
static_assert(sizeof(UnionObject) == 24);

struct RecordObject final : Object {
    RecordObject(const TypeRegistry& types, const TypeInfo& info, HostType type_);
    ~RecordObject() override;
    const TypeInfo& info;
    std::vector<HostValue> fields;  // objects among them are owned
};

/// A new empty object: no date, an empty union, a record with all fields at zero. Null for base types and for types
/// that do not exist.
ObjectPtr createObject(const TypeRegistry& types, HostType type);
/// A copy under another type of the same kind: this is how an object becomes one of an alias, and back.
ObjectPtr cloneObject(const TypeRegistry& types, const Object& from, HostType type);
inline ObjectPtr cloneObject(const TypeRegistry& types, const Object& from) {
    return cloneObject(types, from, from.type);
}

/// Appends a text that is equal for equal values and different for all others; aliases do not count.
void appendKey(std::string& key, const Object* object);
void appendKey(std::string& key, HostType type, HostValue value);

}  // namespace refhost
