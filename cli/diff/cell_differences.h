// Cells of two sheets that differ.
#pragma once
#include "cli/diff/difference.h"
#include "cli/diff/moved_formula.h"

namespace cli {

/// Two sheets that belong together.
struct SheetPair {
    CellReader& firstReader;
    vellum::ISheetT<char>& first;
    CellReader& secondReader;
    vellum::ISheetT<char>& second;
    std::string name;  // in the second file
};

/// The rows and columns that were inserted and removed, and the cells that differ, by runs of the same kind: cells one
/// below the other, or side by side.
void addCellDifferences(SheetPair& pair, const SheetAlignment& alignment, const AlignmentOf& alignmentOf,
                        Differences& out);

}  // namespace cli
