// Rows that a person does not see.
#pragma once
#include "cli/explain/facts/events.h"

namespace cli::explain {

enum class Hidden { no, byHand, byFilter };

/// Why a row is hidden. Filters are known of Open XML workbooks only.
Hidden hiddenBy(const RangeSpec& range, int row);

}  // namespace cli::explain
