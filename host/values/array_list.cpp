#include "host/values/array_list.h"

#include "host/labels/report.h"
#include "host/values/array_shape.h"
#include "host/values/column_types.h"
#include "host/values/index_sets.h"

namespace quillet {
namespace {

/// Collects the elements of the list, which all have to be arrays.
int takeArrays(HostContext* context, HostList* list, ArrayList* out) {
    const int length = hostApi().hostListLength(list);
    out->arrays = allocateArray<HostArray*>(std::size_t(length));
    out->valueTypes = allocateArray<HostType>(std::size_t(length));
    if (!out->arrays || !out->valueTypes) return fail(context, msg::noMemory);
    HostType type = 0;
    HostValue value = {.bits = 0};
    for (void* at = hostApi().hostListNext(list, nullptr, &type, &value); at && out->count < length;
         at = hostApi().hostListNext(list, at, &type, &value)) {
        const bool isArray = (type & hostClassMask) == hostClassArray;
        if (!value.object && (isArray || elementType(type) == hostTypeAny)) {
            return fail(context, msg::uninitializedArray);
        }
        if (!isArray) return fail(context, msg::wrongListType);
        out->arrays[std::size_t(out->count++)] = static_cast<HostArray*>(value.object);
        value.bits = 0;
    }
    return 0;
}

/// Whether the sets of a later array go with those of the first: the same set, or a range beside a range.
bool setsAgree(const ArrayList& list, HostSet* const* sets) {
    for (int d = 0; d < list.dims; ++d) {
        HostSet* const first = list.sets[std::size_t(d)];
        if (sets[d] == first) continue;
        const auto isRange = [](HostSet* set) { return (hostApi().hostSetFlags(set) & hostFlagExplicit) == 0; };
        if (!isRange(sets[d]) || !isRange(first)) return false;
    }
    return true;
}

int takeValueType(HostContext* context, ArrayList* list, int i) {
    const HostType type = hostApi().hostArrayElemType(list->arrays[std::size_t(i)]);
    if (!isBaseType(type) && usableAsCell(context, type) != 0) return fail(context, msg::wrongArrayType);
    list->valueTypes[std::size_t(i)] = cellType(context, type);
    return 0;
}

int takeFirst(HostContext* context, ArrayList* list) {
    list->dims = hostApi().hostArrayDims(list->arrays[0]);
    list->sets = setsOf(context, list->arrays[0]);
    if (!list->sets) return 1;
    list->indexTypes = allocateArray<HostType>(std::size_t(list->dims));
    if (!list->indexTypes) return fail(context, msg::noMemory);
    return indexTypes(context, list->sets.get(), list->dims, IndexRule::readingLists, list->indexTypes.get());
}

}  // namespace

int validateArrayList(HostContext* context, HostList* list, ArrayList* out) {
    if (takeArrays(context, list, out)) return 1;
    for (int i = 0; i < out->count; ++i) {
        HostArray* const array = out->arrays[std::size_t(i)];
        if (i == 0) {
            if (takeFirst(context, out)) return 1;
        } else {
            if (hostApi().hostArrayDims(array) != out->dims) return fail(context, msg::inconsistentArrays);
            const auto sets = setsOf(context, array);
            if (!sets) return 1;
            if (!setsAgree(*out, sets.get())) return fail(context, msg::inconsistentArrays);
        }
        if (takeValueType(context, out, i)) return 1;
    }
    return 0;
}

int describeArrayList(HostContext* context, const RangeSpec& range, HostList* list, ArrayList* out) {
    if (validateArrayList(context, list, out)) return 1;
    const bool autoIndex = range.has(optAutoIndex);
    if (autoIndex && out->count > 0 && checkAutoIndex(context, out->dims, out->sets.get())) return 1;
    out->indexColumns = autoIndex ? 0 : out->dims;
    const int need = out->count + out->indexColumns;
    return range.columnCount == need ? 0 : failColumns(context, range, need);
}

}  // namespace quillet
