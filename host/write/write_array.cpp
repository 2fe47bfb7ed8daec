#include <algorithm>

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/column_types.h"
#include "host/values/index_sets.h"
#include "host/write/write_array_values.h"
#include "host/write/write_items.h"

namespace quillet {
namespace {

enum class ArrayForm { indexColumns, partIndex, inOrder };

ArrayForm formOf(const RangeSpec& range) {
    if (range.has(optPartIndex)) return ArrayForm::partIndex;
    return range.has(optNoIndex | optAutoIndex) ? ArrayForm::inOrder : ArrayForm::indexColumns;
}

int indexColumnCount(ArrayForm form, const ArrayShape& shape) {
    switch (form) {
        case ArrayForm::indexColumns:
            return shape.dims;
        case ArrayForm::partIndex:
            return shape.dims - 1;
        case ArrayForm::inOrder:
            break;
    }
    return 0;
}

/// Values along the last dimension, in columns.
long long columnsAcross(const ArrayShape& shape) {
    return 1LL * shape.need * hostApi().hostSetSize(shape.lastSet());
}

int checkColumnCount(HostContext* context, const RangeSpec& range, const ArrayShape& shape, ArrayForm form) {
    const long long found = range.columnCount;
    if (form == ArrayForm::inOrder && shape.dims == 1) {
        return found >= shape.need && found % shape.need == 0 ? 0 : failColumns(context, range, shape.need);
    }
    const long long values = form == ArrayForm::indexColumns ? shape.need : columnsAcross(shape);
    const long long exact = values + indexColumnCount(form, shape);
    if (form == ArrayForm::partIndex && shape.dims < 2) return failColumns(context, range, exact);
    return found == exact ? 0 : failColumns(context, range, exact);
}

/// Rows for the existing entries under partndx: one for each combination of all indices but the last.
long long distinctRows(const ArrayShape& shape, int* tuple) {
    const int last = lastIndex(shape.lastSet());
    long long rows = 0;
    for (int end = hostApi().hostArrayFirstEntry(shape.array, tuple); !end; ++rows) {
        tuple[shape.dims - 1] = last;
        end = hostApi().hostArrayNextEntry(shape.array, tuple);
    }
    return rows;
}

/// Rows for all tuples: with 1 dimension the values flow across the columns, with more each row is a combination of
/// all indices but the last.
long long rowsInOrder(const RangeSpec& range, const ArrayShape& shape) {
    if (shape.dims == 1) return (columnsAcross(shape) + range.columnCount - 1) / range.columnCount;
    long long rows = 1;
    for (int d = 0; d < shape.dims - 1; ++d) {
        rows *= hostApi().hostSetSize(shape.sets[std::size_t(d)]);
        rows = std::min(rows, 1LL << 31);  // more than any sheet has
    }
    return rows;
}

long long rowsNeeded(const RangeSpec& range, const ArrayShape& shape, ArrayForm form, int* tuple) {
    switch (form) {
        case ArrayForm::indexColumns:
            return hostApi().hostArrayCount(shape.array);
        case ArrayForm::partIndex:
            return distinctRows(shape, tuple);
        case ArrayForm::inOrder:
            break;
    }
    return rowsInOrder(range, shape);
}

Layout layoutOf(const RangeSpec& range, ArrayForm form) {
    if (form == ArrayForm::partIndex) return Layout::partIndex;
    if (form == ArrayForm::indexColumns) return Layout::indexColumns;
    if (range.has(optDataFrame)) return Layout::dataFrame;
    return range.has(optAutoIndex) ? Layout::autoIndex : Layout::inOrder;
}

int writeForm(const ArrayWriting& a, ArrayForm form) {
    switch (form) {
        case ArrayForm::indexColumns:
            return writeWithIndexColumns(a);
        case ArrayForm::partIndex:
            return writeWithPartIndex(a);
        case ArrayForm::inOrder:
            break;
    }
    return writeInArrayOrder(a);
}

}  // namespace

int writeArray(HostContext* context, RangeSpec& range, HostType type, const HostType* fieldTable, HostArray* array) {
    ArrayShape shape;
    if (describeArray(context, range, type, fieldTable, array, &shape)) return 1;
    const ArrayForm form = formOf(range);
    if (range.has(optDataFrame) && range.has(optSkipHeader) && matchDataFrameHeader(context, range, shape.lastSet())) {
        return 1;
    }
    if (checkColumnCount(context, range, shape, form)) return 1;

    const int indexCount = indexColumnCount(form, shape);
    if (observer != nullptr) observer->laidOut(layoutOf(range, form), indexCount);
    const auto tuple = allocateArray<int>(std::size_t(shape.dims));
    const auto indices = allocateArray<HostType>(std::size_t(shape.dims));
    if (!tuple || !indices) return fail(context, msg::noMemory);
    const long long needed = rowsNeeded(range, shape, form, tuple.get());
    if (form == ArrayForm::partIndex && needed == 0) return 0;
    const int height = fitRows(range, needed);
    if (indexTypes(context, shape.sets.get(), indexCount, IndexRule::writing, indices.get())) return 1;
    const auto types =
        rowColumnTypes(context, range, indices.get(), indexCount, shape.valueType, shape.need, shape.fieldTable);
    if (!types) return 1;
    return writeForm({context, range, shape, indices.get(), types.get(), tuple.get(), height}, form);
}

}  // namespace quillet
