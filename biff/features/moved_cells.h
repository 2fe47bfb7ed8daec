// The cells of a sheet while rows or columns are inserted or removed.
#pragma once
#include "biff/cells/moved_lines.h"

namespace vellum {
class CellStore;
class SharedTokens;
class StringPool;
}  // namespace vellum

namespace vellum::biff {

/// Throws when an array or a data table would be cut; nothing has changed then.
void checkArraysStayWhole(const CellStore& cells, const MovedLines& moved);

/// To be called when the cells that leave the sheet have been erased, and before the others move. References in
/// formulas keep meaning the cells that they meant, so a formula that moves gets tokens of its own, and one behind
/// which shared tokens stand hands them on to those that stay. Arrays and tables take their range along.
void prepareFormulas(CellStore& cells, SharedTokens& shared, StringPool& pool, const MovedLines& moved);

/// Gives each cell its new place.
void moveCells(CellStore& cells, const MovedLines& moved);

}  // namespace vellum::biff
