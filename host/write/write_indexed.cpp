// Writing of arrays with a column for each index, or for all indices but the last.
#include <algorithm>

#include "host/labels/report.h"
#include "host/values/index_sets.h"
#include "host/write/write_array_values.h"

namespace quillet {

int writeWithIndexColumns(const ArrayWriting& a) {
    const int dims = a.shape.dims;
    if (hostApi().hostArrayFirstEntry(a.shape.array, a.tuple)) return 0;
    const IndexWalk walk(a.context, a.shape.sets.get(), dims);
    for (int row = 0; row < a.height; ++row) {
        if (writeIndexColumns(a.context, a.range, a.shape.sets.get(), a.indexTypes, dims, row, a.tuple)) return 1;
        if (a.putEntry(row, dims)) return 1;
        if (hostApi().hostArrayNextEntry(a.shape.array, a.tuple)) break;
    }
    return 0;
}

namespace {

/// The values of a row along the last set, for the indices that the tuple begins with.
int writeAlongLastSet(const ArrayWriting& a, int row, int first, bool isDynamic) {
    int& last = a.tuple[a.shape.dims - 1];
    last = first;
    for (int c = a.shape.dims - 1; c + a.shape.need <= a.range.columnCount; c += a.shape.need) {
        if (a.putEntryOrBlank(row, c, isDynamic)) return 1;
        if (hostApi().hostArrayNextTuple(a.shape.array, a.tuple) || last == first) break;
    }
    return 0;
}

}  // namespace

int writeWithPartIndex(const ArrayWriting& a) {
    const int indexCount = a.shape.dims - 1;
    HostArray* const array = a.shape.array;
    if (hostApi().hostArrayFirstEntry(array, a.tuple)) return 0;
    const auto row1 = allocateArray<int>(std::size_t(a.shape.dims));  // the indices that the row began with
    if (!row1) return fail(a.context, msg::noMemory);
    const IndexWalk walk(a.context, a.shape.sets.get(), indexCount);
    const int first = firstIndex(a.shape.lastSet()), last = lastIndex(a.shape.lastSet());
    const bool isDynamic = (hostApi().hostArrayElemType(array) & hostFlagDynamic) != 0;
    for (int row = 0; row < a.height; ++row) {
        std::copy_n(a.tuple, a.shape.dims, row1.get());
        if (writeIndexColumns(a.context, a.range, a.shape.sets.get(), a.indexTypes, indexCount, row, a.tuple)) {
            return 1;
        }
        if (writeAlongLastSet(a, row, first, isDynamic)) return 1;
        // From the last tuple of this row on, the next entry begins the next row.
        std::copy_n(row1.get(), a.shape.dims, a.tuple);
        a.tuple[indexCount] = last;
        if (hostApi().hostArrayNextEntry(array, a.tuple)) break;
    }
    return 0;
}

}  // namespace quillet
