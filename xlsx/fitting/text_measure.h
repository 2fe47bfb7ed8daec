// How wide a text is in the characters of a book's columns.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "xlsx/layout/font_metrics.h"

namespace vellum::xlsx {

/// The font of a text. Without one it is this.
struct MeasuredFont {
    std::wstring name = L"Calibri";
    int size = 11;  // points
    bool bold = false;
    bool operator==(const MeasuredFont&) const = default;
};

/// Measures texts in one font. A typeface without widths of its own, and characters behind the measured ones, go by
/// the number of characters and the font's size.
class TextMeasure {
public:
    TextMeasure(const FontMetrics& metrics, const MeasuredFont& font);

    /// The line with the most characters, and a blank behind it.
    [[nodiscard]] double width(std::wstring_view text) const { return widthOf(text); }
    /// ASCII.
    [[nodiscard]] double width(std::string_view text) const { return widthOf(text); }

private:
    template <class Text>
    [[nodiscard]] double widthOf(Text text) const;

    std::vector<std::uint8_t> _pixels;  // by character; empty for none
    double _digit;                      // pixels
    double _proportional;               // width of any character
};

}  // namespace vellum::xlsx
