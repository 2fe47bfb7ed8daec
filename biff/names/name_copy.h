// The names of a sheet for a copy of it.
#pragma once
#include <string_view>

#include "biff/names/defined_names.h"

namespace vellum {
class StringPool;
namespace formula {
class FormulaContext;
}
}  // namespace vellum

namespace vellum::biff {

/// Throws when names of that sheet could not be copied: there are too many, or the bytes of one are no tokens; then
/// the text says what its formula text fails with. To be asked before the copy is put in place.
void checkCopy(const DefinedNames& names, int source, const formula::FormulaContext& book);

/// In the same book, in which both sheets have their places. What refers to the source alone refers to the copy.
void copyNames(DefinedNames& names, int source, int target, formula::FormulaContext& book);

/// From another book: names that are a cell or an area of the source sheet.
void adoptNames(DefinedNames& names, StringPool& pool, int target, const DefinedNames& from, int source);

}  // namespace vellum::biff
