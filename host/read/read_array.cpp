#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/read/read_array_values.h"
#include "host/read/read_items.h"
#include "host/values/column_types.h"

namespace quillet {
namespace {

/// Dimensions whose indices stand in columns of their own.
int indexColumnCount(const RangeSpec& range, const ArrayShape& shape) {
    if (range.has(optPartIndex)) return shape.dims - 1;
    return range.has(optNoIndex | optAutoIndex) ? 0 : shape.dims;
}

/// Columns that the data need, and whether the range may have more.
int checkColumnCount(HostContext* context, const RangeSpec& range, const ArrayShape& shape) {
    const long long need = shape.need, found = range.columnCount;
    const long long across = need * hostApi().hostSetSize(shape.lastSet());  // values along the last dimension
    if (range.has(optPartIndex)) {
        const long long least = across + shape.dims - 1;
        return shape.dims >= 2 && found >= least ? 0 : failColumns(context, range, least);
    }
    if (!range.has(optNoIndex)) {
        const long long exact = indexColumnCount(range, shape) + need;
        return found == exact ? 0 : failColumns(context, range, exact);
    }
    if (!shape.isRecord) return 0;
    if (shape.dims == 1) return found >= need && found % need == 0 ? 0 : failColumns(context, range, need);
    return found == across ? 0 : failColumns(context, range, across);
}

Layout layoutOf(const RangeSpec& range) {
    if (range.has(optPartIndex)) return Layout::partIndex;
    if (range.has(optDataFrame)) return Layout::dataFrame;
    if (range.has(optNoIndex)) return Layout::inOrder;
    return range.has(optAutoIndex) ? Layout::autoIndex : Layout::indexColumns;
}

int readForm(const ArrayReading& a) {
    switch (layoutOf(a.range)) {
        case Layout::partIndex:
            return readWithPartIndex(a);
        case Layout::dataFrame:
            return readDataFrame(a);
        case Layout::inOrder:
            return readWithoutIndex(a);
        default:
            return readWithIndexColumns(a);
    }
}

/// The part of the reading that stands between hostArrayBegin and hostArrayEnd.
int readOpened(HostContext* context, RangeSpec& range, const ArrayShape& shape, int* counter) {
    const auto tuple = allocateArray<int>(std::size_t(shape.dims));
    const auto indices = allocateArray<HostType>(std::size_t(shape.dims));
    if (!tuple || !indices) return fail(context, msg::noMemory);
    if (!range.has(optDataFrame) && checkColumnCount(context, range, shape)) return 1;
    const int indexCount = indexColumnCount(range, shape);
    if (observer != nullptr) observer->laidOut(layoutOf(range), indexCount);
    if (indexTypes(context, shape.sets.get(), indexCount, IndexRule::reading, indices.get())) return 1;
    const auto types =
        rowColumnTypes(context, range, indices.get(), indexCount, shape.valueType, shape.need, shape.fieldTable);
    if (!types) return 1;
    return readForm({context, range, shape, types.get(), tuple.get(), counter});
}

}  // namespace

int readArray(HostContext* context, RangeSpec& range, HostType type, const HostType* fieldTable, HostArray* array,
              int* counter) {
    ArrayShape shape;
    if (describeArray(context, range, type, fieldTable, array, &shape)) return 1;
    if (hostApi().hostArrayBegin(context, array)) return 1;
    return hostApi().hostArrayEnd(context, array, readOpened(context, range, shape, counter));
}

}  // namespace quillet
