#include "refhost/values/types.h"

#include <mutex>
#include <stdexcept>

namespace refhost {

TypeRegistry::TypeRegistry() {
    add({hostTypeAny, "any", hostClassUnion, hostTypeAny, true, {}});
    for (const char* name : {"integer", "real", "text", "boolean"}) add({0, name, 0, 0, true, {}});
    while (_types.size() < hostTypeFirstObject) add({0, "", 0, 0, false, {}});  // kinds that this host does not have
    add({typeDate, "date", 0, 0, true, {}});
}

const TypeInfo* TypeRegistry::find(HostType type) const {
    type &= hostTypeMask;
    const std::shared_lock lock(_mutex);
    if (type >= _types.size() || _types[type].name.empty()) return nullptr;
    return &_types[type];
}

HostType TypeRegistry::resolve(HostType type) const {
    const TypeInfo* info = find(type);
    return info && info->classWord == hostClassAlias ? info->base : type & hostTypeMask;
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
    const std::unique_lock lock(_mutex);
    if (_types.size() > hostTypeMask) throw std::length_error("too many types");
    info.number = static_cast<HostType>(_types.size());
    _types.push_back(std::move(info));
    return _types.back().number;
}

}  // namespace refhost
