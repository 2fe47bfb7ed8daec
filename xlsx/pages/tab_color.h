// The colour of a worksheet's tab.
#pragma once
#include "xlsx/features/worksheet.h"

namespace vellum::xlsx {

/// What the colour was before goes, however it was told.
template <class Tag>
void setTabPaletteColor(Worksheet<Tag>& sheet, int index);
/// Parts from 0 to 255; throws for others.
template <class Tag>
void setTabRgbColor(Worksheet<Tag>& sheet, int red, int green, int blue);

}  // namespace vellum::xlsx
