// The types of a host: the built-in ones and those that are declared while it runs.
#pragma once
#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
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

/// Hands out type numbers. Safe to use from several threads; the records it answers live as long as it does. Looking
/// one up, which is done for every value, takes no lock.
class TypeRegistry {
public:
    TypeRegistry();

    /// Null when there is no type of that number.
    const TypeInfo* find(HostType type) const {
        type &= hostTypeMask;
        if (type >= _count.load(std::memory_order_acquire)) return nullptr;
        const TypeInfo& info = at(type);
        return info.name.empty() ? nullptr : &info;
    }
    /// The type that an alias stands for, any other type itself.
    HostType resolve(HostType type) const {
        type &= hostTypeMask;
        if (isBaseType(type)) return type;
        const TypeInfo* info = find(type);
        return info != nullptr && info->classWord == hostClassAlias ? info->base : type;
    }
    /// What `resolve` of the type is: a base type, a union, a record or a date.
    const TypeInfo* resolved(HostType type) const { return find(resolve(type)); }

    /// The number of a new record type. Throws std::length_error when it has more than 1024 fields, or when all 4095
    /// type numbers are taken.
    HostType addRecord(std::string name, std::vector<RecordField> fields);
    /// The number of an alias. An alias of a type 1 to 4 is that type itself, as their values are the same slots.
    HostType addAlias(std::string name, HostType of);

private:
    static constexpr std::size_t blockSize = 64;
    using Block = std::array<TypeInfo, blockSize>;

    HostType add(TypeInfo info);
    TypeInfo& at(std::size_t type) const { return (*_blocks[type / blockSize])[type % blockSize]; }

    std::mutex _adding;
    // By number, in blocks that stay where they are; a type is made before it is counted.
    std::array<std::unique_ptr<Block>, (hostTypeMask + 1) / blockSize> _blocks;
    std::atomic<std::size_t> _count{0};
};

}  // namespace refhost
