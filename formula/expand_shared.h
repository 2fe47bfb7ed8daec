// Tokens that cells share, as the tokens of one of these cells.
#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "formula/cell_location.h"
#include "formula/formula_context.h"

namespace vellum::formula {

/// The tokens of a shared formula with every relative cell and area counted from `base`, so that they read the same by
/// themselves. Nothing for a stream that is no whole tokens.
std::optional<std::vector<std::byte>> expandShared(std::span<const std::byte> rgce, LocationBase base,
                                                   Generation generation);

}  // namespace vellum::formula
