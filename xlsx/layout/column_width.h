// Widths of columns: stored, in pixels, in characters.
#pragma once
#include "xlsx/layout/font_metrics.h"

namespace vellum::xlsx {

/// Pixels that are left free beside the characters of a column.
[[nodiscard]] int columnPadding(int maxDigitWidth);
/// Pixels of a column whose `col` element has this `width`.
[[nodiscard]] int pixelsOfStoredWidth(double width, const FontMetrics& metrics);
/// Pixels of a column in a sheet that only says how many characters its columns have.
[[nodiscard]] int pixelsOfBaseWidth(unsigned baseColWidth, const FontMetrics& metrics);
/// Characters that fit into a column of that many pixels, to 1/100.
[[nodiscard]] double charsOfPixels(int pixels, const FontMetrics& metrics);
/// The `width` to store for a column of that many characters, to 1/256.
[[nodiscard]] double storedWidthOfChars(double chars, const FontMetrics& metrics);

}  // namespace vellum::xlsx
