// Records: one column for each base field, in the order of the fields, nested records in their place.
#pragma once
#include "host/interface/host_api.h"
#include "host/labels/range_spec.h"
#include "host/values/cell_values.h"

namespace quillet {

/// Reads a record from the used columns from `*cursor` on, and moves the cursor behind it. `columnTypes` holds the
/// type of each used column of the row. A cell that does not convert is reported and its field left alone; a field
/// that refuses its value is reported and ends the record with 1.
int readRecord(HostContext* context, RangeSpec& range, const HostType* columnTypes, int row, int* cursor, void* record,
               HostType type, const HostType* fieldTable);

/// Writes a record in the same way; a null record blanks its columns. On failure `*cursor` stays at the column.
CellWrite putRecord(HostContext* context, RangeSpec& range, const HostType* columnTypes, int row, int* cursor,
                    void* record, HostType type, const HostType* fieldTable);

/// putRecord with 0 for done and 1 for all else.
int writeRecord(HostContext* context, RangeSpec& range, const HostType* columnTypes, int row, int* cursor, void* record,
                HostType type, const HostType* fieldTable);

}  // namespace quillet
