#include "refhost/values/types.h"

#include <stdexcept>

namespace refhost {

TypeRegistry::TypeRegistry() {
    add({hostTypeAny, "any", hostClassUnion, hostTypeAny, true, {}});
    for (const char* name : {"integer", "real", "text", "boolean"}) add({0, name, 0, 0, true, {}});
    while (_count < hostTypeFirstObject) add({0, "", 0, 0, false, {}});  // kinds that this host does not have
    add({typeDate, "date", 0, 0, true, {}});
}

HostType TypeRegistry::addRecord(std::string name, std::vector<RecordField> fields) {
    if (fields.size() > maxRecordFields) throw std::length_error("a record has at most 1024 fields");
    return add({0, std::move(name), hostClassRecord, 0, false, std::move(fields)});
}

HostType TypeRegistry::addAlias(std::string name, HostType of) {
    const TypeInfo* base = resolved(of);
    if (!base) throw std::invalid_argument("no such type");
    if (isBaseType(base->number)) return base->number;
    return add({0, std::move(name), hostClassAlias, base->number, base->textCapable, {}});
}

HostType TypeRegistry::add(TypeInfo info) {
    const std::lock_guard lock(_adding);
    const std::size_t number = _count.load(std::memory_order_relaxed);
    if (number > hostTypeMask) throw std::length_error("too many types");
    std::unique_ptr<Block>& block = _blocks[number / blockSize];
    if (!block) block = std::make_unique<Block>();
    info.number = static_cast<HostType>(number);
    at(number) = std::move(info);
    _count.store(number + 1, std::memory_order_release);
    return static_cast<HostType>(number);
}

}  // namespace refhost
