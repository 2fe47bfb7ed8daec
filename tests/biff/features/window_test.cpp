// Panes, the size of cells on the screen, colours of tabs, groups of rows and columns.
#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

using Sheet = ISheetT<char>;

const Record activeCell{29, hex("03 0700 0200 0000 0100 0700 0700 02 02")};

TEST(Panes, AreFrozenAboveAndLeftOfACell) {
    const struct {
        int row, col;
        Bytes pane, window;  // no pane: not written
        std::vector<int> panes;
        int active;
    } cases[] = {
        {3, 2, hex("0200 0300 0300 0200 00 00"), hex("BE06 0000 0000"), {3, 1, 2, 0}, 0},
        {3, 0, hex("0000 0300 0300 0000 02 00"), hex("BE06 0000 0600"), {3, 2}, 2},
        {0, 2, hex("0200 0000 0000 0200 01 00"), hex("BE06 0500 0000"), {3, 1}, 1},
        {0, 0, {}, hex("B606 0500 0600"), {3}, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.row << ' ' << c.col);
        OneSheet one({{574, hex("B606 0500 0600 4000 0000 0000 0000 00000000")}, activeCell});
        int row = 9, col = 9;
        EXPECT_FALSE(one.sheet->splitPosition(&row, &col));
        EXPECT_STREQ(one.book->errorMessage(), "worksheet is not splitted");
        EXPECT_TRUE(one.sheet->splitAt(c.row, c.col));
        EXPECT_TRUE(one.sheet->splitPosition(&row, &col));
        EXPECT_EQ(row * 10 + col, c.row * 10 + c.col);
        const auto out = savedRecords(*one.book);
        const auto panes = only(out, 65);
        EXPECT_EQ(panes.empty() ? Bytes() : panes[0].body, c.pane);
        const Bytes window = only(out, 574).at(0).body;
        EXPECT_EQ(Bytes(window.begin(), window.begin() + 6), c.window);
        const auto selections = only(out, 29);
        ASSERT_EQ(selections.size(), c.panes.size());
        for (std::size_t i = 0; i < selections.size(); ++i) {
            const int pane = std::to_integer<int>(selections[i].body[0]);
            EXPECT_EQ(pane, c.panes[i]);
            EXPECT_EQ(std::to_integer<int>(selections[i].body[1]), pane == c.active ? 7 : 0) << "the active cell";
        }
    }
    // A cut at nothing that a file has stays.
    const Record nothing{65, hex("0000 0000 0000 0000 03 00")};
    OneSheet loaded({nothing});
    EXPECT_EQ(only(savedRecords(*loaded.book), 65), std::vector{nothing});
    EXPECT_FALSE(loaded.sheet->splitAt(65536, 0));
    EXPECT_STREQ(loaded.book->errorMessage(), "row must be in range 0-65535");
}

TEST(Panes, SizeOfCells) {
    NewSheet s;
    EXPECT_EQ(s.sheet->zoomPercent(), 100);
    EXPECT_TRUE(s.sheet->setZoomPercent(100));
    EXPECT_TRUE(only(savedRecords(*s.book), 160).empty());
    EXPECT_TRUE(s.sheet->setZoomPercent(75));
    EXPECT_EQ(only(savedRecords(*s.book), 160).at(0).body, hex("4B00 6400"));
    for (const int zoom : {0, -5, 65536}) EXPECT_FALSE(s.sheet->setZoomPercent(zoom)) << zoom;
    EXPECT_EQ(s.sheet->zoomPercent(), 75);
    EXPECT_EQ(OneSheet({{160, hex("0300 0400")}}).sheet->zoomPercent(), 75);
    EXPECT_EQ(OneSheet({{160, hex("0300 0000")}}).sheet->zoomPercent(), 0);
    EXPECT_TRUE(only(savedRecords(*OneSheet({{160, hex("0700 0700")}}).book), 160).empty());
}

