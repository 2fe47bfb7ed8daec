// Names as rows and columns move and sheets get other names.
#include <gtest/gtest.h>

#include <random>

#include "engine/facts/sheet_names.h"
#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/features/moved_range.h"
#include "xlsx/features/name_text.h"

namespace vellum::test {
namespace {

using xlsx::CellMove;

TEST(MovedRanges, GrowShrinkAndGo) {
    const CellMove insert{true, true, 4, 6}, remove{false, true, 4, 6};
    const CellMove insertColumns{true, false, 1, 1}, removeColumns{false, false, 1, 2};
    const struct {
        const char* ref;
        CellMove move;
        const char* moved;  // "" for one that is gone
    } cases[] = {
        {"B2:C4", insert, "B2:C4"},
        {"B5", insert, "B8"},
        {"B4:B5", insert, "B4:B8"},
        {"A1:A1048576", insert, "A1:A1048576"},
        {"A1048575", insert, ""},
        {"A1048570:A1048575", insert, "A1048573:A1048576"},
        {"B5:B7", remove, ""},
        {"B4:B7", remove, "B4"},
        {"B5:B8", remove, "B5"},
        {"B1:B20", remove, "B1:B17"},
        {"B8:B9", remove, "B5:B6"},
        {"A1:C1", insertColumns, "A1:D1"},
        {"XFD1", insertColumns, ""},
        {"B1:C9", removeColumns, ""},
        {"A1:D2", removeColumns, "A1:B2"},
        {"no range", remove, "no range"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(xlsx::movedRef(c.ref, c.move).value_or(""), c.moved) << c.ref << ' ' << c.move.isInsert;
    }
}

TEST(MovedNames, EachPieceOfTheSheetFollows) {
    const CellMove insert{true, true, 4, 5}, remove{false, true, 4, 5}, columns{false, false, 0, 0};
    const struct {
        const wchar_t* text;
        CellMove move;
        const wchar_t* moved;
    } cases[] = {
        {L"'A, ''b''!'!$A$5", insert, L"'A, ''b''!'!$A$7"},
        {L"'a, ''B''!'!A$5:$C9", insert, L"'a, ''B''!'!A$7:$C11"},
        {L"Other!$A$5,'A, ''b''!'!$A$5", insert, L"Other!$A$5,'A, ''b''!'!$A$7"},
        {L"$A$5", insert, L"$A$5"},  // names no sheet
        {L"'A, ''b''!'!$A$5:$A$6,'A, ''b''!'!$B$9", remove, L"'A, ''b''!'!$B$7"},
        {L"'A, ''b''!'!$A$5", remove, L""},
        {L"'A, ''b''!'!$C:$D", remove, L"'A, ''b''!'!$C:$D"},
        {L"'A, ''b''!'!$1:$65536", remove, L"'A, ''b''!'!$1:$65536"},
        {L"'A, ''b''!'!$A$1:$B$1048576", remove, L"'A, ''b''!'!$A$1:$B$1048576"},
        {L"'A, ''b''!'!$A$2:$B$1048576", remove, L"'A, ''b''!'!$A$2:$B$1048574"},
        {L"'A, ''b''!'!$C:$D,'A, ''b''!'!$5:$9", columns, L"'A, ''b''!'!$B:$C,'A, ''b''!'!$5:$9"},
        {L"'A, ''b''!'!$A:$IV", columns, L"'A, ''b''!'!$A:$IV"},
        {L"SUM('A, ''b''!'!$A$5)", remove, L"SUM('A, ''b''!'!$A$5)"},
        {L"#REF!", remove, L"#REF!"},
        {L"'[1]A, ''b''!'!$A$5", remove, L"'[1]A, ''b''!'!$A$5"},
        {L"\"text\"", remove, L"\"text\""},
        {L"", remove, L""},
        {L",Other!$A$5,,", remove, L",Other!$A$5,,"},
    };
    for (const auto& c : cases) EXPECT_EQ(xlsx::movedAreas(c.text, L"A, 'b'!", c.move), c.moved) << c.text;
}

/// Random moves of random names, each cell of which is told apart by its number.
TEST(MovedNames, KeepTheCellsThatTheyHad) {
    std::mt19937 random(20260);
    const auto below = [&](std::uint32_t n) { return static_cast<std::uint32_t>(random() % n); };
    for (int round = 0; round < 2000; ++round) {
        const std::uint32_t first = below(30), last = first + below(10);
        const CellMove move{below(2) == 0, below(2) == 0, first, last};
        std::uint32_t a = below(40), b = a + below(12);
        const CellRange range = move.isRow ? CellRange{a, b, 3, 5} : CellRange{3, 5, a, b};
        const std::wstring text = xlsx::absoluteArea(L"S", range);
        std::optional<CellRange> expected;
        for (std::uint32_t at = a; at <= b; ++at) {
            if (!move.isInsert && at >= first && at <= last) continue;
            const std::uint32_t count = last - first + 1;
            const std::uint32_t to = at < first ? at : move.isInsert ? at + count : at - count;
            if (!expected) expected = range, (move.isRow ? expected->rowFirst : expected->colFirst) = to;
            (move.isRow ? expected->rowLast : expected->colLast) = to;
        }
        const std::wstring moved = xlsx::movedAreas(text, L"s", move);
        const auto read = moved.empty() ? std::nullopt : xlsx::rangeOnSheet(moved, L"S");
        EXPECT_EQ(read, expected) << round;
    }
}

TEST(RenamedSheets, InAllForms) {
    const struct {
        const wchar_t *text, *renamed;
    } cases[] = {
        {L"Sales!A1+sales!B2", L"'New one'!A1+'New one'!B2"},
        {L"'Sales'!$A$1", L"'New one'!$A$1"},
        {L"Sales:Other!A1", L"'New one:Other'!A1"},
        {L"Other:SALES!A1", L"'Other:New one'!A1"},
        {L"'Other:Sales'!A1", L"'Other:New one'!A1"},
        {L"A1:Sales!B2", L"A1:'New one'!B2"},
        {L"Sales!A1:Sales!B2", L"'New one'!A1:'New one'!B2"},
        {L"[1]Sales!A1+'[1]Sales'!A1+\"Sales!A1\"+XSales!A1", L"[1]Sales!A1+'[1]Sales'!A1+\"Sales!A1\"+XSales!A1"},
        {L"Sales", L"Sales"},
        {L"'Sales", L"'Sales"},
        {L"'Sales'", L"'Sales'"},
    };
    for (const auto& c : cases) EXPECT_EQ(withSheetRenamed(c.text, L"Sales", L"New one"), c.renamed) << c.text;
}

template <class Tag>
class NamesOfSheets : public testing::Test {
protected:
    NamesOfSheets() : _sheet("") {
        for (const wchar_t* const name : {L"One", L"It's, a \"test\"!", L"FY24"}) {
            _sheet.book.workbook().sheets().sheet().append().name(name);
        }
    }
    std::string textOf(std::size_t name) {
        const std::wstring& text = _sheet.book.workbook().definedNames().definedName()[name].text();
        return {text.begin(), text.end()};
    }
    std::size_t count() {
        const auto* const names = _sheet.book.workbook().find_definedNames();
        return names ? names->definedName().size() : 0;
    }
    std::string found(const char* name, int scope) {
        int at[4];
        bool hidden = false;
        if (!_sheet->namedRangeByName(name, at, at + 1, at + 2, at + 3, scope, &hidden)) return "! " + _sheet.error();
        std::string text;
        for (const int n : at) text += std::to_string(n) + ' ';
        return text + (hidden ? "hidden" : "shown");
    }
    TestSheet<Tag> _sheet;
};
using Dialects = testing::Types<excelNormal_tag, excelStrict_tag>;
TYPED_TEST_SUITE(NamesOfSheets, Dialects);

TYPED_TEST(NamesOfSheets, OfEachScope) {
    auto& sheet = this->_sheet;
    EXPECT_TRUE(sheet->setNamedRangeByName("Sales", 1, 3, 2, 4, -1, false));
    EXPECT_TRUE(sheet->setNamedRangeByName("sales", 7, 7, 7, 7, -2, true));
    EXPECT_TRUE(sheet->setNamedRangeByName("SALES", 9, 9, 0, 0, 2, false));
    EXPECT_EQ(this->textOf(0), "One!$C$2:$E$4");
    EXPECT_EQ(this->textOf(1), "One!$H$8");
    EXPECT_EQ(this->found("sAlEs", -1), "1 3 2 4 shown");
    EXPECT_EQ(this->found("sales", 0), "7 7 7 7 hidden");
    EXPECT_EQ(this->found("sales", 1), "! named range is not found");
    EXPECT_EQ(this->found("sales", -2), "1 3 2 4 shown");
    EXPECT_EQ(sheet->namedRangeCount(), 2);
    EXPECT_TRUE(sheet->setNamedRangeByName("SALES", 0, 0, 0, 0, -1, false));  // in place of the one in other case
    EXPECT_EQ(this->count(), 3u);
    EXPECT_EQ(this->textOf(0), "One!$A$1");

    EXPECT_FALSE(sheet->setNamedRangeByName("a b", 0, 0, 0, 0, -1, false));
    EXPECT_EQ(sheet.error(), "space symbol isn't allowed");
    for (const int scope : {3, -3, 2147483647}) {
        EXPECT_FALSE(sheet->setNamedRangeByName("x", 0, 0, 0, 0, scope, false));
        EXPECT_EQ(sheet.error(), "index is out of range");
    }
    EXPECT_TRUE(sheet->removeNamedRange("Sales", -2));  // its own first
    EXPECT_EQ(this->found("Sales", 0), "! named range is not found");
    EXPECT_TRUE(sheet->removeNamedRange("Sales", -2));
    EXPECT_FALSE(sheet->removeNamedRange("Sales", -2));
    EXPECT_EQ(sheet.error(), "named range not found");
    EXPECT_TRUE(sheet->removeNamedRange("Sales", 2));
    EXPECT_FALSE(sheet.book.workbook().isset_definedNames());
}

TYPED_TEST(NamesOfSheets, OfPrinting) {
    auto& sheet = this->_sheet;
    sheet->bind(sheet.book, 1);
    int at[4];
    EXPECT_FALSE(sheet->printAreaRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(sheet.error(), "not found");
    EXPECT_TRUE(sheet->setPrintAreaRange(0, 9, 1, 2));
    EXPECT_EQ(this->textOf(0), "'It''s, a \"test\"!'!$B$1:$C$10");
    EXPECT_TRUE(sheet->printAreaRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(at[1], 9);

    EXPECT_TRUE(sheet->setRepeatRows(1, 2));
    EXPECT_FALSE(sheet->repeatColumns(at, at + 1));
    EXPECT_EQ(sheet.error(), "print repeat columns are not found");
    EXPECT_TRUE(sheet->setRepeatColumns(0, 1));
    EXPECT_EQ(this->textOf(1), "'It''s, a \"test\"!'!$A:$B,'It''s, a \"test\"!'!$2:$3");
    EXPECT_TRUE(sheet->repeatRows(at, at + 1));
    EXPECT_EQ(at[0] * 10 + at[1], 12);
    EXPECT_TRUE(sheet->repeatColumns(at, at + 1));
    EXPECT_EQ(at[0] * 10 + at[1], 1);

    auto& names = sheet.book.workbook().definedNames().definedName();
    names[1].text(L"'It''s, a \"test\"!'!$4:$4,'It''s, a \"test\"!'!$A$1:$B$2");  // rows first, and no columns at all
    EXPECT_FALSE(sheet->repeatColumns(at, at + 1));
    EXPECT_TRUE(sheet->setRepeatColumns(3, 3));
    EXPECT_EQ(this->textOf(1), "'It''s, a \"test\"!'!$D:$D,'It''s, a \"test\"!'!$4:$4,'It''s, a \"test\"!'!$A$1:$B$2");
    names[0].text(L"'It''s, a \"test\"!'!$A$1,'It''s, a \"test\"!'!$C$1");
    EXPECT_TRUE(sheet->printAreaRange(at, at + 1, at + 2, at + 3));
    EXPECT_EQ(sheet.error(), "warning: some parts were skipped");
    EXPECT_TRUE(sheet->clearRepeats() && sheet->clearRepeats());
    EXPECT_FALSE(sheet->repeatRows(at, at + 1));
    EXPECT_EQ(sheet.error(), "not found");
    EXPECT_TRUE(sheet->clearPrintAreaRange() && sheet->clearPrintAreaRange());
    EXPECT_EQ(this->count(), 0u);
}

TYPED_TEST(NamesOfSheets, FollowTheSheetsName) {
    auto& sheet = this->_sheet;
    for (const char* const name :
         {"Plain", "two words", "it's", "a,b", "x!y", "(z)", "A1", "FY24b", "R1C1", "9lives", "\xC3\xA9t\xC3\xA9"}) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(sheet->setNamedRangeByName("kept", 2, 3, 4, 5, -1, false)) << sheet.error();
        EXPECT_TRUE(sheet->setPrintAreaRange(1, 1, 1, 1));
        ASSERT_TRUE(sheet->setSheetName(name)) << sheet.error();
        EXPECT_STREQ(sheet->sheetName(), name);
        EXPECT_EQ(this->found("kept", -1), "2 3 4 5 shown");
        sheet.book.names().move(sheet.book.workbook().sheets().sheet()[0].name(), {true, true, 0, 0});
        EXPECT_EQ(this->found("kept", -1), "3 4 4 5 shown");
        int row;
        EXPECT_TRUE(sheet->printAreaRange(&row, nullptr, nullptr, nullptr));
        EXPECT_EQ(row, 2);
    }
    EXPECT_TRUE(sheet->setSheetName("\xC3\x89T\xC3\xA9"));  // the same but for case is no clash with itself
    const struct {
        const char *name, *text;
    } refused[] = {{"fy24", "book already contains such sheet name"},
                   {"", "sheet name can't be empty"},
                   {"'x", "sheet name has an invalid character"},
                   {"a/b", "sheet name has an invalid character"},
                   {nullptr, "sheet name can't be 0"}};
    for (const auto& c : refused) {
        EXPECT_FALSE(sheet->setSheetName(c.name));
        EXPECT_EQ(sheet.error(), c.text);
    }
    EXPECT_TRUE(sheet->setSheetName("12345678901234567890123456789012"));
    EXPECT_EQ(sheet.error(), "warning: sheet's name is cut to 31 characters");
    EXPECT_STREQ(sheet->sheetName(), "1234567890123456789012345678901");
}

TYPED_TEST(NamesOfSheets, HideAndShow) {
    auto& sheet = this->_sheet;
    auto& sheets = sheet.book.workbook().sheets().sheet();
    sheets[1].state("hidden");
    EXPECT_TRUE(sheet->setVisibilityState(2));
    EXPECT_EQ(sheet->visibilityState(), 2);
    EXPECT_EQ(sheet.book.active, 2);  // the only one that is left
    sheet->bind(sheet.book, 2);
    EXPECT_FALSE(sheet->setVisibilityState(1));
    EXPECT_EQ(sheet.error(), "a workbook must contain at least one visible worksheet");
    for (const int state : {3, -1, 2147483647}) {
        EXPECT_FALSE(sheet->setVisibilityState(state));
        EXPECT_EQ(sheet.error(), "hidden is out of range");
    }
    sheet->bind(sheet.book, 3);
    EXPECT_FALSE(sheet->setVisibilityState(0));
    EXPECT_EQ(sheet.error(), "index is out of range");
    EXPECT_EQ(sheet->sheetName(), nullptr);
    EXPECT_FALSE(sheet->setSheetName("x"));
    EXPECT_EQ(sheet.error(), "sheet doen't have relationship with book");
}

TYPED_TEST(NamesOfSheets, AddressesInText) {
    auto& sheet = this->_sheet;
    const struct {
        const char* text;
        int row, col;
        bool rowRelative, colRelative;
    } cases[] = {
        {"b7", 6, 1, true, true},    {"$B$7", 6, 1, false, false}, {"xfd$1048576", 1048575, 16383, false, true},
        {"C", -1, 2, true, true},    {"$c", -1, 2, true, false},   {"$12", 11, -1, false, true},
        {"$AA3", 2, 26, true, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        int row = -2, col = -2;
        bool rowRelative = false, colRelative = false;
        EXPECT_TRUE(sheet->parseCellAddress(c.text, &row, &col, &rowRelative, &colRelative)) << sheet.error();
        EXPECT_EQ(row, c.row);
        EXPECT_EQ(col, c.col);
        EXPECT_EQ(rowRelative, c.rowRelative);
        EXPECT_EQ(colRelative, c.colRelative);
    }
    for (const char* const bad : {"", "$", "7B", "XFE1", "A0", "A1048577", "A1:B2", "S!A1",
                                  "\xC3\xA9"
                                  "1"}) {
        EXPECT_FALSE(sheet->parseCellAddress(bad, nullptr, nullptr, nullptr, nullptr)) << bad;
        EXPECT_EQ(sheet.error(), "ref has unrecognized format");
    }
    EXPECT_STREQ(sheet->formatCellAddress(1048575, 16383, false, true), "XFD$1048576");
    EXPECT_EQ(sheet->formatCellAddress(1048576, 0, true, true), nullptr);
    EXPECT_EQ(sheet.error(), "row must be in range 0-1048575");
    EXPECT_EQ(sheet->formatCellAddress(-1, 16384, true, true), nullptr);
    EXPECT_EQ(sheet.error(), "col must be in range 0-16383");
}

}  // namespace
}  // namespace vellum::test
