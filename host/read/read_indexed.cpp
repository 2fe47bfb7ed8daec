// Reading of arrays whose sheet has a column for each index, for all indices but the last, or counts the rows.
#include "host/interface/host.h"
#include "host/interface/observer.h"
#include "host/read/read_array_values.h"

namespace quillet {

namespace {

/// Whether a row has nothing in any column, and is therefore left out.
bool isPassedOver(RangeSpec& range, int row) {
    if (!range.isEmpty(row, 0, range.columnCount)) return false;
    if (observer != nullptr) observer->rowPassedOver(range, row);
    return true;
}

}  // namespace

int readWithIndexColumns(const ArrayReading& a) {
    const bool autoIndex = a.range.has(optAutoIndex);
    const int indexCount = autoIndex ? 0 : a.shape.dims;
    if (autoIndex) a.tuple[0] = a.range.autoIndexStart;
    const int height = a.range.height();
    for (int row = 0; row < height; row = a.range.rowBehind(row)) {
        if (isPassedOver(a.range, row)) continue;
        if (readIndexColumns(a.context, a.range, a.shape.sets.get(), a.columnTypes, indexCount, row, a.tuple)) {
            return 1;
        }
        if (autoIndex) a.tuple[0] = nextInteger(a.tuple[0]);
        if (a.storeValue(row, indexCount)) return 1;
    }
    return 0;
}

namespace {

/// The values of a row along the last set, until the columns run out or the last index comes round.
int readAlongLastSet(const ArrayReading& a, int row, int first) {
    int& last = a.tuple[a.shape.dims - 1];
    last = first;
    const int step = a.shape.need;
    for (int c = a.shape.dims - 1; c + step <= a.range.columnCount; c += step) {
        if (a.storeUnlessEmpty(row, c)) return 1;
        if (hostApi().hostArrayNextTuple(a.shape.array, a.tuple) || last == first) break;
    }
    return 0;
}

}  // namespace

int readWithPartIndex(const ArrayReading& a) {
    const int indexCount = a.shape.dims - 1;
    const int first = firstIndex(a.shape.lastSet());
    const bool hasValues = hostApi().hostSetSize(a.shape.lastSet()) > 0;
    const int height = a.range.height();
    for (int row = 0; row < height; row = a.range.rowBehind(row)) {
        if (isPassedOver(a.range, row)) continue;
        if (readIndexColumns(a.context, a.range, a.shape.sets.get(), a.columnTypes, indexCount, row, a.tuple)) {
            return 1;
        }
        if (hasValues && readAlongLastSet(a, row, first)) return 1;
    }
    return 0;
}

}  // namespace quillet
