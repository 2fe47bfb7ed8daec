// The `ref` of a filter, a sort or a table.
#pragma once
#include <optional>
#include <string_view>

#include "engine/facts/cell_address.h"

namespace vellum::xlsx {

/// The block that a `ref` names, its corners as they stand. Nothing for a text that is none.
std::optional<CellRange> findFilterRef(std::string_view ref);
/// Throws for a text that is none.
CellRange readFilterRef(std::string_view ref);

}  // namespace vellum::xlsx
