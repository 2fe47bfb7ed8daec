// The words for what sheets have beside their cells.
#include "cli/workbook/info_features.h"

#include <gtest/gtest.h>

#include <memory>

#include "engine/api/ibook.h"
#include "engine/factories/factories.h"

namespace {

struct Release {
    void operator()(vellum::IBookT<char>* book) const { book->release(); }
};

TEST(InfoFeatures, OnlyWhatIsThere) {
    const std::unique_ptr<vellum::IBookT<char>, Release> book(vellum::vlCreateXMLBook<char>());
    auto* const sheet = book->addSheet("S");
    EXPECT_EQ(cli::featureNotes(*sheet), "");
    sheet->splitAt(1, 2);
    sheet->setRowBreak(5);
    sheet->setColumnBreak(3);
    sheet->addMerge(3, 4, 0, 1);
    sheet->writeNumber(9, 0, 1);
    sheet->setRowHidden(2, true);
    sheet->setColumn(4, 6, 10, nullptr, true);
    EXPECT_EQ(cli::featureNotes(*sheet), "panes at C2; 2 page breaks; 1 merge; 1 hidden row; 3 hidden columns");
    sheet->setPrintAreaRange(0, 8, 0, 2);
    sheet->setRepeatRows(0, 1);
    sheet->setRepeatColumns(0, 27);
    sheet->setProtected(true);
    sheet->addHyperlink("http://x/", 0, 0, 0, 0);
    sheet->addValidationRuleNumeric(1, 0, 0, 3, 0, 0, 1, 9);
    sheet->groupRowRange(6, 7, false);
    sheet->groupColumnRange(7, 9, false);
    sheet->groupColumnRange(8, 8, false);
    EXPECT_EQ(
        cli::featureNotes(*sheet),
        "panes at C2; protected; print area A1:C9; repeats rows 1:2; repeats columns A:AB; 2 page breaks; 1 merge; "
        "1 link; 1 validation rule; 1 hidden row; 3 hidden columns; 1 level of rows; 2 levels of columns");
}

TEST(InfoFeatures, BinarySheetsTellTheirLevels) {
    const std::unique_ptr<vellum::IBookT<char>, Release> book(vellum::vlCreateBook<char>());
    auto* const sheet = book->addSheet("S");
    sheet->groupRowRange(6, 7, false);
    sheet->groupRowRange(6, 6, false);
    sheet->groupColumnRange(7, 9, false);
    EXPECT_EQ(cli::featureNotes(*sheet), "2 levels of rows; 1 level of columns");
}

}  // namespace
