// Writing of all tuples of an array, in its order, without indices.
#include "host/labels/report.h"
#include "host/values/index_sets.h"
#include "host/write/write_array_values.h"

namespace quillet {
namespace {

enum class Walk { goesOn, over, failed };

/// One row. With 2 or more dimensions the row is over when the last index comes round.
Walk writeRow(const ArrayWriting& a, int row, int first, bool isDynamic) {
    const int& lastSlot = a.tuple[a.shape.dims - 1];
    for (int c = 0; c + a.shape.need <= a.range.columnCount; c += a.shape.need) {
        if (a.putEntryOrBlank(row, c, isDynamic)) return Walk::failed;
        if (hostApi().hostArrayNextTuple(a.shape.array, a.tuple)) return Walk::over;
        if (a.shape.dims > 1 && lastSlot == first) break;
    }
    return Walk::goesOn;
}

}  // namespace

// The columns are as many as the last set has values, so that with 2 or more dimensions each row ends with its walk.
int writeInArrayOrder(const ArrayWriting& a) {
    if (hostApi().hostArrayFirstTuple(a.shape.array, a.tuple)) return 0;
    const int first = firstIndex(a.shape.lastSet());
    const bool isDynamic = (hostApi().hostArrayElemType(a.shape.array) & hostFlagDynamic) != 0;
    Walk walk = Walk::goesOn;
    for (int row = 0; row < a.height && walk == Walk::goesOn; ++row) walk = writeRow(a, row, first, isDynamic);
    return walk == Walk::failed ? 1 : 0;
}

}  // namespace quillet
