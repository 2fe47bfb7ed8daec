// The column selection behind a range: "(#3,#1)" or, with a header row, "(total,year)".
#pragma once
#include "host/interface/host_api.h"
#include "host/labels/range_spec.h"

namespace quillet {

/// Sets columnCount and columnMap of a range from the text just behind the "(", sets the header row apart under
/// `skiph`, and narrows the rectangle to the columns in use. Under `skiph+` an empty header row of a source open for
/// update gets the names of the selection. 0 for success, 1 after a message.
int parseColumnSelection(HostContext* context, RangeSpec* range, const char* text);

}  // namespace quillet
