// Writing of the forms of an item from host data into its range. Each function gives 0, or 1 after a message; cells
// written before a failure stay.
#pragma once
#include "host/labels/item.h"

namespace quillet {

int writeScalar(Item& item);
int writeSet(Item& item);
int writeList(Item& item);

/// `type` is the type word of the item.
int writeArray(HostContext* context, RangeSpec& range, HostType type, const HostType* fieldTable, HostArray* array);

int writeListOfArrays(HostContext* context, RangeSpec& range, HostList* list);

/// Makes room for `needed` rows under `grow`. Gives the height of the range then; rows that do not fit are cut off.
int fitRows(RangeSpec& range, long long needed);

}  // namespace quillet
