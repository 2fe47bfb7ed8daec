// The types of a host: the built-in ones and those that are declared while it runs.
#pragma once
#include <cstdint>
#include <deque>
#include <memory>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/interface/host_api.h"

namespace refhost {

constexpr HostType typeDate = hostTypeFirstObject;  // calendar date, time of day, or both
constexpr HostType firstDeclaredType = typeDate + 1;
constexpr std::size_t maxRecordFields = hostFieldIndexMask + 1;

struct RecordField {
    std::string name;
    HostType type = hostTypeAny;
};

/// One type. Never changes once it is registered.
struct TypeInfo {
    HostType number = hostTypeAny;
    std::string name;
    std::uint32_t classWord = 0;      // hostClassUnion, hostClassRecord, hostClassAlias or 0
    HostType base = hostTypeAny;      // of an alias: the type that it stands for, itself no alias
    bool textCapable = false;         // converts to and from text
    std::vector<RecordField> fields;  // of a record
};

constexpr bool isBaseType(HostType type) {
    return type >= hostTypeInteger && type <= hostTypeBoolean;
}

/// Hands out type numbers. Safe to use from several threads; the records it answers live as long as it does.
class TypeRegistry {
public:
    TypeRegistry();

    /// Null when there is no type of that number.
    const TypeInfo* find(HostType type) const;
    /// The type that an alias stands for, any other type itself.
    HostType resolve(HostType type) const;
    /// What `resolve` of the type is: a base type, a union, a record or a date.
    const TypeInfo* resolved(HostType type) const { return find(resolve(type)); }

    /// The number of a new record type. Throws std::length_error when it has more than 1024 fields, or when all 4095
    /// type numbers are taken.
    HostType addRecord(std::string name, std::vector<RecordField> fields);
    /// The number of an alias. An alias of a type 1 to 4 is that type itself, as their values are the same slots.
    HostType addAlias(std::string name, HostType of);

private:
    HostType add(TypeInfo info);

    mutable std::shared_mutex _mutex;
    std::deque<TypeInfo> _types;  // by number
};

}  // namespace refhost
