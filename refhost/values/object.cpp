#include "refhost/values/object.h"

#include <cmath>
#include <cstring>
#include <utility>

namespace refhost {
namespace {

void copyValue(const TypeRegistry& types, HostType type, const HostValue& from, HostValue& to) {
    if (isBaseType(type) || !from.object) {
        to = from;
        return;
    }
    to.object = cloneObject(types, *static_cast<const Object*>(from.object)).release();
}

template <class Number>
void appendBytes(std::string& key, Number number) {
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    key.append(bytes, sizeof number);
}

}  // namespace

void UnionObject::clear() {
    delete held();
    value = {};
    holds = hostTypeAny;
}

void UnionObject::set(HostType kind_, HostValue slot) {
    delete held();
    value = slot;
    holds = kind_;
}

void UnionObject::set(ObjectPtr object) {
    delete held();
    holds = object->type;
    value.object = object.release();
}

void UnionObject::assign(const TypeRegistry& types, const UnionObject& from) {
    if (from.held() != nullptr)
        set(cloneObject(types, *from.held()));
    else
        set(from.holds, from.value);
}

RecordObject::RecordObject(const TypeRegistry& types, const TypeInfo& info_, HostType type_)
    : Object(type_, ObjectKind::record), info(info_), fields(info_.fields.size()) {
    for (std::size_t i = 0; i < fields.size(); ++i)
        fields[i].object = createObject(types, info.fields[i].type).release();  // null, all bits zero, for base types
}

RecordObject::~RecordObject() {
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (!isBaseType(info.fields[i].type)) delete static_cast<Object*>(fields[i].object);
}

ObjectPtr createObject(const TypeRegistry& types, HostType type) {
    const TypeInfo* info = types.resolved(type);
    if (!info) return nullptr;
    type &= hostTypeMask;
    if (info->number == typeDate) return std::make_unique<DateObject>(type);
    if (info->classWord == hostClassUnion) return std::make_unique<UnionObject>(type);
    if (info->classWord == hostClassRecord) return std::make_unique<RecordObject>(types, *info, type);
    return nullptr;
}

ObjectPtr cloneObject(const TypeRegistry& types, const Object& from, HostType type) {
    ObjectPtr to = createObject(types, type);
    if (!to || to->kind != from.kind) return nullptr;
    switch (from.kind) {
        case ObjectKind::date:
            static_cast<DateObject&>(*to).date = static_cast<const DateObject&>(from).date;
            break;
        case ObjectKind::anyUnion:
            static_cast<UnionObject&>(*to).assign(types, static_cast<const UnionObject&>(from));
            break;
        case ObjectKind::record: {
            const auto& source = static_cast<const RecordObject&>(from);
            auto& target = static_cast<RecordObject&>(*to);
            if (&source.info != &target.info) return nullptr;
            for (std::size_t i = 0; i < source.fields.size(); ++i) {
                const HostType fieldType = source.info.fields[i].type;
                if (!isBaseType(fieldType))
                    delete static_cast<Object*>(std::exchange(target.fields[i].object, nullptr));
                copyValue(types, fieldType, source.fields[i], target.fields[i]);
            }
            break;
        }
    }
    return to;
}

void appendKey(std::string& key, HostType type, HostValue value) {
    switch (type) {
        case hostTypeInteger:
        case hostTypeBoolean:
            appendBytes(key, value.integer);
            break;
        case hostTypeReal:
            if (value.real == 0) value.real = 0;  // -0 and 0 are one value
            if (std::isnan(value.real)) value.real = std::nan("");
            appendBytes(key, value.real);
            break;
        case hostTypeText:
            if (value.text) key += value.text;
            key += '\0';
            break;
        default:
            appendKey(key, static_cast<const Object*>(value.object));
    }
}

void appendKey(std::string& key, const Object* object) {
    if (!object) {
        key += '-';
        return;
    }
    switch (object->kind) {
        case ObjectKind::date: {
            char text[maxDateText];
            key.append(text, static_cast<std::size_t>(printDate(static_cast<const DateObject*>(object)->date, text)));
            key += '\0';
            break;
        }
        case ObjectKind::anyUnion: {
            const auto* any = static_cast<const UnionObject*>(object);
            appendBytes(key, any->holds);
            if (any->holds != hostTypeAny) appendKey(key, any->holds, any->value);
            break;
        }
        case ObjectKind::record: {
            const auto* record = static_cast<const RecordObject*>(object);
            for (std::size_t i = 0; i < record->fields.size(); ++i)
                appendKey(key, record->info.fields[i].type, record->fields[i]);
            break;
        }
    }
}

}  // namespace refhost
