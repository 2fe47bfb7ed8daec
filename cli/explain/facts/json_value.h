// Values between cells and the host as JSON texts, in the form of `quillet run --json`.
#pragma once
#include <string>
#include <string_view>

#include "host/interface/host_api.h"
#include "host/labels/range_spec.h"
#include "refhost/operations/context.h"

namespace cli::explain {

std::string jsonText(std::string_view text);

/// What the host gets of a cell. `type` has no class and flags; 0 is a union, whose value is the union itself; a type
/// above the base types has the text of its value.
std::string jsonValue(refhost::Context& context, HostType type, const HostValue& value);

/// What a cell holds.
std::string jsonHeld(refhost::Context& context, const quillet::RangeSpec& range, int row, int col);

}  // namespace cli::explain
