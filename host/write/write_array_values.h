// Writing of the entries of an array into cells.
#pragma once
#include "host/values/array_shape.h"

namespace quillet {

/// One array that is being written into a range of `height` rows.
struct ArrayWriting {
    HostContext* context;
    RangeSpec& range;
    const ArrayShape& shape;
    const HostType* indexTypes;   // of the dimensions that have an index column
    const HostType* columnTypes;  // of the used columns of a row
    int* tuple;
    int height;

    /// Writes the entry of the tuple from used column `cursor` on. 0, or 1 after a message.
    int putEntry(int row, int cursor) const;
    /// putEntry, but an entry that a dynamic array does not have leaves a blank.
    int putEntryOrBlank(int row, int cursor, bool isDynamic) const;
};

/// The forms of the sheet. Each gives 0, or 1 after a message.
int writeWithIndexColumns(const ArrayWriting& a);
int writeWithPartIndex(const ArrayWriting& a);
int writeInArrayOrder(const ArrayWriting& a);

/// Matches the header row of a data frame with the second set of the array, and sets columnMap so that column n goes
/// under the name of element n. Under `skiph+` an empty header gets the names. 0, or 1, which has no message when
/// there is no header row.
int matchDataFrameHeader(HostContext* context, RangeSpec& range, HostSet* names);

}  // namespace quillet
