// What a token stream refers to, for those who ask on what a formula depends.
#pragma once
#include <cstddef>
#include <span>
#include <string>

#include "formula/cell_location.h"
#include "formula/formula_context.h"

namespace vellum::formula {

/// The references of a stream and the names of its functions, each with a blank behind it: `A1 Sheet2!B1:B9 Prices
/// SUM() `. A ":" for an area whose corners are calculated, "?" where the stream is no tokens. Told by the published
/// widths of tokens, it knows of references in streams that have no text: arrays, unions, choices.
std::wstring referenceWords(std::span<const std::byte> rgce, const FormulaContext& book, Generation generation,
                            LocationBase base);

}  // namespace vellum::formula
