// How wide texts and columns are: the measure behind column widths and automatic fitting.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace vellum {

/// Width of a digit in the default font, pixels at 96 dpi. Fixed: no font file is looked at.
inline constexpr int digitPixels = 7;

/// What is left free beside the characters of a column, pixels.
[[nodiscard]] constexpr int columnPadding(int digit = digitPixels) {
    return digit < 13 ? 8 : (digit - 13) / 16 * 8 + 16;
}
/// Pixels of a column that is `chars` digits wide.
[[nodiscard]] int columnPixels(double chars);
/// Width in digits, to 1/100, of a column of that many pixels.
[[nodiscard]] double columnChars(int pixels);
/// Pixels of a column that has only the sheet's `DefColWidth`.
[[nodiscard]] constexpr int defaultColumnPixels(int defColWidth) {
    return columnPadding() + digitPixels * defColWidth;
}

/// The font that a text is measured in.
struct MeasuredFont {
    std::wstring_view name = L"Calibri";
    int size = 11;  // points
    bool bold = false;
};

/// Width of the text's widest line in digits of its font, with half a digit of air. An empty text
/// gives -1.0. Calibri and Arial of 1 to 72 points have their own widths for code points below
/// 1536; in any other case every character counts as one digit of the default font.
[[nodiscard]] double textWidthChars(std::wstring_view text, const MeasuredFont& font);

/// The widest text that a number can have under a built-in number format; ids without a rule of
/// their own show it as "general" does.
[[nodiscard]] std::string widestNumberText(double value, std::uint16_t ifmt);

}  // namespace vellum
