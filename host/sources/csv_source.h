// Open and close of a csv source, and the size of an open one.
#pragma once
#include <cstdint>

#include "host/interface/host_api.h"

namespace quillet {

/// Opens and loads a csv file; `*openFlags` as in host/interface/host_api.h. Null after a report, or without one where
/// the host's stream failed.
void* openCsv(HostContext* context, std::uint32_t* openFlags, const char* name);

/// The last close of a source open for update writes the file anew. 0, or 1 when that failed.
int closeCsv(HostContext* context, void* source);

/// Bytes of the table that this context holds open under exactly this name, 0 when there is none.
std::int64_t csvMemorySize(HostContext* context, const char* fileName);

}  // namespace quillet
