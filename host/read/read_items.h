// Reading of the forms of an item from its range into host data. Each function gives 0, or 1 after a message; what
// was stored before a failure stays, and `*counter` says how many values that were.
#pragma once
#include "host/labels/item.h"

namespace quillet {

int readScalar(Item& item, int* counter);
int readSet(Item& item, int* counter);
int readList(Item& item, int* counter);

/// `type` is the type word of the item.
int readArray(HostContext* context, RangeSpec& range, HostType type, const HostType* fieldTable, HostArray* array,
              int* counter);

int readListOfArrays(HostContext* context, RangeSpec& range, HostList* list, int* counter);

}  // namespace quillet
