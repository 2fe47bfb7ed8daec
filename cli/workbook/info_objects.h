#pragma once

#include <string>
#include <vector>

#include "engine/api/ibook.h"
#include "engine/api/isheet.h"

namespace cli {

/// Pictures of a book of one format, or its previews.
struct PictureSum {
    std::string format;
    int count = 0;
    std::size_t bytes = 0;
    bool preview = false;
};
/// By format, previews last.
std::vector<PictureSum> pictureSums(vellum::IBookT<char>& book);

struct ObjectCounts {
    int pictures = 0, comments = 0, controls = 0, charts = 0, others = 0;
};
ObjectCounts objectCounts(vellum::ISheetT<char>& sheet);

/// "3 png (19935 bytes), 1 jpeg (5012 bytes); preview: 1 emf (1204 bytes)"; "" for a book without pictures.
std::string pictureSummary(vellum::IBookT<char>& book);

/// "2 pictures, 1 comment, 3 controls, 1 chart, 4 other shapes", of what there is; "" for nothing.
std::string objectSummary(vellum::ISheetT<char>& sheet);

}  // namespace cli
