// What the host's types mean for a sheet: how many columns a value takes, and of which types.
#pragma once
#include <span>

#include "host/interface/host_api.h"

namespace quillet {

/// The element type of a type word, without class, flags and table place.
constexpr HostType elementType(HostType type) {
    return type & hostTypeMask;
}

/// `element` with the table place of another type word: a record keeps the place of its field list.
constexpr HostType withTablePlace(HostType element, HostType placed) {
    return elementType(element) | (placed >> hostFieldTableShift << hostFieldTableShift);
}

/// Integer, real, text or boolean.
constexpr bool isBaseType(HostType type) {
    return elementType(type) >= hostTypeInteger && elementType(type) <= hostTypeBoolean;
}

bool isUnionType(HostContext* context, HostType type);
/// Records that convert to and from text are no records here: they take one column as a text.
bool isRecordType(HostContext* context, HostType type);
/// The base type of an alias, 0 when the type is none.
HostType aliasedType(HostContext* context, HostType type);
/// Whether the type, or the base type of an alias, converts to and from text.
bool isTextCapable(HostContext* context, HostType type);

/// The field words of a record type.
inline std::span<const HostType> fieldsOf(HostType type, const HostType* fieldTable) {
    const HostType* const list = fieldTable + (type >> hostFieldTableShift);
    return {list + 1, *list};
}

/// The field index that a field word carries.
constexpr int fieldIndex(HostType field) {
    return int(field >> hostFieldIndexShift & hostFieldIndexMask);
}

/// Columns that a value of this type takes, 0 for a type that a sheet cannot hold. Sets `*isRecord`, which may be
/// null, when the type is a record.
int columnsForType(HostContext* context, HostType type, const HostType* fieldTable, int* isRecord);

/// As columnsForType, with 1 for a base type at once.
int columnsForValue(HostContext* context, HostType type, const HostType* fieldTable, int* isRecord);

/// Writes the type of each column of a value to `out`, 0 for a union, and gives the end of what was written.
HostType* flattenColumns(HostContext* context, HostType* out, HostType type, const HostType* fieldTable);

/// 0 when a value of the type, which is no base type, can stand in a cell, else 1.
int usableAsCell(HostContext* context, HostType type);

/// The type by which a single value goes into or out of a cell: 0 for a union, else the element type.
HostType cellType(HostContext* context, HostType type);

}  // namespace quillet
