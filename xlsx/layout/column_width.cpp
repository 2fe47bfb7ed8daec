#include "xlsx/layout/column_width.h"

#include <cmath>

#include "xlsx/layout/pixels.h"

namespace vellum::xlsx {

int columnPadding(int maxDigitWidth) {
    return maxDigitWidth < 13 ? 8 : (maxDigitWidth - 13) / 16 * 8 + 16;
}

int pixelsOfStoredWidth(double width, const FontMetrics& metrics) {
    const int digit = metrics.maxDigitWidth;
    const int rounding = 128 / digit;
    return wholeNumber(std::floor((256 * width + rounding) / 256 * digit));
}

int pixelsOfBaseWidth(unsigned baseColWidth, const FontMetrics& metrics) {
    const int digit = metrics.maxDigitWidth;
    return wholeNumber(columnPadding(digit) + static_cast<double>(baseColWidth) * digit);
}

double charsOfPixels(int pixels, const FontMetrics& metrics) {
    const int digit = metrics.maxDigitWidth, padding = columnPadding(digit);
    const int oneChar = padding + digit - 3;
    const double p = pixels;
    const double chars = pixels >= oneChar ? (p - padding + 3) / digit : p / oneChar;
    return std::floor(chars * 100 + 0.5) / 100;
}

double storedWidthOfChars(double chars, const FontMetrics& metrics) {
    const int digit = metrics.maxDigitWidth, padding = columnPadding(digit);
    const double pixels = chars >= 1 ? padding + chars * digit - 3 : (padding + digit - 3) * chars;
    return std::floor(pixels / digit * 256) / 256;
}

}  // namespace vellum::xlsx
