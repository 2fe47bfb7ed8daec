// What neither engine models: parts of packages, streams of compound files.
#pragma once
#include <string>

#include "cli/diff/difference.h"
#include "engine/api/ibook.h"

namespace cli {

/// Parts that the books keep as bytes, in packages compared byte by byte; in compound files by their names and sizes,
/// and then by the bytes of the streams.
void addKeptDifferences(const std::string& firstPath, vellum::IBookT<char>& first, const std::string& secondPath,
                        vellum::IBookT<char>& second, Differences& out);

}  // namespace cli
