// What differs beside the cells.
#pragma once
#include <string>

#include "cli/diff/difference.h"
#include "engine/api/ibook.h"
#include "engine/api/isheet.h"

namespace cli {

/// Defined names that were added, removed or changed, settings of the workbook, and its pictures.
void addNameDifferences(vellum::IBookT<char>& first, vellum::IBookT<char>& second, Differences& out);

/// Features, comments, pictures, controls and shapes of two sheets.
void addFeatureDifferences(vellum::IBookT<char>& firstBook, vellum::ISheetT<char>& first,
                           vellum::IBookT<char>& secondBook, vellum::ISheetT<char>& second, const std::string& name,
                           Differences& out);

}  // namespace cli
