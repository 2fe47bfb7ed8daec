// What reading and writing have to know of an array before the first cell.
#pragma once
#include "host/interface/c_memory.h"
#include "host/interface/host_api.h"
#include "host/labels/range_spec.h"

namespace quillet {

/// An array and the columns that its values take.
struct ArrayShape {
    HostArray* array = nullptr;
    HostType valueType = 0;  // element type with its table place
    const HostType* fieldTable = nullptr;
    HostType cellType = 0;  // of a value that is no record; 0 for a union
    int dims = 0;
    CArray<HostSet*> sets;
    int need = 0;      // columns of one value
    int isRecord = 0;  // of the value

    HostSet* lastSet() const { return sets[std::size_t(dims - 1)]; }
};

/// Fills the shape and tests what the options `autondx` and `dataframe` ask of the array. 0, or 1 after a message.
int describeArray(HostContext* context, const RangeSpec& range, HostType type, const HostType* fieldTable,
                  HostArray* array, ArrayShape* out);

/// The test of `autondx`: one dimension over a range of integers. 0, or 1 after the message.
int checkAutoIndex(HostContext* context, int dims, HostSet* const* sets);

/// The sets of an array, or null after a message when there is no memory.
CArray<HostSet*> setsOf(HostContext* context, HostArray* array);

/// Reports the columns that the data need and the range has. Gives 1.
int failColumns(HostContext* context, const RangeSpec& range, long long needed);

/// The column types of a row: `indexTypes` for the first `indexCount` used columns, and behind them those of one
/// value after the other as far as whole values fit into the used columns. Null after a message when there is no
/// memory.
CArray<HostType> rowColumnTypes(HostContext* context, const RangeSpec& range, const HostType* indexTypes,
                                int indexCount, HostType valueType, int need, const HostType* fieldTable);

}  // namespace quillet
