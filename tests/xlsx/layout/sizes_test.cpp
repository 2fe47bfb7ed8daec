// Widths and heights.
#include <gtest/gtest.h>

#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/layout/column_width.h"
#include "xlsx/styles/format.h"

namespace vellum::test {
namespace {

TEST(ColumnWidths, PixelsCharactersAndWhatIsStored) {
    const xlsx::FontMetrics metrics;
    const struct {
        double chars, stored;
        int pixels;
        double readBack;
    } cases[] = {{0, 0, 0, 0},
                 {0.25, 0.42578125, 3, 0.25},
                 {0.5, 0.85546875, 6, 0.5},
                 {1, 1.7109375, 12, 1},
                 {2, 2.7109375, 19, 2},
                 {8.43, 9.140625, 64, 8.43},
                 {10, 10.7109375, 75, 10},
                 {100, 100.7109375, 705, 100},
                 {255, 255.7109375, 1790, 255}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.chars);
        EXPECT_EQ(xlsx::storedWidthOfChars(c.chars, metrics), c.stored);
        EXPECT_EQ(xlsx::pixelsOfStoredWidth(c.stored, metrics), c.pixels);
        EXPECT_DOUBLE_EQ(xlsx::charsOfPixels(c.pixels, metrics), c.readBack);
    }
    // Widths of other producers.
    const struct {
        double stored;
        int pixels;
        double chars;
    } others[] = {{9, 63, 8.29}, {12, 84, 11.29}, {13, 91, 12.29}, {11.42578125, 80, 10.71}, {0.71, 5, 0.42}};
    for (const auto& c : others) {
        EXPECT_EQ(xlsx::pixelsOfStoredWidth(c.stored, metrics), c.pixels);
        EXPECT_DOUBLE_EQ(xlsx::charsOfPixels(c.pixels, metrics), c.chars);
    }
    EXPECT_EQ(xlsx::columnPadding(12), 8);
    EXPECT_EQ(xlsx::columnPadding(13), 16);
    EXPECT_EQ(xlsx::columnPadding(30), 24);
    EXPECT_EQ(xlsx::pixelsOfStoredWidth(1e300, metrics), 2147483647) << "foreign numbers";
}

TEST(ColumnWidths, OfColumnsWithoutAnElement) {
    const struct {
        const char* before;
        int pixels;
        double chars;
    } cases[] = {{"", 64, 8.43},
                 {"<sheetFormatPr defaultRowHeight=\"15\"/>", 64, 8.43},
                 {"<sheetFormatPr baseColWidth=\"10\" defaultRowHeight=\"15\"/>", 78, 10.43},
                 {"<sheetFormatPr baseColWidth=\"10\" defaultColWidth=\"12\" defaultRowHeight=\"15\"/>", 84, 11.29},
                 {"<cols><col min=\"2\" max=\"3\" style=\"0\"/></cols>", 64, 8.43}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.before);
        TestSheet sheet("", -1, -1, c.before);
        EXPECT_EQ(sheet->columnWidthPixels(1), c.pixels);
        EXPECT_DOUBLE_EQ(sheet->columnWidth(1), c.chars);
    }
}

// Producers that store heights at the screen's resolution say so in the first attribute that the schema does not know.
TEST(RowHeights, FollowTheResolutionOfTheirProducer) {
    const char* const x14ac =
        " xmlns:x14ac=\"http://schemas.microsoft.com/office/spreadsheetml/2009/9/ac\""
        " xmlns:y=\"urn:y\"";
    const struct {
        const char* unknown;
        double points, defaultPoints;
        int pixels;
    } cases[] = {
        {"", 20, 40, 20},
        {" x14ac:dyDescent=\"0.3\"", 15, 30, 15},
        {" y:z=\"1\" x14ac:dyDescent=\"0.3\"", 20, 40, 20},
        {" x14ac:dyDescent=\"0.3\" y:z=\"1\"", 15, 30, 15},
        {" y:z=\"1\"", 20, 40, 20},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.unknown);
        const std::string declared = std::string(x14ac) + c.unknown;
        TestSheet sheet("<row r=\"1\" ht=\"15\"" + declared + "/>", -1, -1,
                        "<sheetFormatPr defaultRowHeight=\"30\"" + declared + "/>");
        EXPECT_EQ(sheet->rowHeight(0), 15);
        EXPECT_EQ(sheet->rowHeightPixels(0), 20);
        sheet.book.metrics.dpiY = 72;
        EXPECT_EQ(sheet->rowHeight(0), c.points);
        EXPECT_EQ(sheet->rowHeight(1), c.defaultPoints);
        EXPECT_EQ(sheet->defaultRowHeightValue(), c.defaultPoints);
        EXPECT_EQ(sheet->rowHeightPixels(0), c.pixels);
        EXPECT_NE(sheet.savedRows().find(c.unknown), std::string::npos) << "and are written as they came";
    }
    TestSheet untouched("");
    EXPECT_EQ(untouched->rowHeight(7), 15);
    EXPECT_EQ(untouched->rowHeightPixels(7), 20);
    EXPECT_EQ(untouched->defaultRowHeightValue(), 15);
    EXPECT_TRUE(untouched->setDefaultRowHeightValue(18));
    EXPECT_EQ(untouched->rowHeightPixels(7), 24);
    EXPECT_NE(untouched.saved().find("<sheetFormatPr defaultRowHeight=\"18\" customHeight=\"true\"/>"),
              std::string::npos);
}

TEST(RowHeights, SettingARowKeepsWhatItDoesNotName) {
    TestSheet sheet(
        "<row r=\"2\" spans=\"1:2\" ht=\"20\" hidden=\"true\" outlineLevel=\"2\"><c r=\"A2\" s=\"0\"/></row>");
    auto* const format = sheet.book.ensureStyles().newFormat(nullptr);
    EXPECT_TRUE(sheet->setRow(1, 0, format, true));
    EXPECT_TRUE(sheet->isRowHidden(1));
    EXPECT_EQ(sheet->rowHeight(1), 20);
    EXPECT_TRUE(sheet->setRow(1, 30.5, nullptr, false));
    EXPECT_EQ(sheet.savedRows(),
              "<row r=\"2\" spans=\"1:2\" s=\"1\" customFormat=\"true\" ht=\"30.5\" customHeight=\"true\" "
              "outlineLevel=\"2\"><c r=\"A2\" s=\"0\"/></row>");
    EXPECT_TRUE(sheet->setRowHidden(0, true));
    EXPECT_FALSE(sheet->isRowHidden(1));
    EXPECT_TRUE(sheet->isRowHidden(0));
    sheet.book.metrics.descentText = "0.25";
    EXPECT_TRUE(sheet->setRow(0, 12, nullptr, false));
    EXPECT_NE(sheet.savedRows().find("x14ac:dyDescent=\"0.25\""), std::string::npos);
}

}  // namespace
}  // namespace vellum::test
