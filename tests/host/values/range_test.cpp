#include "host/labels/range.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/host/values/fake_book.h"

namespace quillet {
namespace {

using fake::FakeHost;
using fake::FakeSheet;
using fake::FakeSource;
using testing::ElementsAreArray;

/// Sales has a header, 3 rows of data from B2 on, and names; Other is empty but for one cell; Empty has no cell.
void fillBook(fake::FakeBook& book) {
    FakeSheet& sales = book.add("Sales");
    const char* const cells[4][3] = {
        {"year", "Total sales", "year"}, {"1", "2", "3"}, {"4", "5", "6"}, {"7", "8", "9"}};
    for (int row = 0; row < 4; ++row) {
        for (int col = 0; col < 3; ++col) sales.put(row + 1, col + 1, cells[row][col]);
    }
    sales.names = {{"Gr\u00F6\u00DFe", 1, 1, 1, 1},
                   {"Region", 1, 4, 1, 3},
                   {"Old", 0, 0, 0, 0},
                   {"OLD", 2, 2, 2, 2},
                   {"Bad", -1, 4, 1, 3}};
    FakeSheet& other = book.add("Other");
    other.put(9, 4, "x");
    other.names = {{"region", 9, 9, 4, 4}, {"Far", 7, 8, 0, 1}};
    book.add("Empty");
    book.add("\u00DCbersicht").put(0, 0, "x");
}

std::string placeOf(const RangeSpec& range) {
    char text[128];
    std::snprintf(text, sizeof text, "%s!R%dC%d:R%dC%d", fake::sheetOf(range.sheet).name.c_str(), range.firstRow + 1,
                  range.firstCol + 1, range.lastRow + 1, range.lastCol + 1);
    std::string place = text;
    if (range.headerRow >= 0) place.append(" h").append(std::to_string(range.headerRow + 1));
    if (range.has(optGrow)) place.append(" grow");
    return place;
}

struct Case {
    const char* label;
    std::uint32_t flags;
    const char* place;         // null: refused with the messages
    std::vector<int> columns;  // columnMap
    std::vector<std::string> messages = {};
};

void check(const Case& c) {
    SCOPED_TRACE(std::string(c.label) + " flags " + std::to_string(c.flags));
    FakeHost host;
    FakeSource source(c.flags & optUpdate);
    fillBook(source.book);
    RangeSpec range;
    const int failed = parseRange(nullptr, c.flags, 4, source.context(), &range, c.label);
    EXPECT_THAT(FakeHost::messages(), ElementsAreArray(c.messages));
    ASSERT_EQ(failed, c.place ? 0 : 1);
    if (!c.place) {
        EXPECT_FALSE(range.columnMap);
        return;
    }
    EXPECT_EQ(placeOf(range), c.place);
    ASSERT_EQ(range.columnCount, int(c.columns.size()));
    for (int i = 0; i < range.columnCount; ++i) EXPECT_EQ(range.column(i), c.columns[std::size_t(i)]);
    EXPECT_EQ(range.autoIndexStart, 4);
    EXPECT_EQ(range.book, &source.book);
    EXPECT_EQ(range.textBuffer, source.context()->textBuffer());
    EXPECT_STREQ(range.realFormat, "%.10g");
}

const std::string invalid = "SHEET: Invalid range.\n", noSheet = "SHEET: Sheet not found.\n",
                  noName = "SHEET: Range name not found.\n", cannotAdd = "SHEET: A new sheet cannot be added.\n",
                  noHeader = "SHEET: Missing header row.\n";
std::string identifier(const std::string& text) {
    return "SHEET: Invalid column identifier in selection (" + text + ").\n";
}
std::string number(long n) {
    return "SHEET: Invalid column number in selection (" + std::to_string(n) + ").\n";
}

TEST(Range, Areas) {
    const Case cases[] = {
        {"[A1:C3]", 0, "Sales!R1C1:R3C3", {0, 1, 2}},
        {"[R1C1:B2]", 0, "Sales!R1C1:R2C2", {0, 1}},
        {"[C4]ignored", 0, "Sales!R4C3:R4C3", {0}},
        {"[]", 0, "Sales!R2C2:R5C4", {0, 1, 2}},
        {"[", 0, "Sales!R2C2:R5C4", {0, 1, 2}},
        {"[", optUpdate, "Sales!R2C2:R5C4 grow", {0, 1, 2}},
        {"[A:C]", 0, "Sales!R1C1:R5C3", {0, 1, 2}},
        {"[A:C]", optUpdate, "Sales!R1C1:R5C3 grow", {0, 1, 2}},
        {"[1:3]", optUpdate, "Sales!R1C1:R3C4", {0, 1, 2, 3}},
        {"[sales$A1:B2]", 0, "Sales!R1C1:R2C2", {0, 1}},
        {"[OTHER$", 0, "Other!R10C5:R10C5", {0}},
        {"[other$]", optUpdate, "Other!R10C5:R10C5 grow", {0}},
        {"[2$E10]", 0, "Other!R10C5:R10C5", {0}},
        {"[XFD1]", 0, "Sales!R1C16384:R1C16384", {0}},
        {"[XFE1]", 0, nullptr, {}, {invalid}},
        {"[ABCD1]", 0, nullptr, {}, {invalid}},
        {"[$A1]", 0, nullptr, {}, {invalid}},
        {"[$", 0, nullptr, {}, {invalid}},
        {"[A]", 0, nullptr, {}, {invalid}},
        {"[3]", 0, nullptr, {}, {invalid}},
        {"[A1", 0, nullptr, {}, {invalid}},
        {"[A1:B2", 0, nullptr, {}, {invalid}},
        {"[A1:B2x]", 0, nullptr, {}, {invalid}},
        {"[A1,B2]", 0, nullptr, {}, {invalid}},
        {"[A1:C]", 0, nullptr, {}, {invalid}},
        {"[A:C5]", 0, nullptr, {}, {invalid}},
        {"[A1:3]", 0, nullptr, {}, {invalid}},
        {"[1:C5]", 0, nullptr, {}, {invalid}},
        {"[B2:A1]", 0, nullptr, {}, {invalid}},
        {"[A0]", 0, nullptr, {}, {invalid}},
        {"[R0C1]", 0, nullptr, {}, {invalid}},
        {"[R1C0:R2C2]", 0, nullptr, {}, {invalid}},
        {"[Empty$]", 0, nullptr, {}, {invalid}},
        {"[Empty$]", optUpdate | optGrow, nullptr, {}, {invalid}},
        {"[0$A1]", 0, nullptr, {}, {noSheet}},
        {"[\u00FCBERSICHT$]", 0, "\u00DCbersicht!R1C1:R1C1", {0}},
        {"[Ubersicht$]", 0, nullptr, {}, {noSheet}},
        {"[\xDC"
         "bersicht$]",
         0,
         nullptr,
         {},
         {noSheet}},  // no UTF-8
        {"[5$A1]", 0, nullptr, {}, {noSheet}},
        {"[99999999999$A1]", 0, nullptr, {}, {noSheet}},
        {"[None$A1]", 0, nullptr, {}, {noSheet}},
        {"[Sale$A1]", 0, nullptr, {}, {noSheet}},
        {"[A1:B2](#$)", 0, nullptr, {}, {noSheet}},  // the first $ of the label ends the sheet's name
        // what is no rectangle is a success under rangesize, without columns
        {"[B2:A1]", optRangeSize, "Sales!R2C2:R1C1", {}},
        {"[A1:C4]", optRangeSize, "Sales!R1C1:R4C3", {0, 1, 2}},
    };
    for (const Case& c : cases) check(c);
}

TEST(Range, Names) {
    const Case cases[] = {
        {"Region", 0, "Sales!R2C2:R5C4", {0, 1, 2}},
        {"REGION(#3,#1)", 0, "Sales!R2C2:R5C4", {2, 0}},
        {"GR\u00D6\u1E9EE", 0, "Sales!R2C2:R2C2", {0}},
        {"old", 0, "Sales!R3C3:R3C3", {0}},  // the last of two names
        {"far", 0, "Other!R8C1:R9C2", {0, 1}},
        {"Regio", 0, nullptr, {}, {noName}},
        {"Region ", 0, nullptr, {}, {noName}},
        {"", 0, nullptr, {}, {noName}},
        {"R3C2", 0, nullptr, {}, {noName}},
        {"x[A1]", 0, nullptr, {}, {noName}},
        {"None", optRangeSize, nullptr, {}, {noName}},
        {"Bad", 0, nullptr, {}, {invalid}},
    };
    for (const Case& c : cases) check(c);
}

TEST(Range, HeaderRow) {
    const Case cases[] = {
        {"[B2:D5]", optSkipHeader, "Sales!R3C2:R5C4 h2", {0, 1, 2}},
        {"[B2:D2]", optSkipHeader, "Sales!R3C2:R3C4 h2", {0, 1, 2}},
        {"[B2:D5](Total sales,#1)", optSkipHeader, "Sales!R3C2:R5C3 h2", {1, 0}},
        {"[B2:D5]( #3 , year,Total sales )", optSkipHeader, "Sales!R3C2:R5C4 h2", {2, 0, 1}},
        {"[B2:D2](#2)", optSkipHeader, "Sales!R3C3:R3C3 h2", {0}},
        {"[B2:D2](#2)", optSkipHeader | optUpdate | optGrow, "Sales!R3C3:R3C3 h2 grow", {0}},
        {"[B2:D2](#2)", optSkipHeader | optUpdate, nullptr, {}, {noHeader}},
        {"[B2:D5](total sales)", optSkipHeader, nullptr, {}, {identifier("total sales)")}},
        {"[B2:D5](#4)", optSkipHeader, nullptr, {}, {number(4)}},
        {"[B2:D5](#0)", optSkipHeader, nullptr, {}, {number(0)}},
        {"[B2:D5](2)", optSkipHeader, nullptr, {}, {identifier("2)")}},  // a name, and no header is called so
        {"[B2:D5](# 2)", optSkipHeader, nullptr, {}, {identifier("# 2)")}},
        {"[B2:D5](year", optSkipHeader, nullptr, {}, {identifier("year")}},
        {"[B2:D5](year, ,#1)", optSkipHeader, nullptr, {}, {identifier(",#1)")}},
        {"[B2:D5](#1 x)", optSkipHeader, nullptr, {}, {identifier("x)")}},
    };
    for (const Case& c : cases) check(c);
}

TEST(Range, ColumnsByNumber) {
    const Case cases[] = {
        {"[A1:B2](#2,#1)", 0, "Sales!R1C1:R2C2", {1, 0}},
        {"[A1:E2](2,4)", 0, "Sales!R1C2:R2C4", {0, 2}},
        {"[A1:E2](1,3,3,1)and, more", 0, "Sales!R1C1:R2C3", {0, 2, 2, 0}},
        {"[A1:E2]( # 5 )", 0, "Sales!R1C5:R2C5", {0}},
        {"[](3)", 0, "Sales!R2C4:R5C4", {0}},
        {"[A1:B2]()", 0, nullptr, {}, {identifier(")")}},
        {"[A1:B2](", 0, nullptr, {}, {identifier("")}},
        {"[A1:B2]( ,1)", 0, nullptr, {}, {identifier(",1)")}},
        {"[A1:B2](1,2", 0, nullptr, {}, {identifier("")}},
        {"[A1:B2](1;2)", 0, nullptr, {}, {identifier(";2)")}},
        {"[A1:B2](1,)", 0, nullptr, {}, {identifier(")")}},
        {"[A1:B2](x)", 0, nullptr, {}, {identifier("x)")}},
        {"[A1:B2](#x)", 0, nullptr, {}, {identifier("#x)")}},
        {"[A1:B2](-1)", 0, nullptr, {}, {identifier("-1)")}},
        {"[A1:B2](1,3)", 0, nullptr, {}, {number(3)}},
        {"[A1:B2](0)", 0, nullptr, {}, {number(0)}},
        {"[A1:B2](99999999999999999999)", 0, nullptr, {}, {number(9223372036854775807)}},
    };
    for (const Case& c : cases) check(c);
}

TEST(Range, SheetsAreAddedToAnUpdateSource) {
    const struct {
        const char* label;
        std::vector<std::string> sheets;  // behind the one that is there
        std::vector<std::string> messages = {};
    } cases[] = {
        {"[2$A1]", {"Sheet2"}},
        {"[4$A1]", {"Sheet2", "Sheet3", "Sheet4"}},
        {"[New one$B2]", {"New one"}},
        {"[New$]", {"New"}, {invalid}},  // added, but it has no used area
        {"[9$A1]", {"Sheet2", "Sheet3", "Sheet4"}, {cannotAdd}},
        {"[0$A1]", {}, {noSheet}},
        {"[99999999999$A1]", {"Sheet2", "Sheet3", "Sheet4"}, {cannotAdd}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        FakeHost host;
        FakeSource source(optUpdate);
        source.book.maxSheets = 4;
        source.book.add("First");
        RangeSpec range;
        EXPECT_EQ(parseRange(nullptr, optUpdate, 0, source.context(), &range, c.label), c.messages.empty() ? 0 : 1);
        EXPECT_THAT(FakeHost::messages(), ElementsAreArray(c.messages));
        std::vector<std::string> added;
        for (const auto& sheet : source.book.sheets) added.push_back(sheet->name);
        added.erase(added.begin());
        EXPECT_THAT(added, ElementsAreArray(c.sheets));
    }
}

TEST(Range, BookWithoutSheets) {
    const struct {
        std::uint32_t flags;
        const char* label;
        std::size_t maxSheets;
        const char* place;
        std::vector<std::string> messages = {};
    } cases[] = {
        {0, "[A1:C3]", 9, nullptr, {noSheet}},
        {optUpdate, "[A1:C3]", 9, "Sheet1!R1C1:R3C3"},
        {optUpdate, "[A1:C3]", 0, nullptr, {cannotAdd}},
        {optRangeSize, "[A1:C4]", 9, "not there"},
        {optRangeSize, "[1$A1:C4]", 9, nullptr, {noSheet}},
        {0, "Name", 9, nullptr, {noName}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        FakeHost host;
        FakeSource source(c.flags & optUpdate);
        source.book.maxSheets = c.maxSheets;
        RangeSpec range;
        EXPECT_EQ(parseRange(nullptr, c.flags, 0, source.context(), &range, c.label), c.place ? 0 : 1);
        EXPECT_THAT(FakeHost::messages(), ElementsAreArray(c.messages));
        if (c.flags & optRangeSize) {
            EXPECT_FALSE(range.columnMap);
            EXPECT_TRUE(!c.place || (range.height() <= 0 && range.width() <= 0));
        } else if (c.place) {
            EXPECT_EQ(placeOf(range), c.place);
        }
    }
}

TEST(Range, NamesAreWrittenIntoAnEmptyHeader) {
    const std::uint32_t flags = optUpdate | optGrow | optSkipHeader | optWriteHeader;
    const struct {
        const char* selection;
        std::uint32_t without;   // flags to leave out
        const char* headers[3];  // before
        std::vector<std::string> after;
        std::vector<int> columns;
        std::vector<std::string> messages = {};
    } cases[] = {
        {"(a, b c ,d)", 0, {}, {"a", "b c", "d"}, {0, 1, 2}},
        {"(a)", 0, {}, {"a", "", ""}, {0}},
        {"(a,b,c,d)", 0, {}, {"a", "b", "c"}, {}, {identifier("d)")}},
        {"(a,#2)", 0, {}, {"a", "", ""}, {}, {number(2)}},  // no numbers while names are written
        {"(a)", optWriteHeader, {}, {"", "", ""}, {}, {identifier("a)")}},
        {"(a)", 0, {"", "a", ""}, {"", "a", ""}, {0}},  // not empty: looked up
        {"(b,a)", 0, {"", "a", ""}, {"", "a", ""}, {}, {identifier("b,a)")}},
        {"(a)", 0, {"", "#err", ""}, {"", "", ""}, {}, {identifier("a)")}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.selection);
        FakeHost host;
        FakeSource source(optUpdate);
        FakeSheet& sheet = source.book.add("S");
        for (int i = 0; i < 3; ++i) {
            if (c.headers[i]) sheet.put(0, i, c.headers[i]);
        }
        RangeSpec range;
        const std::string label = std::string("[A1:C3]") + c.selection;
        const int failed = parseRange(nullptr, flags & ~c.without, 0, source.context(), &range, label.c_str());
        EXPECT_THAT(FakeHost::messages(), ElementsAreArray(c.messages));
        ASSERT_EQ(failed, c.messages.empty() ? 0 : 1);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(sheet.at(0, i).text, c.after[std::size_t(i)]);
        if (failed) continue;
        ASSERT_EQ(range.columnCount, int(c.columns.size()));
        for (int i = 0; i < range.columnCount; ++i) EXPECT_EQ(range.column(i), c.columns[std::size_t(i)]);
    }
}

TEST(Range, ErrorCellsCountAsEmptyHeadersUnderSkiperrcell) {
    FakeHost host;
    FakeSource source(optUpdate);
    FakeSheet& sheet = source.book.add("S");
    sheet.put(0, 0, "#err");
    RangeSpec range;
    const std::uint32_t flags = optUpdate | optGrow | optSkipHeader | optWriteHeader | optSkipErrorCells;
    EXPECT_EQ(parseRange(nullptr, flags, 0, source.context(), &range, "[A1:B3](x,y)"), 0);
    EXPECT_EQ(sheet.at(0, 0).text, "x");
    EXPECT_EQ(sheet.at(0, 1).text, "y");
}

}  // namespace
}  // namespace quillet
