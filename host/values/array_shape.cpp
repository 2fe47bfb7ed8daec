#include "host/values/array_shape.h"

#include <algorithm>
#include <climits>

#include "host/labels/report.h"
#include "host/values/column_types.h"
#include "host/values/index_sets.h"

namespace quillet {
namespace {

bool suitsDataFrame(const RangeSpec& range, const ArrayShape& shape) {
    if (shape.dims != 2 || shape.isRecord || !isIntegerRange(shape.sets[0])) return false;
    if (!range.has(optSkipHeader)) return isIntegerRange(shape.sets[1]);
    return elementType(hostApi().hostSetFlags(shape.sets[1])) == hostTypeText;
}

}  // namespace

int failColumns(HostContext* context, const RangeSpec& range, long long needed) {
    return fail(context, msg::wrongColumnCount, int(std::min<long long>(needed, INT_MAX)), int(range.columnCount));
}

CArray<HostSet*> setsOf(HostContext* context, HostArray* array) {
    auto sets = allocateArray<HostSet*>(std::size_t(hostApi().hostArrayDims(array)));
    if (sets) {
        hostApi().hostArraySets(array, sets.get());
    } else {
        fail(context, msg::noMemory);
    }
    return sets;
}

int checkAutoIndex(HostContext* context, int dims, HostSet* const* sets) {
    return dims == 1 && isIntegerRange(sets[0]) ? 0 : fail(context, msg::autondxNeedsRange);
}

int describeArray(HostContext* context, const RangeSpec& range, HostType type, const HostType* fieldTable,
                  HostArray* array, ArrayShape* out) {
    if (!array) return fail(context, msg::uninitializedArray);
    out->array = array;
    out->valueType = withTablePlace(type, type);
    out->fieldTable = fieldTable;
    out->cellType = cellType(context, type);
    out->need = columnsForValue(context, out->valueType, fieldTable, &out->isRecord);
    if (out->need == 0) return fail(context, msg::wrongDataType);
    out->dims = hostApi().hostArrayDims(array);
    out->sets = setsOf(context, array);
    if (!out->sets) return 1;
    if (range.has(optAutoIndex) && checkAutoIndex(context, out->dims, out->sets.get())) return 1;
    if (range.has(optDataFrame) && !suitsDataFrame(range, *out)) return fail(context, msg::dataframeNeedsArray);
    return 0;
}

CArray<HostType> rowColumnTypes(HostContext* context, const RangeSpec& range, const HostType* indexTypes,
                                int indexCount, HostType valueType, int need, const HostType* fieldTable) {
    const int length = std::max(range.columnCount, indexCount + need);
    auto types = allocateArray<HostType>(std::size_t(length));
    if (!types) {
        fail(context, msg::noMemory);
        return types;
    }
    HostType* const values = std::copy_n(indexTypes, indexCount, types.get());
    flattenColumns(context, values, valueType, fieldTable);
    for (int i = indexCount + need; i < length; ++i) types[std::size_t(i)] = types[std::size_t(i - need)];
    return types;
}

}  // namespace quillet
