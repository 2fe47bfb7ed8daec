// A list of arrays that share their index columns: one value column for each array.
#pragma once
#include "host/interface/c_memory.h"
#include "host/interface/host_api.h"
#include "host/labels/range_spec.h"

namespace quillet {

/// The arrays of a list and what they share.
struct ArrayList {
    CArray<HostArray*> arrays;
    CArray<HostType> valueTypes;  // of each array; 0 for a union
    int count = 0;
    int dims = 0;
    CArray<HostSet*> sets;        // of the first array
    CArray<HostType> indexTypes;  // one for each dimension
    int indexColumns = 0;         // dims, or 0 under `autondx`
};

/// Takes the arrays of the list and tests that they can be read or written side by side. 0, or 1 after a message.
int validateArrayList(HostContext* context, HostList* list, ArrayList* out);

/// validateArrayList, and the tests of options, index sets and columns that reading and writing have in common.
int describeArrayList(HostContext* context, const RangeSpec& range, HostList* list, ArrayList* out);

}  // namespace quillet
