// The sheet in its workbook.
#include <gtest/gtest.h>

#include "engine/facts/cell_address.h"
#include "tests/xlsx/sheet/sheet_fixture.h"

namespace vellum::test {
namespace {

TEST(SheetNames, RangesOfThisSheetAreFound) {
    TestSheet sheet("");
    auto& workbook = sheet.book.workbook();
    EXPECT_EQ(sheet->sheetName(), nullptr);
    EXPECT_EQ(sheet.error(), "sheet doen't have relationship with book");
    workbook.sheets().sheet().append().name(L"My 'one', two");
    workbook.sheets().sheet().append().name(L"Other");
    EXPECT_STREQ(sheet->sheetName(), "My 'one', two");
    workbook.sheets().sheet()[0].state("veryHidden");
    EXPECT_EQ(sheet->visibilityState(), 2);

    const struct {
        const wchar_t* text;
        int local;           // -1: of the workbook
        const char* bounds;  // or the failure
    } names[] = {
        {L"'My ''one'', two'!$B$2:$D$4", -1, "1 3 1 3 -1"},
        {L"'My ''one'', two'!$B$2", 0, "1 1 1 1 0"},
        {L"'my ''ONE'', two'!$C:$C", -1, "0 1048575 2 2 -1"},
        {L"'My ''one'', two'!$3:$4", -1, "2 3 0 16383 -1"},
        {L"Other!$A$1", -1, "! named range is not found"},
        {L"'My ''one'', two'!$A$1,'My ''one'', two'!$C$1", -1, "0 0 0 0 -1"},
        {L"SUM(A1)", -1, "! named range is not found"},
        {L"#REF!", -1, "! named range is not found"},
    };
    auto& list = workbook.definedNames().definedName();
    auto& elsewhere = list.append();
    elsewhere.name(L"elsewhere");
    elsewhere.text(L"Other!$A$1");
    elsewhere.localSheetId(1);
    for (const auto& name : names) {
        auto& element = list.append();
        element.name(L"name");
        element.text(name.text);
        if (name.local >= 0) element.localSheetId(static_cast<unsigned>(name.local));
    }
    ASSERT_EQ(sheet->namedRangeCount(), static_cast<int>(std::size(names)));
    for (int i = 0; i < sheet->namedRangeCount(); ++i) {
        SCOPED_TRACE(i);
        int bounds[5];
        std::string result;
        if (sheet->namedRange(i, bounds, bounds + 1, bounds + 2, bounds + 3, bounds + 4, nullptr)) {
            for (const int n : bounds) result.append(result.empty() ? "" : " ").append(std::to_string(n));
        } else {
            result.append("! ").append(sheet.error());
        }
        EXPECT_EQ(result, names[i].bounds);
    }
    EXPECT_EQ(sheet->namedRange(8, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), nullptr);
    EXPECT_EQ(sheet.error(), "index is out of range");
}

TEST(CellAddresses, OnlyThoseOfASheet) {
    for (const wchar_t* const bad : {L"", L"A", L"1", L"A0", L"A01B", L"a1", L"XFE1", L"A1048577", L"$$A1", L"A1$",
                                     L"A99999999999999999999", L"AAAAAAAAAAAAAAA1"}) {
        EXPECT_FALSE(readCellAddress(bad)) << bad;
    }
    const auto last = readCellAddress(L"$XFD$1048576");
    ASSERT_TRUE(last);
    EXPECT_EQ(last->row, sheetRows - 1);
    EXPECT_EQ(last->col, sheetColumns - 1);
    for (const char* const text : {"A1", "Z9", "AA10", "ZZ100", "AAA1000", "B2:C3"}) {
        EXPECT_EQ(cellRangeText(*readCellRange(std::string_view(text))), text);
    }
    // Where the number of letters changes.
    for (const auto& [col, text] : {std::pair{25U, "Z1"}, {26U, "AA1"}, {701U, "ZZ1"}, {702U, "AAA1"}}) {
        EXPECT_EQ(cellAddressText(0, col), text);
        EXPECT_EQ(readCellRange(std::string_view(text))->colFirst, col);
    }
    EXPECT_FALSE(readCellRange(std::string_view("A1:B")));
    EXPECT_FALSE(readCellRange(std::string_view("A:1")));
}

}  // namespace
}  // namespace vellum::test
