#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/read/read_array_values.h"
#include "host/read/read_items.h"
#include "host/values/array_list.h"
#include "host/values/index_sets.h"

namespace quillet {
namespace {

/// Reads one row into all arrays: a cell that counts as empty leaves its array alone.
int readRow(HostContext* context, RangeSpec& range, const ArrayList& list, int row, const int* tuple, int* counter) {
    for (int i = 0; i < list.count; ++i) {
        const std::size_t at = std::size_t(i);
        const int col = range.column(list.indexColumns + i);
        if (storeCell(context, range, list.arrays[at], list.valueTypes[at], tuple, row, col, counter)) return 1;
    }
    return 0;
}

int readRows(HostContext* context, RangeSpec& range, const ArrayList& list, int* tuple, int* counter) {
    const bool autoIndex = range.has(optAutoIndex);
    if (autoIndex) tuple[0] = range.autoIndexStart;
    const int height = range.height();
    for (int row = 0; row < height; row = range.rowBehind(row)) {
        if (range.isEmpty(row, 0, range.columnCount)) {
            if (observer != nullptr) observer->rowPassedOver(range, row);
            continue;
        }
        if (readIndexColumns(context, range, list.sets.get(), list.indexTypes.get(), list.indexColumns, row, tuple)) {
            return 1;
        }
        if (autoIndex) tuple[0] = nextInteger(tuple[0]);
        if (readRow(context, range, list, row, tuple, counter)) return 1;
    }
    return 0;
}

/// Closes the first `count` arrays, the last one first; the status passes through all of them.
int endArrays(HostContext* context, const ArrayList& list, int count, int status) {
    for (int i = count - 1; i >= 0; --i) {
        status = hostApi().hostArrayEnd(context, list.arrays[std::size_t(i)], status);
    }
    return status;
}

}  // namespace

int readListOfArrays(HostContext* context, RangeSpec& range, HostList* arrays, int* counter) {
    ArrayList list;
    if (describeArrayList(context, range, arrays, &list)) return 1;
    if (observer != nullptr) observer->laidOut(Layout::arrayList, list.indexColumns);
    const auto tuple = allocateArray<int>(std::size_t(list.dims));
    if (!tuple) return fail(context, msg::noMemory);
    for (int i = 0; i < list.count; ++i) {
        if (hostApi().hostArrayBegin(context, list.arrays[std::size_t(i)])) return endArrays(context, list, i, 1);
    }
    return endArrays(context, list, list.count, readRows(context, range, list, tuple.get(), counter));
}

}  // namespace quillet
