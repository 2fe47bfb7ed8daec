// Samples of what cells show, and columns that fit them.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "engine/facts/face_widths.h"
#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/fitting/number_sample.h"
#include "xlsx/fitting/text_measure.h"
#include "xlsx/layout/column_width.h"
#include "xlsx/styles/font.h"
#include "xlsx/styles/format.h"

namespace vellum::test {
namespace {

TEST(Samples, OfBuiltInFormats) {
    const double v = 1234567.891;
    const struct {
        unsigned id;
        double value;
        const char* text;
    } cases[] = {
        {0, v, "1234567.891"},
        {0, 1e20, "1e+20"},
        {1, v, "1234567"},
        {1, -0.9, "0"},
        {1, 1e300, "9223372036854775807"},
        {1, std::nan(""), "0"},
        {2, v, "1234567.89"},
        {3, v, "1234567  "},
        {3, 12, "12"},
        {4, v, "1234567.89  "},
        {4, 12.5, "12.50"},
        {4, 123.5, "123.50 "},
        {5, v, "1234567         "},
        {6, 1, "1       "},
        {7, v, "1234567.89         "},
        {8, 1, "1.00       "},
        {9, 0.5, "000%"},
        {10, 0.125, "12.50%"},
        {11, v, "1.23E+06"},
        {12, 2.5, "2 0/0"},
        {13, 2.5, "2 00/00"},
        {14, v, "00/00/0000"},
        {15, v, "00/mmm/00"},
        {16, v, "00/mmm"},
        {17, v, "mmm/00"},
        {18, v, "00:00 AM"},
        {19, v, "00:00:00 AM"},
        {20, v, "00:00"},
        {21, v, "00:00:00"},
        {22, v, "00/00/0000 00:00"},
        {23, 1.5, "1.5"},
        {37, v, "1234567     "},
        {38, 1, "1   "},
        {39, v, "1234567.89     "},
        {40, 1, "1.00   "},
        {41, v, "1234567           "},
        {42, 1, "1         "},
        {43, v, "1234567.89           "},
        {44, 1, "1.00         "},
        {45, v, "00:00"},
        {46, v, "0000000:00:00"},
        {47, v, "00:00,0"},
        {48, v, "00,0E+0"},
        {49, v, "1234567.891"},
    };
    for (const auto& c : cases) {
        std::string text;
        xlsx::appendBuiltInSample(text, c.id, c.value);
        EXPECT_EQ(text, c.text) << c.id << " of " << c.value;
    }
}

TEST(Samples, OfCustomFormats) {
    const struct {
        const wchar_t* format;
        bool isDate;
        double value;
        const wchar_t* text;
    } cases[] = {
        {L"#,##0.00", false, 1234567.5, L"1234567  .00"},
        {L"0000", false, 12, L"0012"},
        {L"0.000%", false, 0.5, L"0.00000%"},
        {L"0\\x\"kg\"", false, 7, L"7xkg"},
        {L"[Red]0 [$EUR]", false, 7, L"7 "},
        {L"_-* 0_-;-0.0;\"none\"", false, 5, L" 5 "},
        {L"_-* 0_-;-0.0;\"none\"", false, -5, L"--5.0"},
        {L"_-* 0_-;-0.0;\"none\"", false, 0, L"none"},
        {L"0;\";\"0", false, -3, L";-3"},
        {L"General\" kg\"", false, 3, L"General kg"},
        {L"dd/mm/yyyy", true, 3, L"00/00/0000"},
        {L"dddd, d. mmmm yy", true, 3, L"Wednesday, 0. September 00"},
        {L"ddd mmm h:mm;@", true, 3, L"000 000 0:00"},
        {L"[$-409]d\"of\"mmm", true, 3, L"0of000"},
        {L"\"open", false, 3, L"open"},
        {L"[open", false, 3, L""},
        {L"0\\", false, 3, L"3"},
        {L"0_", false, 3, L"3 "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(xlsx::customSample(c.format, c.isDate, c.value), c.text)
            << std::string(c.format, c.format + wcslen(c.format));
    }
}

// Widths of one line of text as they were measured in the typefaces themselves, pixels at 96 dpi.
TEST(TextMeasure, KnownFacesAndTheRest) {
    const xlsx::FontMetrics metrics;
    const auto pixels = [&](const wchar_t* text, const xlsx::MeasuredFont& font) {
        return xlsx::TextMeasure(metrics, font).width(std::wstring_view(text)) * metrics.maxDigitWidth;
    };
    EXPECT_DOUBLE_EQ(pixels(L"0000000000", {}), 7 * 10 + 3) << "and a blank";
    EXPECT_DOUBLE_EQ(pixels(L"0000000000", {L"arial", 10, false}), 7 * 10 + 4);
    EXPECT_GT(pixels(L"Total", {L"Calibri", 11, true}), pixels(L"Total", {}));
    EXPECT_DOUBLE_EQ(pixels(L"iii\nmm", {}), pixels(L"iii", {})) << "the line with the most characters";
    EXPECT_DOUBLE_EQ(pixels(L"ab\ncd\nef", {}), pixels(L"ab", {}));
    EXPECT_DOUBLE_EQ(pixels(L"e\u0301", {}), pixels(L"e", {})) << "marks stand over their letter";
    // By the number of characters: another typeface, a size without a table, a character behind the tables.
    EXPECT_DOUBLE_EQ(pixels(L"abc", {L"Courier", 11, false}) / 7, 4);
    EXPECT_DOUBLE_EQ(pixels(L"abc", {L"Courier", 22, false}) / 7, ((22 - 11) * 0.5 + 22) / 11 * 4);
    EXPECT_DOUBLE_EQ(pixels(L"abc", {L"Calibri", 73, false}) / 7, ((73 - 11) * 0.5 + 73) / 11 * 4);
    EXPECT_DOUBLE_EQ(pixels(L"ab\u4E2D", {}) / 7, 4);
    xlsx::FontMetrics unknown;
    unknown.defaultFontSize = 0;
    EXPECT_DOUBLE_EQ(xlsx::TextMeasure(unknown, {L"X", 3, false}).width(std::string_view("a")),
                     ((3 - 1) * 0.5 + 3) * 2);
}

TEST(Fitting, MeasuresWhatCellsShow) {
    TestSheet sheet(
        "<row r=\"1\"><c r=\"A1\" t=\"str\"><v>a longer text</v></c><c r=\"B1\"><f>A1</f></c><c r=\"C1\" "
        "t=\"b\"><v>1</v></c><c r=\"D1\" t=\"e\"><v>#VALUE!</v></c><c r=\"E1\" t=\"inlineStr\"><is><r><t>in"
        "</t></r><r><t>line</t></r></is></c><c r=\"F1\" s=\"0\"/></row><row r=\"3\"><c r=\"A3\"><v>12</v></c>"
        "</row>",
        -1, -1, "", "<mergeCells><mergeCell ref=\"A1:B1\"/></mergeCells>");
    const auto fitted = [&](const char* text) {
        const double chars = xlsx::TextMeasure(sheet.book.metrics, {}).width(std::string_view(text));
        return xlsx::pixelsOfStoredWidth(xlsx::storedWidthOfChars(chars, sheet.book.metrics), sheet.book.metrics);
    };
    EXPECT_TRUE(sheet->autoFitColumns(-5, -5, 100, 5000));
    EXPECT_EQ(sheet->columnWidthPixels(0), fitted("12")) << "merged cells are passed over";
    EXPECT_EQ(sheet->columnWidthPixels(1), 64) << "no cached value";
    EXPECT_EQ(sheet->columnWidthPixels(2), fitted("TRUE"));
    EXPECT_EQ(sheet->columnWidthPixels(3), fitted("#VALUE!"));
    EXPECT_EQ(sheet->columnWidthPixels(4), fitted("inline"));
    EXPECT_EQ(sheet->columnWidthPixels(5), 64) << "blank";
    EXPECT_TRUE(sheet->removeMergeByIndex(0));
    EXPECT_TRUE(sheet->setColumnHidden(0, true));
    EXPECT_TRUE(sheet->autoFitColumns(0, 2, 5, 2));
    EXPECT_EQ(sheet->columnWidthPixels(0), fitted("12")) << "only the rows asked for";
    EXPECT_TRUE(sheet->isColumnHidden(0));
    EXPECT_TRUE(sheet->setColumn(0, 1, -1, nullptr, false));
    EXPECT_EQ(sheet->columnWidthPixels(0), fitted("a longer text"));
    EXPECT_FALSE(sheet->isColumnHidden(0));
    EXPECT_TRUE(sheet->setColumn(5, 9, -1, nullptr, true));
    EXPECT_FALSE(sheet->isColumnHidden(5)) << "nothing measured leaves a column alone";
}

// The rule again, character by character.
TEST(Fitting, RandomColumnsAgainstASecondReading) {
    std::mt19937 random(11);
    const auto pick = [&](unsigned below) { return static_cast<unsigned>(random() % below); };
    const wchar_t* const faces[] = {L"Calibri", L"Arial", L"Other"};
    for (int round = 0; round < 60; ++round) {
        TestSheet sheet("");
        auto& styles = sheet.book.ensureStyles();
        double widest = -1;
        for (int row = 0; row < 6; ++row) {
            auto* const format = styles.newFormat(nullptr);
            auto* const font = styles.newFont(nullptr);
            const auto face = pick(3);
            const int size = 8 + static_cast<int>(pick(12));
            const bool bold = pick(2) != 0;
            const std::wstring name = faces[face];
            font->setName(std::string(name.begin(), name.end()).c_str());
            font->setSize(size);
            font->setBold(bold);
            format->setFont(font);
            std::string text;
            for (unsigned i = 0, n = 1 + pick(20); i < n; ++i) text += static_cast<char>(' ' + pick(95));
            ASSERT_TRUE(sheet->writeString(row, 3, text.c_str(), format, 2));
            double width = 0;
            const FaceWidths* const known = findFaceWidths(name, bold);
            for (const char c : text + " ") {
                width +=
                    known ? known->pixels(static_cast<unsigned char>(c), size) / 7.0 : ((size - 11) * 0.5 + size) / 11;
            }
            widest = std::max(widest, width);
        }
        ASSERT_TRUE(sheet->autoFitColumns(3, 0, 3, 10));
        const double stored = sheet->root().cols()[0].col()[0].width();
        ASSERT_NEAR(stored, xlsx::storedWidthOfChars(widest, sheet.book.metrics), 1.0 / 256 + 1e-9);
    }
}

}  // namespace
}  // namespace vellum::test
