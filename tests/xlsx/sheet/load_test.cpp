// Rows and cells as producers write them, row limits, copies, what saving puts right.
#include <gtest/gtest.h>

#include "tests/xlsx/sheet/sheet_fixture.h"

namespace vellum::test {
namespace {

/// "row,col=value" of every cell that the walk finds.
std::string walk(TestSheet<>& sheet) {
    std::string text;
    for (int row = 0, col = 0; sheet->cellFrom(&row, &col); ++col) {
        text += std::to_string(row) + ',' + std::to_string(col) + '=' +
                std::to_string(static_cast<int>(sheet->readNumber(row, col, nullptr))) + ' ';
    }
    return text;
}

TEST(SheetLoad, FindsCellsThatDoNotSayWhereTheyStand) {
    const struct {
        const char* rows;
        const char* cells;
        const char* numbered;  // after a write at A9
    } cases[] = {
        {"<row><c><v>1</v></c><c><v>2</v></c></row><row><c><v>3</v></c></row>", "0,0=1 0,1=2 1,0=3 ",
         "0,0=1 0,1=2 1,0=3 8,0=9 "},
        {"<row r='1'><c r='A1'><v>1</v></c></row><row><c r='B2'><v>2</v></c></row><row r='3'><c "
         "r='C3'><v>3</v></c></row>",
         "0,0=1 1,1=2 2,2=3 ", "0,0=1 1,1=2 2,2=3 8,0=9 "},
        {"<row r='5'><c r='C5'><v>1</v></c><c><v>2</v></c></row><row><c><v>3</v></c></row>", "4,2=1 4,3=2 5,0=3 ",
         "4,2=1 4,3=2 5,0=3 8,0=9 "},
        {"<row r='0'><c r='B2'><v>1</v></c><c r='A1'><v>2</v></c></row><row r='4'><c r='A4'><v>3</v></c></row>",
         "0,0=2 1,1=1 3,0=3 ", "0,0=2 1,1=1 3,0=3 8,0=9 "},
        {"<row r='3'><c r='B3'><v>1</v></c><c r='A3'><v>2</v></c></row><row r='1'><c r='A1'><v>3</v></c></row>"
         "<row r='3'><c r='C3'><v>4</v></c></row>",
         "0,0=3 2,0=2 2,1=1 2,2=4 ", "0,0=3 2,0=2 2,1=1 2,2=4 8,0=9 "},
        // One without a number comes to stand where the next one says that it stands.
        {"<row r='1'><c r='A1'><v>1</v></c></row><row><c><v>2</v></c></row><row r='2'><c r='B2'><v>3</v></c></row>",
         "0,0=1 1,0=2 1,1=3 ", "0,0=1 1,0=2 1,1=3 8,0=9 "},
        {"<row r='4294967295'><c><v>1</v></c></row><row><c><v>2</v></c></row>", "", "8,0=9 "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rows);
        TestSheet sheet(c.rows);
        EXPECT_EQ(walk(sheet), c.cells);
        EXPECT_TRUE(sheet->writeNumber(8, 0, 9, nullptr));
        EXPECT_EQ(walk(sheet), c.numbered);
    }
}

TEST(SheetLoad, NumbersOnlyWhatASheetHasRoomFor) {
    std::string cells = "<c r='B7'><v>1</v></c>";  // stands in the first row all the same
    for (int i = 2; i < 16400; ++i) cells += "<c><v>1</v></c>";
    TestSheet sheet("<row>" + cells + "</row>");
    EXPECT_EQ(sheet.areas(), "0 1 1 16384 0 1 1 16384 ");
    EXPECT_TRUE(sheet->writeNumber(0, 0, 2, nullptr));
    const std::string rows = sheet.savedRows();
    EXPECT_EQ(rows.substr(0, 66), "<row r=\"1\"><c r=\"A1\"><v>2</v></c><c r=\"B1\"><v>1</v></c><c r=\"C1\"><");
    EXPECT_EQ(rows.substr(rows.rfind("<c ")), "<c r=\"XFD1\"><v>1</v></c></row>");
}

TEST(SheetLoad, KeepsOnlyTheRowsThatAreWanted) {
    std::string numbered, plain;
    for (int i = 1; i <= 30; ++i) {
        const std::string value = "<v>" + std::to_string(i) + "</v></c></row>";
        numbered += "<row r='" + std::to_string(i) + "'><c r='A" + std::to_string(i) + "'>" + value;
        plain += "<row><c>" + value;
    }
    for (const std::string& rows : {numbered, plain}) {
        TestSheet sheet(rows, 10, 20);
        EXPECT_EQ(sheet.areas(), "10 21 0 1 10 21 0 1 ");
        EXPECT_EQ(sheet->readNumber(10, 0, nullptr), 11);
        EXPECT_EQ(sheet->readNumber(20, 0, nullptr), 21);
        EXPECT_EQ(sheet->cellType(9, 0), 0);
        EXPECT_EQ(sheet->cellType(21, 0), 0);
    }
}

TEST(SheetLoad, SpansAndDimensionFollowTheWrites) {
    const std::string dimension = "<dimension ref='A1:B1'/>";
    const std::string row = "<row r='1' spans='1:2 5:6'><c r='A1'><v>1</v></c></row>";
    TestSheet unchanged(row, -1, -1, dimension);
    EXPECT_NE(unchanged.saved().find("<dimension ref=\"A1:B1\"/>"), std::string::npos);
    TestSheet sheet(row, -1, -1, dimension);
    sheet->writeNumber(0, 4, 1, nullptr);
    EXPECT_NE(sheet.savedRows().find("spans=\"1:2 5:6\""), std::string::npos);
    sheet->writeNumber(0, 3, 1, nullptr);
    EXPECT_EQ(sheet.savedRows().find("spans"), std::string::npos);
    EXPECT_NE(sheet.saved().find("<dimension ref=\"A1:E1\"/>"), std::string::npos);
}

TEST(SheetLoad, HasAViewAndTheNamespacesOfRows) {
    TestSheet sheet("<row r='1' ht='15'/>");
    const std::string saved = sheet.saved();
    EXPECT_NE(saved.find("<sheetViews><sheetView workbookViewId=\"0\"/></sheetViews>"), std::string::npos);
    EXPECT_NE(saved.find("mc:Ignorable=\"x14ac\""), std::string::npos);
}

TEST(SheetLoad, ACopyIsDeepAndNamesNoOtherPart) {
    TestSheet sheet(
        "<row r='1'><c r='A1'><v>1</v></c></row>", -1, -1,
        "<sheetViews><sheetView tabSelected='1' workbookViewId='0'/></sheetViews>",
        "<drawing xmlns:r='http://schemas.openxmlformats.org/officeDocument/2006/relationships' r:id='rId1'/>"
        "<mc:AlternateContent xmlns:mc='http://schemas.openxmlformats.org/markup-compatibility/2006'>"
        "<mc:Choice Requires='x14'><controls/></mc:Choice></mc:AlternateContent>"
        "<tableParts count='0'/>");
    XMLSheetImplT<char, excelNormal_tag> copy(*sheet);
    copy.bind(sheet.book, 1);
    copy.takeOutLinkedParts();
    copy.clearTabSelected();
    EXPECT_TRUE(copy.writeNumber(0, 0, 2, nullptr));
    EXPECT_EQ(sheet->readNumber(0, 0, nullptr), 1);
    EXPECT_EQ(copy.readNumber(0, 0, nullptr), 2);
    const std::string text = TestSheet<>::savedOf(copy), original = sheet.saved();
    for (const char* const part : {"<drawing", "controls", "tableParts", "tabSelected"}) {
        EXPECT_EQ(text.find(part), std::string::npos) << part;
        EXPECT_NE(original.find(part), std::string::npos) << part;
    }
}

}  // namespace
}  // namespace vellum::test
