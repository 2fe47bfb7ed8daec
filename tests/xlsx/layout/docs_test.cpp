// The examples of docs/sheet-features.md, compiled and run, and held against the page.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "engine/api/iautofilter.h"
#include "engine/api/ifiltercolumn.h"
#include "tests/xlsx/sheet/sheet_fixture.h"

namespace vellum::test {
namespace {

// clang-format off
void made(ISheetT<char>* sheet) {
sheet->writeString(0, 0, "Region");
sheet->writeString(0, 1, "Turnover");
sheet->writeString(1, 0, "North and East");
sheet->writeNumber(1, 1, 1234567.5);
sheet->autoFitColumns(0, 0, 1, 1);       // first column and row, last column and row
sheet->setColumn(2, 4, 12.5);            // characters of the default font
sheet->setRow(0, 24);                    // points
sheet->splitAt(1, 0);                    // the first row stays in sight
sheet->groupRowRange(1, 1, false);
sheet->setLandscape(true);
sheet->setPrintFitPages(1, 0);           // one page wide, as many as it takes high
sheet->setHeaderText("&LTurnover&R&P of &N", 0.3);
sheet->setMarginLeft(0.5);               // inches
sheet->setRowBreak(40);                  // a page ends above row 41
sheet->setTabRgbColor(0, 128, 64);
}
void ruled(ISheetT<char>* sheet) {
sheet->setNamedRangeByName("Rates", 1, 5, 0, 2);             // rows 2 to 6, columns A to C, for the whole workbook
sheet->setPrintAreaRange(0, 40, 0, 4);
sheet->setRepeatRows(0, 0);                                  // on each page
sheet->addHyperlink("https://example.org/", 0, 0, 0, 0);
sheet->addHyperlink("S!A1", 1, 1, 0, 0);                     // a place in the workbook
sheet->addValidationRuleNumeric(1, 0, 1, 40, 1, 1, 0, 100);  // whole numbers from 0 to 100 in column B
sheet->setProtected(true, "secret");
}
void filtered(ISheetT<char>* sheet) {
auto* const filter = sheet->filterObject();
filter->setFilterRange(0, 3, 0, 1);                          // with its header
filter->filterColumn(0)->addValueFilter("North");
filter->setSort(1, true);                                    // by the second column, the greatest first
sheet->applyFilter();                                        // hides and sorts rows
}
void changed(ISheetT<char>* sheet, int& first, int& last) {
sheet->addMerge(5, 6, 0, 1);
sheet->insertRows(2, 4);                 // three rows in front of row 3
sheet->removeColumns(3, 3);
int rowFirst = 0, rowLast = 0, colFirst = 0, colLast = 0;
sheet->mergeByIndex(0, &rowFirst, &rowLast, &colFirst, &colLast);    // now rows 8 to 9
first = rowFirst, last = rowLast;
}
// clang-format on

std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path).rdbuf();
    return content.str();
}

std::string between(const std::string& text, const std::string& before, const std::string& after) {
    const auto from = text.find(before) + before.size();
    return text.substr(from, text.find(after, from) - from);
}

TEST(SheetFeatureDocs, ExamplesRunAsTheyArePrinted) {
    const std::string root = QUILLET_SOURCE_DIR, page = contentOf(root + "/docs/sheet-features.md");
    const std::string here = contentOf(root + "/tests/xlsx/layout/docs_test.cpp");
    EXPECT_EQ(between(page, "## Made ready for people\n\n```cpp\n", "```"),
              between(here, "void made(ISheetT<char>* sheet) {\n", "}\n"));
    EXPECT_EQ(between(page, "come and go\n\n```cpp\n", "```"),
              between(here, "int& first, int& last) {\n", "first = rowFirst"));
    EXPECT_EQ(between(page, "## Names, links, rules\n\n```cpp\n", "```"),
              between(here, "void ruled(ISheetT<char>* sheet) {\n", "}\n"));
    EXPECT_EQ(between(page, "## Filters\n\n```cpp\n", "```"),
              between(here, "void filtered(ISheetT<char>* sheet) {\n", "}\n"));
}

TEST(SheetFeatureDocs, ExamplesDoWhatThePageSays) {
    TestSheet sheet("");
    sheet.book.workbook().sheets().sheet().append().name(L"S");
    made(&*sheet);
    EXPECT_EQ(sheet.error(), "ok");
    EXPECT_GT(sheet->columnWidth(0), 12);
    EXPECT_EQ(sheet->rowBreakAt(0), 40);
    int first = 0, last = 0;
    changed(&*sheet, first, last);
    EXPECT_EQ(sheet.error(), "ok");
    EXPECT_EQ(first, 8);
    EXPECT_EQ(last, 9);
    ruled(&*sheet);
    EXPECT_EQ(sheet.error(), "ok");
    EXPECT_EQ(sheet->hyperlinkTotal(), 2);
    EXPECT_TRUE(sheet->isProtected());
    EXPECT_TRUE(sheet->namedRangeByName("rates", &first, &last, nullptr, nullptr, -1, nullptr));

    TestSheet sales("");
    sales.book.workbook().sheets().sheet().append().name(L"S");
    const char* const regions[] = {"Region", "South", "North", "North"};
    for (int row = 0; row < 4; ++row) {
        sales->writeString(row, 0, regions[row], nullptr, 2);
        sales->writeNumber(row, 1, row, nullptr);
    }
    filtered(&*sales);
    EXPECT_EQ(sales.error(), "ok");
    EXPECT_EQ(sales->readNumber(1, 1, nullptr), 3);
    EXPECT_FALSE(sales->isRowHidden(1));
    EXPECT_TRUE(sales->isRowHidden(3));
}

}  // namespace
}  // namespace vellum::test
