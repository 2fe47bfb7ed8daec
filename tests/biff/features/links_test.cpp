// Links, protection, errors that are not shown, and tables of a sheet.
#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

using Sheet = ISheetT<char>;

const std::string stdLink = "D0C9EA79F9BACE118C8200AA004BA90B", urlMoniker = "E0C9EA79F9BACE118C8200AA004BA90B",
                  fileMoniker = "0303000000000000C000000000000046";
const std::string at = "0100 0200 0300 0400 ";

struct Link {
    std::string target;
    std::vector<int> area;
};

Link linkAt(Sheet& sheet, int index) {
    Link link{"(null)", std::vector<int>(4)};
    if (const char* const target =
            sheet.hyperlinkAt(index, &link.area[0], &link.area[1], &link.area[2], &link.area[3])) {
        link.target = target;
    }
    return link;
}

TEST(Hyperlinks, WhatIsWrittenForEachKindOfTarget) {
    const struct {
        const char* target;
        std::string object;  // behind the class id
    } cases[] = {
        {"http://a/#b!c", "02000000 03000000 " + urlMoniker +
                              "1C000000 68007400740070003A002F002F0061002F002300"
                              "6200210063000000"},
        {"mailto:a", "02000000 03000000 " + urlMoniker + "12000000 6D00610069006C0074006F003A0061000000"},
        {"S!A1", "02000000 08000000 05000000 5300210041003100 0000"},
        {"#S!A1", "02000000 08000000 05000000 5300210041003100 0000"},
        {"a.xls", "02000000 01000000 " + fileMoniker + "0000 06000000 612E786C7300 FFFF ADDE " + std::string(40, '0') +
                      "10000000 0A000000 0300 61002E0078006C007300"},
        {"..\\..\\\xD0\xBC#x", "02000000 09000000 " + fileMoniker + "0200 02000000 3F00 FFFF ADDE " +
                                   std::string(40, '0') + "08000000 02000000 0300 3C04 02000000 78000000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.target);
        NewSheet s;
        EXPECT_TRUE(s.sheet->addHyperlink(c.target, 1, 2, 3, 4)) << s.book->errorMessage();
        const auto records = only(savedRecords(*s.book), 440);
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(records[0].body, hex(at + stdLink + c.object));
        const Link link = linkAt(*loaded(saved(*s.book))->getSheet(0), 0);
        EXPECT_EQ(link.target, c.target[0] == '#' ? c.target + 1 : c.target);
        EXPECT_EQ(link.area, (std::vector{1, 2, 3, 4}));
    }
}

TEST(Hyperlinks, WhatLoadedOnesLeadTo) {
    const std::string names = "02000000 4100 0000 02000000 4200 0000 ";
    const struct {
        const char* what;
        std::string object;
        const char* target;
    } cases[] = {
        {"names in front", "02000000 9B000000 " + names + urlMoniker + "06000000 6100 6200 0000 02000000 6300 0000",
         "ab#c"},
        {"a URL with more behind it",
         "02000000 0B000000 " + urlMoniker + "1C000000 6100 0000 " + std::string(48, '1') + "02000000 6300 0000",
         "a#c"},
        {"a path of bytes alone",
         "02000000 01000000 " + fileMoniker + "0100 03000000 E96200 FFFFADDE" + std::string(40, '0') + "00000000",
         "..\\\xC3\xA9"
         "b"},
        {"a path as a text", "02000000 01010000 03000000 5C00 6100 0000", "\\a"},
        {"a moniker that nobody knows", "02000000 09000000 " + std::string(32, '7') + "AABBCC", ""},
        {"nothing", "02000000 00000000", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Record record{440, hex(at + stdLink + c.object)};
        OneSheet one({record,
                      {2048, hex("0008 0100 0200 0300 0400 6100 0000")},
                      {440, hex(at + stdLink + "02000000 00000000")}});
        ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
        EXPECT_EQ(linkAt(*one.sheet, 0).target, c.target);
        EXPECT_EQ(only(savedRecords(*one.book), 440).at(0), record);
        EXPECT_EQ(only(savedRecords(*one.book), 2048).size(), 1U);
        EXPECT_TRUE(one.sheet->removeHyperlinkAt(0));
        EXPECT_EQ(one.sheet->hyperlinkTotal(), 1);
        EXPECT_TRUE(only(savedRecords(*one.book), 2048).empty()) << "its tooltip goes along";
    }
    // Cut between two records.
    const Bytes whole = hex(at + stdLink + "02000000 08000000 03000000 6100 6200 0000");
    OneSheet cut({{440, Bytes(whole.begin(), whole.begin() + 37)}, {60, Bytes(whole.begin() + 37, whole.end())}});
    EXPECT_EQ(linkAt(*cut.sheet, 0).target, "ab");
}

TEST(Hyperlinks, WhatIsRefused) {
    const struct {
        std::string body;
        const char* text;
    } broken[] = {
        {at + "D0C9EA79", "error reading HLink"},
        {at + stdLink + "02000000", "error in reading HyperlinkObj"},
        {at + stdLink + "02000000 08000000 04000000 6100 0000", "error in reading HyperlinkObj"},
        {at + stdLink + "02000000 08000000 FFFFFFFF 6100 0000", "error in reading HyperlinkObj"},
        {at + stdLink + "02000000 01000000 " + urlMoniker + "FFFFFFFF 6100", "error in reading HyperlinkObj"},
        {at + stdLink + "02000000 01000000 " + fileMoniker + "0000 01000000 00", "error in reading HyperlinkObj"},
    };
    for (const auto& b : broken) EXPECT_EQ(loadText({{440, hex(b.body)}}), b.text) << b.body;

    NewSheet s;
    const struct {
        bool (*act)(Sheet&);
        const char* text;
    } cases[] = {
        {[](Sheet& x) { return x.hyperlinkAt(0, nullptr, nullptr, nullptr, nullptr) != nullptr; },
         "index is out of range"},
        {[](Sheet& x) { return x.removeHyperlinkAt(-1); }, "index is out of range"},
        {[](Sheet& x) { return x.addHyperlink("a", 0, 65536, 0, 0); }, "row must be in range 0-65535"},
        {[](Sheet& x) { return x.addHyperlink("a", 0, 0, 256, 0); }, "col must be in range 0-255"},
        {[](Sheet& x) { return x.addHyperlink(std::string(5000, 'a').c_str(), 0, 0, 0, 0); }, "string is too long"},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(c.act(*s.sheet)) << c.text;
        EXPECT_STREQ(s.book->errorMessage(), c.text);
    }
}

std::vector<Record> protection(IBookT<char>& book) {
    auto out = savedRecords(book);
    std::erase_if(
        out, [](const Record& r) { return r.id != 18 && r.id != 221 && r.id != 99 && r.id != 19 && r.id != 2151; });
    return out;
}

TEST(Protection, RecordsAndOptions) {
    const std::string header = "6708 0000 0000000000000000 0200 01 FFFFFFFF ";
    const struct {
        const char* what;
        std::vector<Record> before;
        bool (*set)(Sheet&);
        std::vector<Record> after;
    } cases[] = {
        {"on",
         {},
         [](Sheet& s) { return s.setProtected(true, nullptr, -1); },
         {{18, hex("0100")}, {221, hex("0100")}, {99, hex("0100")}}},
        {"a password",
         {},
         [](Sheet& s) { return s.setProtected(true, "abc", -1); },
         {{18, hex("0100")}, {221, hex("0100")}, {99, hex("0100")}, {19, hex("1ACC")}}},
        {"the published sample",
         {},
         [](Sheet& s) { return s.setProtected(true, "abcdefghij", -1); },
         {{18, hex("0100")}, {221, hex("0100")}, {99, hex("0100")}, {19, hex("F1FE")}}},
        {"no password any more",
         {{19, hex("1ACC")}},
         [](Sheet& s) { return s.setProtected(true, "", -1); },
         {{18, hex("0100")}, {221, hex("0100")}, {99, hex("0100")}, {19, hex("0000")}}},
        {"off",
         {{18, hex("0100")}, {19, hex("1ACC")}},
         [](Sheet& s) { return s.setProtected(false, nullptr, -1); },
         {{18, hex("0000")}, {221, hex("0000")}, {99, hex("0000")}, {19, hex("1ACC")}}},
        {"options",
         {},
         [](Sheet& s) { return s.setProtected(true, nullptr, 0x4402); },
         {{18, hex("0100")}, {221, hex("0100")}, {99, hex("0000")}, {2151, hex(header + "02440000")}}},
        {"options in the header that is there",
         {{2151, hex(header + "00440000")}},
         [](Sheet& s) { return s.setProtected(true, nullptr, 1); },
         {{18, hex("0100")}, {221, hex("0000")}, {99, hex("0100")}, {2151, hex(header + "01000000")}}},
        {"options in a header without a word",
         {{2151, hex(header)}},
         [](Sheet& s) { return s.setProtected(true, nullptr, 3); },
         {{18, hex("0100")}, {221, hex("0000")}, {99, hex("0000")}, {2151, hex(header + "03000000")}}},
        {"four bytes, of which two count",
         {{18, hex("0100 0000")}},
         [](Sheet& s) { return s.isProtected(); },
         {{18, hex("0100")}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OneSheet one(c.before);
        ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
        EXPECT_TRUE(c.set(*one.sheet)) << one.book->errorMessage();
        EXPECT_EQ(protection(*one.book), c.after);
        EXPECT_EQ(one.sheet->isProtected(), c.after[0].body[0] == std::byte{1});
    }
    NewSheet outsiders;
    EXPECT_TRUE(outsiders.sheet->setProtected(true, "\xD0\xBC", -1));
    NewSheet marks;
    EXPECT_TRUE(marks.sheet->setProtected(true, "?", -1));
    EXPECT_EQ(protection(*outsiders.book), protection(*marks.book)) << "the hash is over bytes of Latin-1";
}

TEST(IgnoredErrors, AreAddedAndExtended) {
    const Record header{2151, hex("6708 0000 0000000000000000 0300 01 00000000")};
    const auto feat = [](const std::string& area, const std::string& word) {
        return Record{2152, hex("6808 0000 0000000000000000 0300 00 00000000 0100 04000000 0000 " + area + word)};
    };
    const Record other{2151, hex("6708 0000 0000000000000000 0400 01 00000000")};
    OneSheet one({other});
    auto& s = *one.sheet;
    EXPECT_TRUE(s.addIgnoredErrorRange(1, 3, 2, 4, 2));
    EXPECT_TRUE(s.addIgnoredErrorRange(5, 5, 5, 5, 255));
    EXPECT_FALSE(s.addIgnoredErrorRange(1, 3, 2, 4, 2));
    EXPECT_STREQ(one.book->errorMessage(), "ignored error already exists");
    EXPECT_TRUE(s.addIgnoredErrorRange(1, 3, 2, 4, 4 | 256));
    EXPECT_FALSE(s.addIgnoredErrorRange(2, 0, 1, 0, 1));
    EXPECT_STREQ(one.book->errorMessage(), "rowLast must be greater than or equal to rowFirst");
    auto out = savedRecords(*one.book);
    std::erase_if(out, [](const Record& r) { return r.id != 2151 && r.id != 2152; });
    EXPECT_EQ(out, (std::vector{other, header, feat("0100 0200 0300 0400", "24000000"),
                                feat("0500 0500 0500 0500", "FF000000")}));

    OneSheet headless({other, feat("0100 0200 0300 0400", "24000000")});
    EXPECT_TRUE(headless.sheet->addIgnoredErrorRange(5, 5, 5, 5, 255));
    auto mended = savedRecords(*headless.book);
    std::erase_if(mended, [](const Record& r) { return r.id != 2151 && r.id != 2152; });
    EXPECT_EQ(mended, out) << "the group is opened in front of its first feature";

    NewSheet moved;
    EXPECT_TRUE(moved.sheet->addIgnoredErrorRange(1, 3, 2, 4, 1));
    EXPECT_TRUE(moved.sheet->setProtected(true, "", 5));  // goes in front of all
    EXPECT_TRUE(moved.sheet->addIgnoredErrorRange(1, 3, 2, 4, 4));
    EXPECT_EQ(only(savedRecords(*moved.book), 2152), (std::vector{feat("0100 0200 0300 0400", "05000000")}));
}

TEST(Tables, AreFoundInTheirRecords) {
    const std::string head = "7208 0000 0000000000000000 0500 00 00000000 0100 00000000 0000 0200 0900 0100 0300 ";
    const std::string body = "00000000 01000000 01000000 01000000 04000000 40000000 " + std::string(80, '0');
    const Record table{2162, hex(head + body + "0300 00 546162 0000")};
    Record later = table;
    later.id = 2168;
    OneSheet one({{2161, Bytes(29)},
                  table,
                  {2162, hex("7208 0000 0000000000000000 0300 00 00000000 0000 00000000 0000")},
                  later,
                  {2162, Bytes(hex(head + body))}});
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    EXPECT_EQ(one.sheet->tableTotal(), 3);
    int a = 0, b = 0, c = 0, d = 0, headers = 0, totals = 0;
    EXPECT_STREQ(one.sheet->tableAt(1, &a, &b, &c, &d, &headers, &totals), "Tab") << one.book->errorMessage();
    EXPECT_EQ((std::vector{a, b, c, d, headers, totals}), (std::vector{2, 9, 1, 3, 1, 1}));
    EXPECT_EQ(one.sheet->tableAt(2, &a, &b, &c, &d, nullptr, nullptr), nullptr) << "cut before its name";
    EXPECT_STREQ(one.book->errorMessage(), "Feature11 size is incorrect");
    EXPECT_EQ(one.sheet->tableAt(3, &a, &b, &c, &d, nullptr, nullptr), nullptr);
    EXPECT_STREQ(one.book->errorMessage(), "index is out of range");
}

TEST(SheetFeatures, WrongSizesAreNamed) {
    const struct {
        std::uint16_t id;
        std::vector<Bytes> bodies;
        const char* text;
    } cases[] = {
        {20, {hex("01"), hex("0100"), hex("0200 01 6100")}, "Header size is incorrect"},
        {21, {hex("0300 00 6162")}, "Footer size is incorrect"},
        {131, {Bytes(1), Bytes(4)}, "HCenter size is incorrect"},
        {132, {Bytes(0)}, "VCenter size is incorrect"},
        {38, {Bytes(7)}, "Margin size is incorrect"},
        {41, {Bytes(9)}, "Margin size is incorrect"},
        {161, {Bytes(33), Bytes(35)}, "Setup size is incorrect"},
        {27, {Bytes(1), hex("0100 0000 0000"), hex("0000 00")}, "HorizontalPageBreaks size is incorrect"},
        {26, {hex("FFFF 0000 0000 0000")}, "VerticalPageBreaks size is incorrect"},
        {18, {Bytes(1)}, "Protect size is incorrect"},
        {19, {Bytes(0)}, "Password size is incorrect"},
        {99, {Bytes(1)}, "ObjProtect size is incorrect"},
        {221, {Bytes(1)}, "ScenarioProtect size is incorrect"},
        {160, {Bytes(3), Bytes(5)}, "Scl size is incorrect"},
        {65, {Bytes(9), Bytes(11)}, "Pane size is incorrect"},
        {29, {Bytes(8), hex("03 0000 0000 0000 0200 0000 0000 00 00")}, "Selection size is incorrect"},
        {2146, {Bytes(19), Bytes(24)}, "SheetExt size is incorrect"},
        {2151, {Bytes(18)}, "FeatHdr size is incorrect"},
        {2152,
         {Bytes(26), hex("6808 0000 0000000000000000 0300 00 00000000 0200 04000000 0000 0100 0200 0300 0400")},
         "Feat size is incorrect"},
        {2161, {Bytes(28)}, "FeatHdr11 size is incorrect"},
        {2162, {Bytes(26)}, "Feature11 size is incorrect"},
        {2167, {Bytes(17)}, "List12 size is incorrect"},
        {2197, {Bytes(37)}, "SortData size is incorrect"},
    };
    for (const auto& c : cases) {
        for (const Bytes& body : c.bodies) EXPECT_EQ(loadText({{c.id, body}}), c.text) << body.size() << " bytes";
    }
    EXPECT_EQ(loadText({{20, hex("0000")}, {21, hex("0000 00")}}), "ok") << "as some writers make them";
}

TEST(CellAddresses, AsTextAndFromIt) {
    NewSheet s;
    const struct {
        const char* text;
        const char* told;  // row, column, and r or c where relative; or the failure
    } cases[] = {
        {"A1", "0 0 rc"},
        {"$iv$65536", "65535 255 "},
        {"b$3", "2 1 c"},
        {"$AA12R", "11 26 r"},
        {"IW1", "Column is out of range"},
        {"A65537", "Row is out of range"},
        {"A0", "Row is out of range"},
        {"A", "incorrect token in formula"},
        {"A1:B2", "incorrect token in formula"},
        {"", "incorrect token in formula"},
    };
    for (const auto& c : cases) {
        int row = 0, col = 0;
        bool rowRelative = false, colRelative = false;
        std::string told = "?";
        if (s.sheet->parseCellAddress(c.text, &row, &col, &rowRelative, &colRelative)) {
            told = std::to_string(row) + " " + std::to_string(col) + " " + (rowRelative ? "r" : "") +
                   (colRelative ? "c" : "");
            EXPECT_TRUE(s.sheet->parseCellAddress(s.sheet->formatCellAddress(row, col, rowRelative, colRelative), &row,
                                                  &col, nullptr, nullptr));
        } else {
            told = s.book->errorMessage();
        }
        EXPECT_EQ(told, c.told) << c.text;
    }
    EXPECT_STREQ(s.sheet->formatCellAddress(2, 27, true, false), "$AB3");
    EXPECT_EQ(s.sheet->formatCellAddress(0, 256, true, true), nullptr);
    EXPECT_STREQ(s.book->errorMessage(), "col must be in range 0-255");
}

// What would be set there would be lost by a save.
TEST(SheetFeatures, AChartSheetAnswersDefaultsAndRefusesSetters) {
    std::vector<Record> all{bof8, boundSheet("C"), eof, {2057, hex("0006 2000 BB0D CC07 41000000 06000000")}, eof};
    const Book book = loaded(compoundFile(all));
    Sheet* const chart = book->getSheet(0);
    ASSERT_NE(chart, nullptr);
    bool (*const setters[])(Sheet&) = {
        [](Sheet& s) { return s.setLandscape(true); },
        [](Sheet& s) { return s.setHeaderText("a", 1); },
        [](Sheet& s) { return s.setMarginTop(1); },
        [](Sheet& s) { return s.setRowBreak(1, true); },
        [](Sheet& s) { return s.splitAt(1, 1); },
        [](Sheet& s) { return s.setZoomPercent(50); },
        [](Sheet& s) { return s.setTabPaletteColor(9); },
        [](Sheet& s) { return s.setProtected(true, nullptr, -1); },
        [](Sheet& s) { return s.addIgnoredErrorRange(1, 1, 1, 1, 1); },
        [](Sheet& s) { return s.addHyperlink("a", 1, 1, 1, 1); },
        [](Sheet& s) { return s.groupRowRange(1, 2, true); },
        [](Sheet& s) { return s.setShowsGridlines(false); },
        [](Sheet& s) { return s.writeNumber(1, 1, 2); },
        [](Sheet& s) { return s.writeString(1, 1, "a"); },
        [](Sheet& s) { return s.writeFormula(1, 1, "1+1"); },
        [](Sheet& s) { return s.setRow(1, 20); },
        [](Sheet& s) { return s.setColumn(1, 1, 20); },
        [](Sheet& s) { return s.addMerge(1, 2, 1, 2); },
        [](Sheet& s) { return s.insertRows(1, 2); },
    };
    for (const auto& set : setters) {
        EXPECT_FALSE(set(*chart)) << &set - setters;
        EXPECT_STREQ(book->errorMessage(), "a chart or macro sheet is kept as it came and can't be changed");
    }
    EXPECT_EQ(chart->marginTop(), 1.0);
    EXPECT_EQ(chart->zoomPercent(), 100);
    EXPECT_FALSE(chart->isProtected());
}

}  // namespace
}  // namespace vellum::test
