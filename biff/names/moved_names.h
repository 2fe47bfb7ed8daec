// Names whose cells move when rows are inserted or removed.
#pragma once
#include "biff/names/defined_names.h"

namespace vellum::biff {

/// Moves the rows of names that are a cell or an area of `sheet` alone: those from `firstRow` on move by `count`,
/// down for an insertion and up when `count` is negative. An area of whole columns stays, rows of other areas end at
/// the sheet's edges, and a name whose one cell leaves the sheet is removed.
void moveNames(DefinedNames& names, int sheet, int firstRow, int count);

}  // namespace vellum::biff
