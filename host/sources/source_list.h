// The sources that are open, in all contexts. The list and the reference counts are all that contexts share; one
// plain mutex guards them, held for these calls only.
#pragma once
#include <cstdint>

#include "host/sources/driver_context.h"

namespace quillet {

void openSourceList();   // at load
void closeSourceList();  // at shutdown

/// A zeroed source for `path`, with `refCount` 1, `bufferSize` and the text buffer, and a SpecialValues block when
/// wanted. Null when memory is short.
DriverContext* createSource(const char* path, std::int32_t bufferSize, bool withSpecialValues);
void destroySource(DriverContext* source);

/// Puts a source at the head of the list.
void linkSource(DriverContext* source);

/// The open source of this context with this path and these operations, with one reference more; null when there is
/// none, or, with `*error` set to 1 and a report, when `wantsWrite` and the source is open for reading only.
DriverContext* findSource(HostContext* context, bool wantsWrite, const TableOps* ops, const char* path, int* error);

/// Takes one reference back. True when it was the last: the source is then out of the list and the caller's to destroy.
bool releaseSource(DriverContext* source);

}  // namespace quillet
