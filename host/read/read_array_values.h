// Storing of cells into the entries of arrays.
#pragma once
#include "host/values/array_shape.h"
#include "host/values/index_sets.h"

namespace quillet {

/// One array that is being filled from a range.
struct ArrayReading {
    HostContext* context;
    RangeSpec& range;
    const ArrayShape& shape;
    const HostType* columnTypes;  // of the used columns of a row
    int* tuple;
    int* counter;

    /// Stores the value at used column `cursor` of the row into the entry of the tuple. Plain cells that count as
    /// empty store nothing. 0, or 1 after a message.
    int storeValue(int row, int cursor) const;
    /// storeValue, but records of which all cells count as empty store nothing either.
    int storeUnlessEmpty(int row, int cursor) const;
};

/// Stores one cell into an entry, as storeValue does for a value that is no record. `type` is 0 for a union.
int storeCell(HostContext* context, RangeSpec& range, HostArray* array, HostType type, const int* tuple, int row,
              int col, int* counter);

/// The forms of the sheet. Each gives 0, or 1 after a message.
int readWithIndexColumns(const ArrayReading& a);
int readWithPartIndex(const ArrayReading& a);
int readWithoutIndex(const ArrayReading& a);
int readDataFrame(const ArrayReading& a);

}  // namespace quillet
