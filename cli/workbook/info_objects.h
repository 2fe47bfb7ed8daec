#pragma once

#include <string>

#include "engine/api/ibook.h"
#include "engine/api/isheet.h"

namespace cli {

/// "3 png (19935 bytes), 1 jpeg (5012 bytes); preview: 1 emf (1204 bytes)"; "" for a book without pictures.
std::string pictureSummary(vellum::IBookT<char>& book);

/// "2 pictures, 1 comment, 3 controls, 1 chart, 4 other shapes", of what there is; "" for nothing.
std::string objectSummary(vellum::ISheetT<char>& sheet);

}  // namespace cli
