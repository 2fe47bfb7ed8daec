// The read and write operations of all three drivers.
#pragma once
#include "host/interface/host_api.h"

namespace quillet {

/// Fills the items of a read statement from a source. Items are parallel arrays; `types` is at the same time the
/// table of record fields. Gives the number of items not done; a done item's value slot is set to 0, and each value
/// stored adds one to its item's counter.
int driverRead(HostContext* context, void* source, int itemCount, const char* const* labels, const HostType* types,
               HostValue* values, int* counters);

/// Writes the items of a write statement into a source; as driverRead, without counters.
int driverWrite(HostContext* context, void* source, int itemCount, const char* const* labels, const HostType* types,
                HostValue* values);

}  // namespace quillet
