// Workbooks that differ.
#pragma once
#include "cli/diff/cell_reader.h"
#include "cli/diff/difference.h"

namespace cli {

struct DiffOptions {
    std::string first, second, label;
    bool json = false;
    bool values = false;  // kinds and values of cells only
    bool all = false;     // looks of cells and what neither engine models, too
};

/// All that differs between two loaded workbooks.
Differences bookDifferences(vellum::IBookT<char>& first, vellum::IBookT<char>& second, Aspects aspects);

/// Cells of two areas that differ.
Differences areaDifferences(vellum::IBookT<char>& first, const SheetArea& firstArea, vellum::IBookT<char>& second,
                            const SheetArea& secondArea, Aspects aspects);

}  // namespace cli
