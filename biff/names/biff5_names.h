// Names of books from before BIFF8.
#pragma once
#include <cstddef>

#include "biff/names/defined_names.h"

namespace vellum::biff {

/// Brings their expressions into the newer form. A name whose expression has none keeps its text, for the formulas
/// that use it, and stands for "#REF!".
void convertBiff5Names(DefinedNames& names, std::size_t sheetCount);

}  // namespace vellum::biff
