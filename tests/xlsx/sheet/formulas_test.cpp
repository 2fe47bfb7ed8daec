// Formulas: plain, array, shared.
#include <gtest/gtest.h>

#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/cells/shifted_formula.h"

namespace vellum::test {
namespace {

TEST(ShiftedFormula, MovesWhatIsRelative) {
    const struct {
        const wchar_t* text;
        const wchar_t* result;  // one down, two to the right
    } cases[] = {
        {L"A1+B2", L"C2+D3"},
        {L"$A1+A$1+$A$1", L"$A2+C$1+$A$1"},
        {L"SUM(A1:B2)", L"SUM(C2:D3)"},
        {L"LOG10(A1)", L"LOG10(C2)"},
        {L"\"A1\"&A1", L"\"A1\"&C2"},
        {L"'A1'!B2", L"'C2'!D3"},
        {L"sheet1!a1", L"sheet1!a1"},
        {L"SHEET1!A1", L"SHEET1!C2"},
        {L"A:A+1:1", L"A:A+1:1"},
        {L"$A+$1+A1B2", L"$A+$1+A1B2"},
        {L"XFD1048576", L"B1"},
        {L"XFE1+A1048577", L"XFE1+A1048577"},
        {L"", L""},
    };
    for (const auto& c : cases) EXPECT_EQ(translateFormula(c.text, 1, 2), c.result);
    EXPECT_EQ(translateFormula(L"A1", -1, -1), L"XFD1048576");
}

TEST(SheetFormulas, TextIsStoredWithCommasAndWithoutTheSign) {
    const struct {
        const char* text;
        const char* cell;  // behind the reference
    } cases[] = {
        {"=SUM(A1;A2)", "><f>SUM(A1,A2)</f></c>"},
        {"A1&\"x\"", "><f>A1&amp;&quot;x&quot;</f></c>"},
        {"{=A1:A3*2}", "><f t=\"array\" ref=\"B2\">A1:A3*2</f></c>"},
        {"=", "/>"},
    };
    for (const auto& c : cases) {
        TestSheet sheet("");
        EXPECT_TRUE(sheet->writeFormula(1, 1, c.text, nullptr));
        EXPECT_EQ(sheet.savedRows(), std::string("<row r=\"2\"><c r=\"B2\"") + c.cell + "</row>");
    }
}

TEST(SheetFormulas, ReadersSeeTheirSeparatorAndNoPrefix) {
    TestSheet sheet("<row r='1'><c r='A1'><f>_xlfn.CONCAT(A2,_xlfn.X(B2))</f></c><c r='B1'><v>1</v></c></row>");
    EXPECT_EQ(sheet.formula(0, 0), "CONCAT(A2,X(B2))");
    sheet.book.separator = L';';
    EXPECT_EQ(sheet.formula(0, 0), "CONCAT(A2;X(B2))");
    EXPECT_EQ(sheet.formula(0, 1), "! this cell doesn't contain a formula");
}

TEST(SheetFormulas, R1C1CountsFromTheCell) {
    TestSheet sheet("");
    sheet.book.r1c1 = true;
    EXPECT_TRUE(sheet->writeFormula(1, 1, "=SUM(R1C1:R[-1]C, RC[1]; 'R1C1 x'!R1C1)&\"RC\"", nullptr));
    EXPECT_FALSE(sheet->writeFormula(1, 1, "R0C1", nullptr));
    EXPECT_EQ(sheet.error(), "row must be in range 0-1048575");
    EXPECT_EQ(sheet.formula(1, 1), "SUM($A$1:B1,RC[1],'R1C1 x'!$A$1)&\"RC\"");
    sheet.book.r1c1 = false;
    EXPECT_EQ(sheet.formula(1, 1), "SUM($A$1:B1,C2,'R1C1 x'!$A$1)&\"RC\"");
}

TEST(SheetFormulas, CachedResultsAreCells) {
    TestSheet sheet("");
    EXPECT_TRUE(sheet->writeFormulaNumber(0, 0, "1/4", 0.25, nullptr));
    EXPECT_TRUE(sheet->writeFormulaText(0, 1, "B2", "a\x01", nullptr));
    EXPECT_TRUE(sheet->writeFormulaBoolean(0, 2, "TRUE()", true, nullptr));
    EXPECT_EQ(sheet->readNumber(0, 0, nullptr), 0.25);
    EXPECT_EQ(sheet.string(0, 1), "a_x0001_");
    EXPECT_TRUE(sheet->readBool(0, 2, nullptr));
    EXPECT_EQ(sheet.formula(0, 2), "TRUE()");
}

constexpr const char* group =
    "<row r='1'><c r='B1'><f t='shared' ref='B1:B3' si='4'>A1*2</f><v>1</v></c></row>"
    "<row r='2'><c r='B2'><f t='shared' si='4'/><v>2</v></c></row>"
    "<row r='3'><c r='B3'><f t='shared' si='4'/><v>3</v></c></row>";

TEST(SharedFormulas, MembersReadAsTheyStand) {
    TestSheet sheet(group);
    EXPECT_EQ(sheet.formula(2, 1), "A3*2");
    EXPECT_EQ(sheet.formula(0, 1), "A1*2");
}

TEST(SharedFormulas, AnOverwrittenMasterHandsOver) {
    TestSheet sheet(group);
    EXPECT_EQ(sheet.formula(1, 1), "A2*2");
    EXPECT_TRUE(sheet->writeNumber(0, 1, 7, nullptr));
    EXPECT_EQ(sheet.formula(1, 1), "A2*2");
    EXPECT_EQ(sheet.formula(2, 1), "A3*2");
    EXPECT_NE(sheet.savedRows().find("<f t=\"shared\" ref=\"B1:B3\" si=\"4\">A2*2</f>"), std::string::npos);
    EXPECT_TRUE(sheet->writeNumber(1, 1, 7, nullptr));
    EXPECT_TRUE(sheet->writeNumber(2, 1, 7, nullptr));  // the last of the group goes with it
    EXPECT_EQ(sheet.savedRows().find("<f"), std::string::npos);
}

TEST(SharedFormulas, GroupsOfOneNumberKeepApart) {
    TestSheet sheet(
        "<row r='1'><c r='A1'><f t='shared' ref='A1:A2' si='0'>X1</f></c><c r='B1'><f t='shared' ref='B1' "
        "si='0'>Y1</f></c>"
        "</row><row r='2'><c r='A2'><f t='shared' si='0'/></c></row>");
    EXPECT_EQ(sheet.formula(1, 0), "X2");
    EXPECT_TRUE(sheet->writeNumber(0, 1, 1, nullptr));  // the second group goes
    EXPECT_EQ(sheet.formula(1, 0), "X2");
    EXPECT_TRUE(sheet->writeNumber(0, 0, 1, nullptr));
    EXPECT_EQ(sheet.formula(1, 0), "X2");
    EXPECT_TRUE(sheet->writeNumber(1, 0, 1, nullptr));
    EXPECT_EQ(sheet.formula(1, 0), "! this cell doesn't contain a formula");
}

TEST(SharedFormulas, AFormulaOnTheMasterDissolvesTheGroup) {
    TestSheet sheet(group);
    EXPECT_TRUE(sheet->writeFormula(0, 1, "=C1", nullptr));
    EXPECT_EQ(sheet.formula(0, 1), "C1");
    EXPECT_EQ(sheet.formula(2, 1), "A3*2");
    EXPECT_EQ(sheet.savedRows().find("shared"), std::string::npos);
}

TEST(SharedFormulas, CopiesArePlain) {
    TestSheet sheet(group);
    EXPECT_TRUE(sheet->copyCell(1, 1, 4, 2));
    EXPECT_TRUE(sheet->copyCell(0, 1, 5, 2));
    EXPECT_EQ(sheet.formula(4, 2), "B5*2");
    EXPECT_EQ(sheet.formula(5, 2), "B6*2");
    EXPECT_EQ(sheet->readNumber(4, 2, nullptr), 2);
    EXPECT_NE(sheet.savedRows().find("<c r=\"C5\"><f>B5*2</f><v>2</v></c>"), std::string::npos);
    EXPECT_TRUE(sheet->copyCell(9, 9, 4, 2));  // from nothing
    EXPECT_EQ(sheet->cellType(4, 2), 0);
}

}  // namespace
}  // namespace vellum::test
