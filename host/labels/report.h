// Statement-level messages: through the catalogue to the host.
#pragma once
#include "host/interface/host.h"
#include "host/interface/messages.h"
#include "host/labels/range_spec.h"

namespace quillet {

/// Reports a message of host/messages.h with its arguments. Gives 1, the status of a failed item.
template <class... Args>
int fail(HostContext* context, const char* message, Args... args) {
    hostApi().hostError(context, translate(message), args...);
    return 1;
}

/// Reports a message that names a cell, given relative to the range. Gives 1.
inline int failAt(HostContext* context, const RangeSpec& range, const char* message, int row, int col) {
    return fail(context, message, range.firstRow + row + 1, range.firstCol + col + 1);
}

}  // namespace quillet
