// The measures behind all widths and heights of a book.
#pragma once
#include <string>

namespace vellum::xlsx {

/// What a book takes for the size of a digit of its default font, and for the screen's resolution. No font file is
/// looked at: only the size follows the styles.
struct FontMetrics {
    int maxDigitWidth = 7;  // pixels
    int dpiX = 96, dpiY = 96;
    int defaultFontSize = 11;   // points
    int defaultRowPixels = 20;  // of a row that nobody touched
    std::string descentText;    // "x14ac:dyDescent" of each row whose height is set; "" leaves it alone
};

}  // namespace vellum::xlsx
