// Merges, breaks, views, printing.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/xlsx/sheet/sheet_fixture.h"

namespace vellum::test {
namespace {

/// The element of that name as it is saved; "" when there is none.
template <class Sheet>
std::string element(Sheet& sheet, const std::string& name) {
    const std::string all = sheet.saved();
    const auto from = all.find("<" + name);
    if (from == std::string::npos) return "";
    const auto close = all.find("</" + name + ">", from), end = all.find('>', from);
    return all[end - 1] == '/' ? all.substr(from, end + 1 - from) : all.substr(from, close + name.size() + 3 - from);
}

TEST(Merges, TheListGoesWithItsLastBlock) {
    TestSheet sheet("", -1, -1, "", "<mergeCells><mergeCell ref=\"A1:B2\"/><mergeCell ref=\"B2:C3\"/></mergeCells>");
    int bounds[4];
    EXPECT_TRUE(sheet->mergeAt(1, 1, bounds, bounds + 1, bounds + 2, bounds + 3));
    EXPECT_EQ(bounds[3], 1) << "the first one that holds the cell";
    EXPECT_TRUE(sheet->addMerge(5, 6, 0, 0));
    EXPECT_TRUE(sheet->mergeAt(6, 0, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(element(sheet, "mergeCells"),
              "<mergeCells count=\"3\"><mergeCell ref=\"A1:B2\"/><mergeCell "
              "ref=\"B2:C3\"/><mergeCell ref=\"A6:A7\"/></mergeCells>");
    EXPECT_TRUE(sheet->removeMergeAt(1, 1)) << "both that hold it";
    EXPECT_EQ(sheet->mergeTotal(), 1);
    EXPECT_FALSE(sheet->mergeAt(1, 1, bounds, bounds, bounds, bounds));
    EXPECT_TRUE(sheet->removeMergeByIndex(0));
    EXPECT_EQ(element(sheet, "mergeCells"), "");
}

// The index of the blocks is kept while they go: beside a plain list of them.
TEST(Merges, GoAsFromAPlainList) {
    std::mt19937 random(5);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    TestSheet sheet("");
    std::vector<std::array<int, 4>> blocks;
    for (int i = 0; i < 300; ++i) {
        const int row = below(60), col = below(60);
        blocks.push_back({row, row + below(6), col, col + 1 + below(6)});
        ASSERT_TRUE(sheet->addMerge(blocks.back()[0], blocks.back()[1], blocks.back()[2], blocks.back()[3]));
    }
    for (int step = 0; step < 400; ++step) {
        const int row = below(66), col = below(66);
        const auto holds = [&](const auto& b) { return row >= b[0] && row <= b[1] && col >= b[2] && col <= b[3]; };
        const auto first = std::find_if(blocks.begin(), blocks.end(), holds);
        std::array<int, 4> found{};
        ASSERT_EQ(sheet->mergeAt(row, col, &found[0], &found[1], &found[2], &found[3]), first != blocks.end());
        if (first != blocks.end()) {
            EXPECT_EQ(found, *first);
        }
        if (step % 3 != 0) continue;
        ASSERT_EQ(sheet->removeMergeAt(row, col), std::erase_if(blocks, holds) != 0);
        ASSERT_EQ(sheet->mergeTotal(), static_cast<int>(blocks.size()));
    }
}

TEST(PageBreaks, StandInOrderWithTrueCounts) {
    TestSheet sheet(
        "", -1, -1, "",
        "<rowBreaks count=\"9\"><brk id=\"9\" max=\"65535\"/><brk id=\"4\" max=\"5\" man=\"true\"/></rowBreaks>");
    EXPECT_EQ(sheet->rowBreakAt(0), 9) << "as the file has them";
    EXPECT_TRUE(sheet->setRowBreak(6, true));
    EXPECT_EQ(element(sheet, "rowBreaks"),
              "<rowBreaks count=\"3\" manualBreakCount=\"2\"><brk id=\"4\" max=\"5\" man=\"true\"/><brk id=\"6\" "
              "max=\"16383\" man=\"true\"/><brk id=\"9\" max=\"65535\"/></rowBreaks>");
    for (const int row : {4, 9, 6}) EXPECT_TRUE(sheet->setRowBreak(row, false));
    EXPECT_EQ(element(sheet, "rowBreaks"), "");
    EXPECT_TRUE(sheet->setColumnBreak(3, true));
    EXPECT_EQ(element(sheet, "colBreaks"),
              "<colBreaks count=\"1\" manualBreakCount=\"1\"><brk id=\"3\" max=\"1048575\" man=\"true\"/></colBreaks>");
    TestSheet without("", -1, -1, "", "<colBreaks><brk man=\"true\"/></colBreaks>");
    EXPECT_EQ(without->columnBreakAt(0), -1);
    EXPECT_EQ(without.error(), "c_CT_Break without id");
}

TEST(View, PanesThatExist) {
    const std::string view =
        "<sheetViews><sheetView workbookViewId=\"0\"><selection pane=\"topRight\"/><selection "
        "pane=\"bottomLeft\"/><selection pane=\"bottomRight\"/></sheetView></sheetViews>";
    const struct {
        int row, col;
        const char* inside;
    } cases[] = {
        {2, 3,
         "<pane xSplit=\"3\" ySplit=\"2\" topLeftCell=\"D3\" activePane=\"bottomLeft\" state=\"frozen\"/><selection "
         "pane=\"topRight\"/><selection pane=\"bottomLeft\"/><selection pane=\"bottomRight\"/>"},
        {2, 0,
         "<pane ySplit=\"2\" topLeftCell=\"A3\" activePane=\"bottomLeft\" state=\"frozen\"/><selection "
         "pane=\"bottomLeft\"/>"},
        {0, 3,
         "<pane xSplit=\"3\" topLeftCell=\"D1\" activePane=\"topRight\" state=\"frozen\"/><selection "
         "pane=\"topRight\"/>"},
    };
    for (const auto& c : cases) {
        TestSheet sheet("", -1, -1, view);
        EXPECT_TRUE(sheet->splitAt(c.row, c.col));
        EXPECT_EQ(element(sheet, "sheetViews"),
                  std::string("<sheetViews><sheetView workbookViewId=\"0\">") + c.inside + "</sheetView></sheetViews>");
        int row = -1, col = -1;
        EXPECT_TRUE(sheet->splitPosition(&row, &col));
        EXPECT_EQ(row, c.row);
        EXPECT_EQ(col, c.col);
        EXPECT_TRUE(sheet->splitAt(0, 0));
        EXPECT_FALSE(sheet->splitPosition(&row, &col));
        EXPECT_EQ(sheet.error(), "worksheet is not splitted");
        EXPECT_EQ(element(sheet, "sheetView w"), "<sheetView workbookViewId=\"0\"/>");
    }
}

TEST(View, SettersAndWhatIsSoWithoutThem) {
    TestSheet sheet("");
    int row = -1, col = -1;
    EXPECT_TRUE(sheet->topLeftCell(&row, &col));
    EXPECT_EQ(row + col, 0);
    EXPECT_EQ(sheet->zoomPercent(), 100);
    EXPECT_TRUE(sheet->showsGridlines());
    EXPECT_TRUE(sheet->summaryBelow());
    EXPECT_TRUE(sheet->summaryRight());
    EXPECT_TRUE(sheet->setTopLeftCell(9, 27));
    EXPECT_TRUE(sheet->setZoomPercent(85));
    EXPECT_TRUE(sheet->setShowsGridlines(false));
    EXPECT_TRUE(sheet->setRightToLeft(true));
    EXPECT_TRUE(sheet->isRightToLeft());
    EXPECT_EQ(element(sheet, "sheetView "),
              "<sheetView showGridLines=\"false\" rightToLeft=\"true\" topLeftCell=\"AB10\" "
              "zoomScale=\"85\" zoomScaleNormal=\"85\" workbookViewId=\"0\"/>");
    EXPECT_TRUE(sheet->setTabRgbColor(1, 2, 254));
    EXPECT_EQ(element(sheet, "tabColor"), "<tabColor rgb=\"FF0102FE\"/>");
    EXPECT_TRUE(sheet->setTabPaletteColor(10));
    EXPECT_EQ(element(sheet, "tabColor"), "<tabColor indexed=\"10\"/>");
}

TEST(Printing, ElementsAreCompleteAndKeepTheirOtherAttributes) {
    TestSheet sheet("", -1, -1, "<sheetPr codeName=\"x\"><pageSetUpPr fitToPage=\"1\"/></sheetPr>",
                    "<pageSetup paperSize=\"9\" usePrinterDefaults=\"false\"/>");
    EXPECT_EQ(sheet->marginTop(), 0.75);
    EXPECT_EQ(sheet->footerMargin(), 0.3);
    EXPECT_TRUE(sheet->setMarginLeft(1.5));
    EXPECT_EQ(element(sheet, "pageMargins"),
              "<pageMargins left=\"1.5\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" header=\"0.3\" footer=\"0.3\"/>");
    int width = 0, height = 0;
    EXPECT_TRUE(sheet->printFitPages(&width, &height));
    EXPECT_EQ(width + height, 2);
    EXPECT_TRUE(sheet->setPrintZoomPercent(70));
    EXPECT_FALSE(sheet->printFitPages(&width, &height));
    EXPECT_TRUE(sheet->setPrintFitPages(2, 0));
    EXPECT_TRUE(sheet->printFitPages(&width, &height));
    EXPECT_EQ(height, 0) << "as many as it takes";
    EXPECT_TRUE(sheet->setLandscape(true));
    EXPECT_EQ(element(sheet, "pageSetup"),
              "<pageSetup paperSize=\"9\" scale=\"70\" fitToWidth=\"2\" fitToHeight=\"0\" "
              "orientation=\"landscape\" usePrinterDefaults=\"false\"/>");
    EXPECT_TRUE(sheet->setHeaderText("&L a", 0.4));
    EXPECT_TRUE(sheet->setFooterText("&P", 0.2));
    EXPECT_STREQ(sheet->headerText(), "&L a");
    EXPECT_EQ(sheet->headerMargin(), 0.4);
    EXPECT_TRUE(sheet->setHeaderText("", 0.4));
    EXPECT_EQ(element(sheet, "headerFooter"), "<headerFooter><oddFooter>&amp;P</oddFooter></headerFooter>");
    EXPECT_TRUE(sheet->setFooterText("", 0.4));
    EXPECT_EQ(element(sheet, "headerFooter"), "");
    EXPECT_STREQ(sheet->footerText(), "");
    TestSheet plain("");
    EXPECT_EQ(plain->paperCode(), 0);
    EXPECT_EQ(plain->printZoomPercent(), 100);
    EXPECT_FALSE(plain->isLandscape());
}

const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();

template <class Tag>
class Failures : public testing::Test {
protected:
    using Tested = XMLSheetImplT<char, Tag>;
    struct Case {
        std::function<bool(Tested&)> fails;
        std::string text;
    };

    static void expectEach(std::initializer_list<Case> cases) {
        for (const Case& c : cases) {
            SCOPED_TRACE(c.text);
            TestSheet<Tag> sheet("");
            EXPECT_TRUE(c.fails(*sheet));
            EXPECT_EQ(sheet.error(), c.text);
            EXPECT_EQ(element(sheet, "pageMargins") + element(sheet, "headerFooter") + element(sheet, "cols"), "");
        }
    }

    const std::string row = "row must be in range 0-1048575", col = "col must be in range 0-16383";
    const std::string rows = "rowLast must be greater than or equal to rowFirst";
    const std::string cols = "colLast must be greater than or equal to colFirst";
};
using Dialects = testing::Types<excelNormal_tag, excelStrict_tag>;
TYPED_TEST_SUITE(Failures, Dialects);

TYPED_TEST(Failures, OfRowsColumnsAndBlocks) {
    using Sheet = typename TestFixture::Tested;
    this->expectEach({
        {[](Sheet& s) { return s.columnWidth(16384) == -1.0; }, this->col},
        {[](Sheet& s) { return s.columnWidthPixels(-1) == -1; }, this->col},
        {[](Sheet& s) { return s.rowHeight(1048576) == -1.0; }, this->row},
        {[](Sheet& s) { return s.rowHeightPixels(-1) == -1; }, this->row},
        {[](Sheet& s) { return !s.setColumn(0, 16384, 1, nullptr, false); }, this->col},
        {[](Sheet& s) { return !s.setColumn(2, 1, 1, nullptr, false); }, this->cols},
        {[](Sheet& s) { return !s.setColumn(0, 1, nan, nullptr, false); }, "width must be a finite number"},
        {[](Sheet& s) { return !s.setColumn(0, 1, 1e308, nullptr, false); }, "width must be a finite number"},
        {[](Sheet& s) { return !s.setRow(1048576, 1, nullptr, false); }, this->row},
        {[](Sheet& s) { return !s.setRow(0, inf, nullptr, false); }, "height must be a finite number"},
        {[](Sheet& s) { return !s.setDefaultRowHeightValue(nan); }, "height must be a finite number"},
        {[](Sheet& s) { return !s.setRowHidden(-1, true); }, this->row},
        {[](Sheet& s) { return !s.isRowHidden(2147483647); }, this->row},
        {[](Sheet& s) { return !s.setColumnHidden(2147483647, true); }, this->col},
        {[](Sheet& s) { return !s.isColumnHidden(-1); }, this->col},
        {[](Sheet& s) { return !s.groupRowRange(2, 1, true); }, "must be rowFirst <= rowLast"},
        {[](Sheet& s) { return !s.groupRowRange(0, 1048576, true); }, this->row},
        {[](Sheet& s) { return !s.groupColumnRange(2, 1, true); }, "must be colFirst <= colLast"},
        {[](Sheet& s) { return !s.groupColumnRange(-1, 1, true); }, this->col},
        {[](Sheet& s) { return !s.addMerge(0, 0, 0, 16384); }, "col must be less than 16384"},
        {[](Sheet& s) { return !s.addMerge(0, 1048576, 0, 1); }, this->row},
        {[](Sheet& s) { return !s.addMerge(1, 0, 0, 0); }, this->rows},
        {[](Sheet& s) { return !s.addMerge(0, 0, 1, 0); }, this->cols},
        {[](Sheet& s) { return !s.mergeAt(-1, 2147483647, nullptr, nullptr, nullptr, nullptr); },
         "this cell isn't in merging block"},
        {[](Sheet& s) { return !s.removeMergeAt(0, 0); }, "this cell isn't in merging block"},
        {[](Sheet& s) { return !s.mergeByIndex(0, nullptr, nullptr, nullptr, nullptr); }, "index is out of range"},
        {[](Sheet& s) { return !s.removeMergeByIndex(2147483647); }, "index is out of range"},
        {[](Sheet& s) { return !s.insertRows(5, 4, true); }, this->rows},
        {[](Sheet& s) { return !s.removeRows(0, 1048576, true); }, this->row},
        {[](Sheet& s) { return !s.insertColumns(-1, 4, true); }, this->col},
        {[](Sheet& s) { return !s.removeColumns(5, 4, true); }, this->cols},
    });
}

TYPED_TEST(Failures, OfBreaksViewsAndPages) {
    using Sheet = typename TestFixture::Tested;
    this->expectEach({
        {[](Sheet& s) { return s.rowBreakAt(0) == -1; }, "index is out of range"},
        {[](Sheet& s) { return s.columnBreakAt(-1) == -1; }, "index is out of range"},
        {[](Sheet& s) { return s.setRowBreak(1, true) && !s.setRowBreak(1, true); }, "pagebreak already exists"},
        {[](Sheet& s) { return !s.setRowBreak(2, false); }, "pagebreak not found"},
        {[](Sheet& s) { return !s.setColumnBreak(2, false); }, "pagebreak not found"},
        {[](Sheet& s) { return !s.setRowBreak(1048576, true); }, this->row},
        {[](Sheet& s) { return !s.setColumnBreak(16384, true); }, this->col},
        {[](Sheet& s) { return !s.splitPosition(nullptr, nullptr); }, "worksheet is not splitted"},
        {[](Sheet& s) { return !s.splitAt(-1, 0); }, this->row},
        {[](Sheet& s) { return !s.setTopLeftCell(0, -1); }, this->col},
        {[](Sheet& s) { return !s.setZoomPercent(-1); }, "zoom can't be negative"},
        {[](Sheet& s) { return !s.setTabPaletteColor(-1); }, "color index can't be negative"},
        {[](Sheet& s) { return !s.setTabRgbColor(0, 256, 0); }, "red, green and blue must be in range 0-255"},
        {[](Sheet& s) { return !s.setPaperCode(-1); }, "paper code can't be negative"},
        {[](Sheet& s) { return !s.setPrintZoomPercent(-1); }, "zoom can't be negative"},
        {[](Sheet& s) { return !s.setPrintFitPages(1, -1); }, "number of pages can't be negative"},
        {[](Sheet& s) { return !s.setMarginTop(nan); }, "margin must be a finite number"},
        {[](Sheet& s) { return !s.setHeaderText(nullptr, 0); }, "text is NULL"},
        {[](Sheet& s) { return !s.setFooterText("x", inf); }, "margin must be a finite number"},
    });
}

}  // namespace
}  // namespace vellum::test
