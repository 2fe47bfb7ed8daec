#include "host/values/column_types.h"

#include <cstdint>

#include "host/interface/host.h"

namespace quillet {
namespace {

HostType classWord(HostContext* context, HostType type) {
    std::uint32_t word = 0;
    if (hostApi().hostTypeInfo(context, elementType(type), hostInfoClass, &word) != 0) return 0;
    return word;
}

bool hasClass(HostContext* context, HostType type, HostType wanted) {
    return (classWord(context, type) & hostClassMask) == wanted;
}

/// The capability word of a type, 0 when it has none.
std::uint32_t capability(HostContext* context, HostType type) {
    std::uint32_t word = 0;
    if (hostApi().hostTypeInfo(context, elementType(type), hostInfoCapability, &word) != 0) return 0;
    return word;
}

bool hasTextCapability(std::uint32_t word) {
    return (word & hostTextCapable) == hostTextCapable;
}

/// A union can stand in a cell when what it is made of can. `any`, which has no single base type, takes every value.
bool isCellUnion(HostContext* context, HostType type) {
    HostType base = 0;
    hostApi().hostUnionBaseType(context, 0, elementType(type), &base);
    if (isBaseType(base) || elementType(type) == hostTypeAny) return true;
    return hasTextCapability(capability(context, base));
}

}  // namespace

bool isUnionType(HostContext* context, HostType type) {
    return elementType(type) == hostTypeAny || hasClass(context, type, hostClassUnion);
}

bool isRecordType(HostContext* context, HostType type) {
    return hasClass(context, type, hostClassRecord) && capability(context, type) == 0;
}

HostType aliasedType(HostContext* context, HostType type) {
    const HostType word = classWord(context, type);
    return (word & hostClassMask) == hostClassAlias ? elementType(word) : 0;
}

bool isTextCapable(HostContext* context, HostType type) {
    const HostType base = aliasedType(context, type);
    return hasTextCapability(capability(context, base ? base : type));
}

int columnsForType(HostContext* context, HostType type, const HostType* fieldTable, int* isRecord) {
    if (const HostType base = aliasedType(context, type)) return hasTextCapability(capability(context, base));
    if (const std::uint32_t word = capability(context, type)) return hasTextCapability(word);
    if (isRecordType(context, type)) {
        if (isRecord) *isRecord = 1;
        int sum = 0;
        for (const HostType field : fieldsOf(type, fieldTable)) {
            const int columns = columnsForValue(context, field, fieldTable, nullptr);
            if (columns == 0) return 0;
            sum += columns;
        }
        return sum;
    }
    return isUnionType(context, type) && isCellUnion(context, type);
}

int columnsForValue(HostContext* context, HostType type, const HostType* fieldTable, int* isRecord) {
    return isBaseType(type) ? 1 : columnsForType(context, type, fieldTable, isRecord);
}

HostType* flattenColumns(HostContext* context, HostType* out, HostType type, const HostType* fieldTable) {
    if (!isBaseType(type) && isRecordType(context, type)) {
        for (const HostType field : fieldsOf(type, fieldTable)) {
            out = flattenColumns(context, out, field, fieldTable);
        }
        return out;
    }
    *out = !isBaseType(type) && isUnionType(context, type) ? HostType{hostTypeAny} : type;
    return out + 1;
}

int usableAsCell(HostContext* context, HostType type) {
    if (isUnionType(context, type)) return isCellUnion(context, type) ? 0 : 1;
    return hasTextCapability(capability(context, type)) ? 0 : 1;
}

HostType cellType(HostContext* context, HostType type) {
    if (isBaseType(type)) return elementType(type);
    return isUnionType(context, type) ? HostType{hostTypeAny} : elementType(type);
}

}  // namespace quillet
