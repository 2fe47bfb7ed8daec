#include "engine/facts/text_width.h"

#include <gtest/gtest.h>

namespace vellum {
namespace {

TEST(TextWidth, PixelsAndCharactersOfColumns) {
    const struct {
        double chars;
        int pixels;
    } cases[] = {{0, 0}, {0.5, 6}, {1, 12}, {2, 19}, {8.43, 64}, {255, 1790}};
    for (const auto& c : cases) EXPECT_EQ(columnPixels(c.chars), c.pixels) << c.chars;
    EXPECT_DOUBLE_EQ(columnChars(64), 8.43);
    EXPECT_DOUBLE_EQ(columnChars(6), 0.5);
    EXPECT_DOUBLE_EQ(columnChars(0), 0);
    EXPECT_EQ(defaultColumnPixels(8), 64);
}

TEST(TextWidth, LinesAndFonts) {
    EXPECT_EQ(textWidthChars(L"", {}), -1.0);
    const double digits = textWidthChars(L"0000000000", {L"Arial", 10, false});
    EXPECT_DOUBLE_EQ(digits, 10.5);
    EXPECT_DOUBLE_EQ(textWidthChars(L"0\n000\n00", {L"Calibri", 11, false}), 3.5) << "the widest line counts";
    EXPECT_LT(textWidthChars(L"iiiii", {L"Arial", 10, false}), textWidthChars(L"mmmmm", {L"Arial", 10, false}));
    EXPECT_EQ(textWidthChars(L"\xC4gypt", {L"ARIAL", 10, false}), textWidthChars(L"Agypt", {L"Arial", 10, false}));
    // Fonts, sizes and characters without widths: one digit each.
    EXPECT_DOUBLE_EQ(textWidthChars(L"iiiii", {L"Courier", 10, false}), 5.5);
    EXPECT_DOUBLE_EQ(textWidthChars(L"iiiii", {L"Arial", 73, false}), 5.5);
    EXPECT_DOUBLE_EQ(textWidthChars(L"ii\x4E2D", {L"Arial", 10, false}), 3.5);
}

TEST(TextWidth, NumbersByTheirFormat) {
    const struct {
        double value;
        std::uint16_t ifmt;
        const char* text;
    } cases[] = {{1234.5, 0, "1234.5"}, {1234.5, 4, "1234.50"},  {0.5, 10, "50.00%"},
                 {0.5, 9, "00%"},       {0.001, 11, "1.00E-03"}, {40000, 14, "00/00/0000"},
                 {0.5, 20, "00:00"},    {1e300, 2, nullptr},     {40000.5, 22, "00/00/0000 00:00"},
                 {7, 200, "7"}};
    for (const auto& c : cases) {
        const std::string text = widestNumberText(c.value, c.ifmt);
        if (c.text != nullptr)
            EXPECT_EQ(text, c.text) << c.ifmt;
        else
            EXPECT_EQ(text.size(), 304U);
    }
}

}  // namespace
}  // namespace vellum
