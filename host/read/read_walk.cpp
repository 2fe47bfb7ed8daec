// Reading of arrays whose sheet holds values alone, in the order of the array.
#include "host/interface/host.h"
#include "host/read/read_array_values.h"

namespace quillet {
namespace {

enum class Walk { goesOn, over, failed };

/// One row. With 2 or more dimensions the columns run along the last one, and the row is over when its index comes
/// round; columns that are missing are stepped over. With 1 dimension the walk runs on from row to row.
Walk readRow(const ArrayReading& a, int row, int first, int last) {
    const int step = a.shape.need;
    int& lastSlot = a.tuple[a.shape.dims - 1];
    for (int c = 0; c + step <= a.range.columnCount; c += step) {
        if (a.storeUnlessEmpty(row, c)) return Walk::failed;
        if (hostApi().hostArrayNextTuple(a.shape.array, a.tuple)) return Walk::over;
        if (a.shape.dims > 1 && lastSlot == first) return Walk::goesOn;
    }
    if (a.shape.dims > 1 && lastSlot != first) {
        lastSlot = last;
        if (hostApi().hostArrayNextTuple(a.shape.array, a.tuple)) return Walk::over;
    }
    return Walk::goesOn;
}

}  // namespace

int readWithoutIndex(const ArrayReading& a) {
    if (hostApi().hostArrayFirstTuple(a.shape.array, a.tuple)) return 0;
    const int first = firstIndex(a.shape.lastSet()), last = lastIndex(a.shape.lastSet());
    const int height = a.range.height();
    Walk walk = Walk::goesOn;
    for (int row = 0; row < height && walk == Walk::goesOn; ++row) walk = readRow(a, row, first, last);
    return walk == Walk::failed ? 1 : 0;
}

}  // namespace quillet
