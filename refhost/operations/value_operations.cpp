// The host's operations on contexts, types, objects, records and unions.
#include "refhost/operations/host_operations.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "refhost/operations/host.h"
#include "refhost/values/c_numbers.h"
#include "refhost/values/format_real.h"
#include "refhost/values/object.h"

namespace refhost {
namespace {

const TypeRegistry& typesOf(HostContext* context) {
    return Context::of(context).host.types;
}

/// Copies a text with its NUL as far as there is room; its whole length.
int giveText(std::string_view text, char* buffer, int size) {
    if (size > 0) {
        const std::size_t copied = std::min(text.size(), static_cast<std::size_t>(size) - 1);
        if (copied) std::memcpy(buffer, text.data(), copied);
        buffer[copied] = '\0';
    }
    return static_cast<int>(text.size());
}

const char* hostLanguage() {
    return "en";
}

void hostParam(HostContext* handle, int code, void* out) {
    const Context& context = Context::of(handle);
    if (code == hostParamRealFormat) *static_cast<const char**>(out) = context.realFormat.c_str();
    if (code == hostParamFinishSets) *static_cast<int*>(out) = context.finishSets;
}

void hostError(HostContext* context, const char* format, ...) {
    std::va_list args;
    va_start(args, format);
    char* text = nullptr;
    const CNumbers guard;
    if (vasprintf(&text, format, args) >= 0) {
        Context::of(context).messages.emplace_back(text);
        std::free(text);
    }
    va_end(args);
}

void hostDriverError(HostContext* context, const char* text, int code) {
    Context::of(context).driverReports.push_back({code, text ? text : ""});
}

int hostResolvePath(HostContext* handle, const char* name, char* buffer, int size, int mode) {
    Context& context = Context::of(handle);
    if (!name || !*name || context.isDenied(name)) return 1;
    const std::string path = context.fullPath(name);
    if (path.size() >= static_cast<std::size_t>(std::max(size, 0))) return 1;
    if ((mode & hostResolveWrite) != 0 && !context.mayChange(path, true)) return 1;
    std::memcpy(buffer, path.c_str(), path.size() + 1);
    return 0;
}

int hostOpenStream(HostContext* context, int mode, const char* name) {
    return Context::of(context).openStream(mode, name);
}
int hostCloseStream(HostContext* context, int which) {
    return Context::of(context).closeStream(which) ? 0 : 1;
}
long hostStreamRead(HostContext* context, void* buffer, long count) {
    return Context::of(context).readStream(buffer, count);
}

void hostStreamPrint(HostContext* context, const char* format, ...) {
    std::va_list args;
    va_start(args, format);
    Context::of(context).output.print(format, args);
    va_end(args);
}

int hostFormatReal(HostContext*, char* buffer, int size, const char* format, double value) {
    return formatReal(buffer, size, format, value);
}

void* hostAlloc(HostContext* context, std::size_t size, int flag) {
    ++Context::of(context).host.counts.allocations;
    void* memory =
        flag == 1 ? std::calloc(1, std::max<std::size_t>(size, 1)) : std::malloc(std::max<std::size_t>(size, 1));
    if (!memory) {  // the module was promised memory
        std::fputs("refhost: out of memory\n", stderr);
        std::abort();
    }
    return memory;
}

void hostFree(HostContext* context, void* pointer) {
    if (pointer) ++Context::of(context).host.counts.releases;
    std::free(pointer);
}

const char* hostRegisterText(HostContext* context, const char* text) {
    return text ? Context::of(context).texts.intern(text) : nullptr;
}

int hostTypeInfo(HostContext* context, HostType type, int what, std::uint32_t* out) {
    const TypeInfo* info = typesOf(context).find(type);
    if (!info) return 1;
    if (what == hostInfoClass) {
        *out = info->classWord | info->base;
        return 0;
    }
    if (what != hostInfoCapability || info->classWord == hostClassRecord) return 1;
    *out = info->textCapable ? hostTextCapable : 0;
    return 0;
}

void hostUnionBaseType(HostContext* context, int, HostType type, HostType* out) {
    const TypeInfo* info = typesOf(context).find(type);
    *out = info ? info->base : HostType{hostTypeAny};
}

int hostValueToText(HostContext* context, HostType type, HostValue value, char* buffer, int size) {
    return valueToText(Context::of(context), type, value, buffer, size);
}

int hostValueFromText(HostContext* context, HostType, void* object, const char* text, int) {
    return object && objectFromText(Context::of(context), *static_cast<Object*>(object), text) ? 0 : 1;
}

void* hostCreateObject(HostContext* context, HostType type, int) {
    Host& host = Context::of(context).host;
    if (host.faults.createObject.hits()) return nullptr;
    ObjectPtr object = createObject(host.types, type);
    if (object) ++host.counts.objectsCreated;
    return object.release();
}

void hostDeleteObject(HostContext* context, HostType, void* object) {
    if (object) ++Context::of(context).host.counts.objectsDeleted;
    delete static_cast<Object*>(object);
}

void* hostConvertObject(HostContext* context, HostType type, void* object) {
    if (!object) return nullptr;
    Host& host = Context::of(context).host;
    ObjectPtr converted = cloneObject(host.types, *static_cast<const Object*>(object), type);
    if (converted) ++host.counts.objectsCreated;
    return converted.release();
}

RecordObject* recordOf(void* object) {
    auto* known = static_cast<Object*>(object);
    return known && known->kind == ObjectKind::record ? static_cast<RecordObject*>(known) : nullptr;
}

void hostFieldRef(HostContext*, HostType, void* object, int field, HostValue* out) {
    *out = {};
    const RecordObject* record = recordOf(object);
    if (record && field >= 0 && static_cast<std::size_t>(field) < record->fields.size())
        *out = record->fields[static_cast<std::size_t>(field)];
}

int hostFieldSet(HostContext*, HostType, void* object, int field, HostValue value) {
    RecordObject* record = recordOf(object);
    if (!record || field < 0 || static_cast<std::size_t>(field) >= record->fields.size()) return 1;
    if (!isBaseType(record->info.fields[static_cast<std::size_t>(field)].type)) return 1;
    record->fields[static_cast<std::size_t>(field)] = value;
    return 0;
}

UnionObject* unionOf(void* object) {
    auto* known = static_cast<Object*>(object);
    return known && known->kind == ObjectKind::anyUnion ? static_cast<UnionObject*>(known) : nullptr;
}

int hostUnionGet(HostContext*, void* object, HostValue* value) {
    *value = {};
    const UnionObject* any = unionOf(object);
    if (!any) return 0;
    *value = any->value;
    return static_cast<int>(any->holds);
}

HostType hostUnionType(void* object) {
    const UnionObject* any = unionOf(object);
    if (!any) return hostTypeAny;
    return any->held() != nullptr ? any->holds : any->type;
}

int hostUnionSet(HostContext* handle, void* object, int kind, HostValue value) {
    UnionObject* any = unionOf(object);
    if (!any || kind < 0) return 1;
    const auto type = static_cast<HostType>(kind);
    if (type == hostTypeText && value.text) value.text = Context::of(handle).texts.intern(value.text);
    if (isBaseType(type)) {
        any->set(type, value);
        return 0;
    }
    const auto* held = static_cast<const Object*>(value.object);
    ObjectPtr copy = held ? cloneObject(typesOf(handle), *held, type) : nullptr;
    if (!copy) return 1;
    any->set(std::move(copy));
    return 0;
}

int hostUnionClear(HostContext*, void* object) {
    UnionObject* any = unionOf(object);
    if (!any) return 1;
    any->clear();
    return 0;
}

}  // namespace

int valueToText(const Context& context, HostType type, HostValue value, char* buffer, int size) {
    char digits[16];
    switch (type & hostTypeMask) {
        case hostTypeInteger:
            std::snprintf(digits, sizeof digits, "%d", value.integer);
            return giveText(digits, buffer, size);
        case hostTypeReal:
            return formatReal(buffer, size, context.realFormat.c_str(), value.real);
        case hostTypeText:
            return giveText(value.text ? value.text : "", buffer, size);
        case hostTypeBoolean:
            return giveText(value.integer ? "true" : "false", buffer, size);
        default:
            break;
    }
    const auto* object = static_cast<const Object*>(value.object);
    if (!object) return giveText("", buffer, size);
    switch (object->kind) {
        case ObjectKind::date: {
            char text[maxDateText];
            const int length = printDate(static_cast<const DateObject*>(object)->date, text);
            return giveText({text, static_cast<std::size_t>(length)}, buffer, size);
        }
        case ObjectKind::anyUnion: {
            const auto* any = static_cast<const UnionObject*>(object);
            if (any->holds == hostTypeAny) return giveText("", buffer, size);
            return valueToText(context, any->holds, any->value, buffer, size);
        }
        case ObjectKind::record:
            break;
    }
    return -1;
}

bool objectFromText(Context& context, Object& object, const char* text) {
    if (!text) text = "";
    switch (object.kind) {
        case ObjectKind::date: {
            const std::optional<Date> date = parseDate(text);
            if (date) static_cast<DateObject&>(object).date = *date;
            return date.has_value();
        }
        case ObjectKind::anyUnion: {
            HostValue value{};
            value.text = context.texts.intern(text);
            static_cast<UnionObject&>(object).set(hostTypeText, value);
            return true;
        }
        case ObjectKind::record:
            break;
    }
    return false;
}

void fillValueOperations(HostApi& api) {
    api.hostLanguage = hostLanguage;
    api.hostParam = hostParam;
    api.hostError = hostError;
    api.hostDriverError = hostDriverError;
    api.hostResolvePath = hostResolvePath;
    api.hostOpenStream = hostOpenStream;
    api.hostCloseStream = hostCloseStream;
    api.hostStreamRead = hostStreamRead;
    api.hostStreamPrint = hostStreamPrint;
    api.hostFormatReal = hostFormatReal;
    api.hostAlloc = hostAlloc;
    api.hostFree = hostFree;
    api.hostRegisterText = hostRegisterText;
    api.hostTypeInfo = hostTypeInfo;
    api.hostUnionBaseType = hostUnionBaseType;
    api.hostValueToText = hostValueToText;
    api.hostValueFromText = hostValueFromText;
    api.hostCreateObject = hostCreateObject;
    api.hostDeleteObject = hostDeleteObject;
    api.hostConvertObject = hostConvertObject;
    api.hostFieldRef = hostFieldRef;
    api.hostFieldSet = hostFieldSet;
    api.hostUnionGet = hostUnionGet;
    api.hostUnionType = hostUnionType;
    api.hostUnionSet = hostUnionSet;
    api.hostUnionClear = hostUnionClear;
}

}  // namespace refhost