TEST(TabColor, OfThePaletteAndByItsParts) {
    const Bytes shortOne = hex("6208 0000 0000000000000000 14000000 0A000000");
    const Bytes full = hex("6208 0000 0000000000000000 28000000 0A000000 8A010000 03000000 05000000 000000000000E03F");
    const struct {
        const char* what;
        Bytes before;
        bool (*set)(Sheet&);
        Bytes after;
    } cases[] = {
        {"an index",
         {},
         [](Sheet& s) { return s.setTabPaletteColor(12); },
         hex("6208 0000 0000000000000000 14000000 0C000000")},
        {"an index in a short record", shortOne, [](Sheet& s) { return s.setTabPaletteColor(12); },
         hex("6208 0000 0000000000000000 14000000 0C000000")},
        {"an index in a full record", full, [](Sheet& s) { return s.setTabPaletteColor(12); },
         hex("6208 0000 0000000000000000 28000000 0C000000 8C010000 01000000 0C000000 0000000000000000")},
        {"red",
         {},
         [](Sheet& s) { return s.setTabRgbColor(255, 0, 16); },
         hex("6208 0000 0000000000000000 28000000 0A000000 0A000000 02000000 FF0010FF 0000000000000000")},
        {"red in a short record", shortOne, [](Sheet& s) { return s.setTabRgbColor(255, 0, 16); },
         hex("6208 0000 0000000000000000 28000000 0A000000 0A000000 02000000 FF0010FF 0000000000000000")},
        {"blue in a full record", full, [](Sheet& s) { return s.setTabRgbColor(0, 0, 255); },
         hex("6208 0000 0000000000000000 28000000 0C000000 8C010000 02000000 0000FFFF 0000000000000000")},
        {"no colour", {}, [](Sheet& s) { return s.setTabRgbColor(0, 256, 0) || s.setTabPaletteColor(128); }, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        OneSheet one(c.before.empty() ? std::vector<Record>{} : std::vector<Record>{{2146, c.before}});
        EXPECT_EQ(c.set(*one.sheet), !c.after.empty());
        const auto found = only(savedRecords(*one.book), 2146);
        EXPECT_EQ(found.empty() ? Bytes() : found[0].body, c.after);
    }
}

std::vector<int> levels(const std::vector<Record>& rows) {
    std::vector<int> found;
    for (const Record& row : rows) found.push_back(std::to_integer<int>(row.body[12]));
    return found;
}

TEST(Outline, GroupsOfRows) {
    NewSheet s;
    auto& sheet = *s.sheet;
    EXPECT_TRUE(sheet.groupRowRange(1, 3, false)) << s.book->errorMessage();
    EXPECT_EQ(levels(only(savedRecords(*s.book), 520)), (std::vector{1, 1, 1})) << "nothing is folded";
    EXPECT_TRUE(sheet.groupRowRange(1, 3, true));
    EXPECT_EQ(levels(only(savedRecords(*s.book), 520)), (std::vector{0x22, 0x22, 0x22, 0x10}));
    EXPECT_EQ(only(savedRecords(*s.book), 128).at(0).body, hex("0000 0000 0300 0000"));
    EXPECT_TRUE(sheet.isRowHidden(2));
    const struct {
        int first, last;
        const char* text;
    } refused[] = {
        {3, 5, "detect overlap"},
        {-1, 3, "rowFirst must be in range 0-65535"},
        {0, 65536, "rowLast must be in range 0-65535"},
        {5, 4, "must be rowFirst <= rowLast"},
    };
    for (const auto& r : refused) {
        EXPECT_FALSE(sheet.groupRowRange(r.first, r.last, true));
        EXPECT_STREQ(s.book->errorMessage(), r.text);
    }
    for (int level = 3; level <= 7; ++level) EXPECT_TRUE(sheet.groupRowRange(1, 3, false));
    EXPECT_FALSE(sheet.groupRowRange(1, 3, false));
    EXPECT_STREQ(s.book->errorMessage(), "exceeded outline level");
    EXPECT_EQ(levels(only(savedRecords(*s.book), 520)), (std::vector{7, 7, 7, 0}));

    NewSheet above;
    above.sheet->setSummaryBelow(false);
    EXPECT_TRUE(above.sheet->groupRowRange(0, 1, true));
    EXPECT_TRUE(above.sheet->groupRowRange(5, 65535, true));
    EXPECT_TRUE(above.sheet->isRowHidden(65535));
    EXPECT_EQ(levels(only(savedRecords(*above.book), 520)).size(), 2U + 1U + 65531U) << "row 4 stands for the second";
}

TEST(Outline, GroupsOfColumns) {
    // Columns 2 to 9 are wide, 4 to 5 of them hidden.
    OneSheet one({{125, hex("0200 0300 0010 1000 0000 0000")},
                  {125, hex("0400 0500 0010 1000 0100 0000")},
                  {125, hex("0600 0900 0010 1000 0000 0000")}});
    EXPECT_TRUE(one.sheet->groupColumnRange(1, 6, true)) << one.book->errorMessage();
    const auto out = savedRecords(*one.book);
    const auto columns = only(out, 125);
    ASSERT_EQ(columns.size(), 4U);
    EXPECT_EQ(columns[0].body, hex("0100 0100 2509 0F00 0101 0000"));
    EXPECT_EQ(columns[1].body, hex("0200 0600 0010 1000 0101 0000"));
    EXPECT_EQ(columns[2].body, hex("0700 0700 0010 1000 0010 0000"));
    EXPECT_EQ(columns[3].body, hex("0800 0900 0010 1000 0000 0000"));
    EXPECT_EQ(only(out, 128).at(0).body, hex("0000 0000 0000 0200"));
    EXPECT_TRUE(one.sheet->groupColumnRange(250, 255, true)) << "nothing stands behind the last column";
    EXPECT_TRUE(one.sheet->groupColumnRange(0, 7, false)) << "other levels";
    EXPECT_FALSE(one.sheet->isColumnHidden(3));
    const struct {
        int first, last;
        const char* text;
    } refused[] = {
        {256, 3, "colFirst must be in range 0-255"},
        {0, 256, "colLast must be in range 0-255"},
        {5, 4, "must be colFirst <= colLast"},
    };
    for (const auto& r : refused) {
        EXPECT_FALSE(one.sheet->groupColumnRange(r.first, r.last, true));
        EXPECT_STREQ(one.book->errorMessage(), r.text);
    }
    for (int level = 3; level <= 7; ++level) EXPECT_TRUE(one.sheet->groupColumnRange(2, 2, false));
    const auto before = savedRecords(*one.book);
    EXPECT_FALSE(one.sheet->groupColumnRange(0, 3, true));
    EXPECT_STREQ(one.book->errorMessage(), "exceeded outline level");
    EXPECT_EQ(savedRecords(*one.book), before);
}

}  // namespace
}  // namespace vellum::test
