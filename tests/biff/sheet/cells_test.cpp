// Writing of cells: which record a value becomes, formats, shared strings, and the texts of failures.
#include <cmath>
#include <limits>

#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

TEST(SheetCells, TheRecordOfAValue) {
    const struct {
        const char* what;
        void (*write)(ISheetT<char>&);
        std::uint16_t id;
        const char* body;
    } cases[] = {
        {"1.5", [](auto& s) { s.writeNumber(1, 2, 1.5); }, 638, "0100 0200 0F00 0000F83F"},
        {"an integer", [](auto& s) { s.writeNumber(1, 2, 7); }, 638, "0100 0200 0F00 00001C40"},
        {"0.1", [](auto& s) { s.writeNumber(1, 2, 0.1); }, 515, "0100 0200 0F00 9A9999999999B93F"},
        {"low bits of the high word", [](auto& s) { s.writeNumber(1, 2, 1.00000095367431640625); }, 515,
         "0100 0200 0F00 000000000100F03F"},
        {"NaN", [](auto& s) { s.writeNumber(1, 2, std::nan("")); }, 517, "0100 0200 0F00 24 01"},
        {"infinity", [](auto& s) { s.writeNumber(1, 2, -std::numeric_limits<double>::infinity()); }, 517,
         "0100 0200 0F00 24 01"},
        {"true", [](auto& s) { s.writeBool(1, 2, true); }, 517, "0100 0200 0F00 01 00"},
        {"an error", [](auto& s) { s.writeError(1, 2, errorName); }, 517, "0100 0200 0F00 1D 01"},
        {"a blank", [](auto& s) { s.writeBlank(1, 2, nullptr); }, 513, "0100 0200 0F00"},
        {"a text", [](auto& s) { s.writeString(1, 2, "a"); }, 253, "0100 0200 0F00 00000000"},
        {"over another kind", [](auto& s) { s.writeString(1, 2, "a"), s.writeNumber(1, 2, 0.1), s.writeBool(1, 2, 0); },
         517, "0100 0200 0F00 00 00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        NewSheet s;
        c.write(*s.sheet);
        EXPECT_EQ(s.cellRecord(), (Record{c.id, hex(c.body)}));
    }
}

TEST(SheetCells, FailuresAndTheirTexts) {
    NewSheet s;
    s.sheet->writeNumber(0, 0, 1);
    s.sheet->writeString(0, 1, "a");
    s.sheet->writeBlank(0, 2, nullptr);
    auto& sheet = *s.sheet;
    IFormatT<char>* format = nullptr;
    const std::string longText(32768, 'x');
    const NewSheet other;
    const struct {
        std::function<bool()> fails;
        const char* text;
    } cases[] = {
        {[&] { return sheet.writeNumber(65536, 0, 1); }, "row must be in range 0-65535"},
        {[&] { return sheet.writeNumber(-1, 0, 1); }, "row must be in range 0-65535"},
        {[&] { return sheet.writeString(0, 256, ""); }, "col must be in range 0-255"},
        {[&] { return sheet.cellType(0, -1) != cellEmpty; }, "col must be in range 0-255"},
        {[&] { return sheet.readNumber(0, 1) != 0; }, "this cell doesn't contain a number"},
        {[&] { return sheet.readNumber(9, 9) != 0; }, "this cell doesn't contain a number"},
        {[&] { return sheet.readBool(0, 0); }, "this cell doesn't contain a bool"},
        {[&] { return sheet.readError(0, 0) != 255; }, "this cell doesn't contain an error"},
        {[&] { return sheet.readBlank(0, 0, &format); }, "this cell doesn't contain a blank"},
        {[&] { return sheet.readBlank(0, 2, nullptr); }, "format mustn't be NULL"},
        {[&] { return sheet.readFormula(0, 0) != nullptr; }, "cell doesn't contain a formula"},
        {[&] { return sheet.readRichText(0, 0) != nullptr; }, "this cell doesn't contain a string"},
        {[&] { return sheet.readString(0, 2) != nullptr; }, "ok"},
        {[&] { return sheet.readString(5, 5) != nullptr; }, "ok"},
        {[&] { return sheet.setCellFormatAt(0, 0, nullptr); }, "format is NULL"},
        {[&] { return sheet.writeNumber(0, 0, 1, other.book->newFormat(nullptr)); }, "specified format not found"},
        {[&] { return sheet.writeString(0, 0, longText.c_str()); }, "string is too long"},
        {[&] { return sheet.copyCell(7, 7, 0, 0); }, "empty cell"},
        {[&] { return sheet.clearRange(3, 2, 0, 0); }, "rowLast must be greater than or equal to rowFirst"},
        {[&] { return sheet.clearRange(2, 2, 4, 3); }, "colLast must be greater than or equal to colFirst"},
        {[&] { return sheet.addMerge(0, 1, 0, 256); }, "col must be in range 0-255"},
        {[&] { return sheet.addMerge(1, 0, 0, 1); }, "rowLast must be greater than or equal to rowFirst"},
        {[&] { return sheet.mergeAt(0, 0, nullptr, nullptr, nullptr, nullptr); }, "this cell isn't in merging block"},
        {[&] { return sheet.removeMergeByIndex(0); }, "index is out of range"},
        {[&] { return sheet.setRow(3, 410.5); }, "height is too big"},
        {[&] { return sheet.setColumn(3, 2, 9); }, "colLast must be greater than or equal to colFirst"},
        {[&] { return sheet.rowHeight(65536) != -1.0; }, "row must be in range 0-65535"},
        {[&] { return sheet.columnWidth(256) != -1.0; }, "col must be in range 0-255"},
        {[&] { return sheet.setSheetName(nullptr); }, "incorrect sheet name"},
        {[&] { return sheet.hasFilter(); }, "AutoFilter is not supported for xls format"},
        {[&] { return sheet.removeValidationRules(); }, "function is not supported for xls files"},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(c.fails()) << c.text;
        EXPECT_STREQ(s.book->errorMessage(), c.text);
    }
    EXPECT_TRUE(sheet.writeString(0, 0, longText.substr(1).c_str()));
    EXPECT_STREQ(s.book->errorMessage(), "ok");
}

TEST(SheetCells, FormatsComeFromCallerCellOrColumn) {
    NewSheet s;
    auto* const one = s.book->newFormat(nullptr);
    auto* const two = s.book->newFormat(nullptr);
    s.sheet->setColumn(1, 2, 10, one);
    EXPECT_TRUE(s.sheet->writeNumber(0, 0, 1));
    EXPECT_EQ(s.sheet->cellFormatAt(0, 0), s.book->formatAt(15));
    EXPECT_TRUE(s.sheet->writeNumber(0, 1, 1));
    EXPECT_EQ(s.sheet->cellFormatAt(0, 1), one);
    EXPECT_TRUE(s.sheet->writeNumber(0, 1, 1, two));
    EXPECT_TRUE(s.sheet->writeString(0, 1, "over it, with the format that it has"));
    EXPECT_EQ(s.sheet->cellFormatAt(0, 1), two);
    EXPECT_TRUE(s.sheet->setCellFormatAt(3, 3, two));
    IFormatT<char>* format = nullptr;
    EXPECT_TRUE(s.sheet->readBlank(3, 3, &format));
    EXPECT_EQ(format, two);
    EXPECT_EQ(s.sheet->cellFormatAt(8, 8), nullptr);
}

TEST(SheetCells, SharedStringsAreReplacedWhenNobodyElseUsesThem) {
    NewSheet s;
    auto& sheet = *s.sheet;
    sheet.writeString(0, 0, "a");
    sheet.writeString(0, 1, "a");
    sheet.writeString(0, 1, "b");  // "a" is used twice: a new string
    sheet.writeString(0, 0, "c");  // now once: in its place
    s.book->addSheet("copy", &sheet);
    sheet.writeString(0, 0, "d");  // the copy uses it too
    EXPECT_STREQ(sheet.readString(0, 0), "d");
    EXPECT_STREQ(s.book->getSheet(1)->readString(0, 0), "c");
    const auto sst = only(recordsOf(saved(*s.book)), 252);
    ASSERT_EQ(sst.size(), 1U);
    EXPECT_EQ(sst[0].body, hex("04000000 03000000 0100 01 6300 0100 01 6200 0100 01 6400"));
}

TEST(SheetCells, NumbersAreTextToo) {
    NewSheet s;
    const struct {
        double value;
        const char* text;
    } cases[] = {{1.5, "1.5"}, {0.1, "0.1"}, {-3, "-3"}, {1e21, "1e+21"}, {1.0 / 3, "0.3333333333333333"}};
    for (const auto& c : cases) {
        s.sheet->writeNumber(0, 0, c.value);
        EXPECT_STREQ(s.sheet->readString(0, 0), c.text);
    }
}

TEST(SheetCells, Dates) {
    NewSheet s;
    auto* const format = s.book->newFormat(nullptr);
    s.sheet->writeNumber(0, 0, 40000, format);
    for (const auto& [id, expected] : {std::pair{0, false},
                                       {13, false},
                                       {14, true},
                                       {22, true},
                                       {23, false},
                                       {36, false},
                                       {37, false},
                                       {44, false},
                                       {45, true},
                                       {47, true},
                                       {48, false},
                                       {49, false},
                                       {100, false}}) {
        format->setNumFormat(id);
        EXPECT_EQ(s.sheet->isDate(0, 0), expected) << id;
    }
    for (const auto& [text, expected] : {std::pair{"yyyy\\-mm", true},
                                         {"[h]:mm", true},
                                         {"[Red]0.00", false},
                                         {"0 \"days\"", false},
                                         {"0.0E+00", false},
                                         {"\"d\"0[mm]", false},
                                         {"#,##0;[Blue]hh", true},
                                         {"[ss]", false}}) {
        format->setNumFormat(s.book->newCustomNumFormat(text));
        EXPECT_EQ(s.sheet->isDate(0, 0), expected) << text;
    }
    format->setNumFormat(14);
    s.sheet->writeString(0, 1, "text", format);
    EXPECT_FALSE(s.sheet->isDate(0, 1));
}

TEST(SheetCells, BoundsOfUsedAndFilledCells) {
    NewSheet s;
    auto& sheet = *s.sheet;
    const auto bounds = [&] {
        return std::vector{sheet.firstRow(),          sheet.lastRow(),         sheet.firstCol(),
                           sheet.lastCol(),           sheet.firstFilledRow(),  sheet.lastFilledRow(),
                           sheet.firstFilledColumn(), sheet.lastFilledColumn()};
    };
    using Bounds = std::vector<int>;
    EXPECT_EQ(bounds(), Bounds(8));
    sheet.writeBlank(7, 3, nullptr);
    EXPECT_EQ(bounds(), (Bounds{7, 8, 3, 4, 0, 0, 0, 0}));
    sheet.writeNumber(5, 9, 1);
    EXPECT_EQ(bounds(), (Bounds{5, 8, 3, 10, 5, 6, 9, 10}));
    sheet.writeString(5, 9, "over a number");
    EXPECT_EQ(bounds(), (Bounds{5, 8, 3, 10, 5, 6, 9, 10}));
    sheet.writeBlank(5, 9, nullptr);
    EXPECT_EQ(bounds(), (Bounds{5, 8, 3, 10, 0, 0, 0, 0}));
    sheet.setRow(20, 15);
    EXPECT_EQ(sheet.lastRow(), 21);
    sheet.clearRange(7, 7, 0, 255);
    EXPECT_EQ(bounds(), (Bounds{5, 6, 9, 10, 0, 0, 0, 0}));
    sheet.clearRange(-5, 100000, -5, 100000);
    EXPECT_EQ(bounds(), Bounds(8));
}

TEST(SheetCells, SettersGrowKeepOrRecountTheBounds) {
    using Sheet = ISheetT<char>;
    using Bounds = std::vector<int>;
    const Bounds kept{5, 6, 5, 6};
    const struct {
        const char* what;
        bool (*set)(Sheet& sheet);
        Bounds used;
    } cases[] = {
        {"writeFormula", [](Sheet& s) { return s.writeFormula(9, 8, "1"); }, {5, 10, 5, 9}},
        {"setRow", [](Sheet& s) { return s.setRow(9, 20); }, {5, 10, 5, 6}},
        {"addMerge", [](Sheet& s) { return s.addMerge(8, 9, 7, 8); }, {5, 10, 5, 9}},
        {"insertRows", [](Sheet& s) { return s.insertRows(0, 1, true); }, {7, 8, 5, 6}},
        {"removeRows", [](Sheet& s) { return s.removeRows(0, 1, true); }, {3, 4, 5, 6}},
        {"insertColumns", [](Sheet& s) { return s.insertColumns(0, 1, true); }, {5, 6, 7, 8}},
        {"removeColumns", [](Sheet& s) { return s.removeColumns(0, 1, true); }, {5, 6, 3, 4}},
        {"clearRange", [](Sheet& s) { return s.clearRange(5, 5, 5, 5); }, {0, 0, 0, 0}},
        {"setRowHidden", [](Sheet& s) { return s.setRowHidden(9, true); }, kept},
        {"groupRowRange", [](Sheet& s) { return s.groupRowRange(8, 9, true); }, kept},
        {"groupColumnRange", [](Sheet& s) { return s.groupColumnRange(8, 9, true); }, kept},
        {"setColumn", [](Sheet& s) { return s.setColumn(8, 9, 20, nullptr, false); }, kept},
        {"setColumnHidden", [](Sheet& s) { return s.setColumnHidden(9, true); }, kept},
        {"setRowBreak", [](Sheet& s) { return s.setRowBreak(9, true); }, kept},
        {"splitAt", [](Sheet& s) { return s.splitAt(9, 9); }, kept},
        {"addHyperlink", [](Sheet& s) { return s.addHyperlink("http://a/", 9, 9, 9, 9); }, kept},
        {"setPrintAreaRange", [](Sheet& s) { return s.setPrintAreaRange(0, 99, 0, 99); }, kept},
        {"setNamedRangeByName", [](Sheet& s) { return s.setNamedRangeByName("n", 0, 99, 0, 99); }, kept},
        {"writeComment", [](Sheet& s) { return s.writeComment(9, 9, "t", "a", 50, 50); }, kept},
    };
    for (const auto& c : cases) {
        NewSheet made;
        Sheet& s = *made.sheet;
        ASSERT_TRUE(s.writeNumber(5, 5, 1) && c.set(s)) << c.what << ": " << made.book->errorMessage();
        EXPECT_EQ((Bounds{s.firstRow(), s.lastRow(), s.firstCol(), s.lastCol()}), c.used) << c.what;
    }
}

}  // namespace
}  // namespace vellum::test
