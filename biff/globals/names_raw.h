// Defined names as far as moving sheets concerns them.
#pragma once
#include <span>
#include <vector>

#include "biff/records/raw_records.h"

namespace vellum {

/// Brings the owner of each sheet's own names up to date: `newIndex[i]` is the new index of sheet i, or -1 when it is
/// removed, and then its names go too.
void renumberNames(std::vector<RawRecords>& names, std::span<const int> newIndex);

}  // namespace vellum
