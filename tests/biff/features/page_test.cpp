// Print settings and page breaks: what setters write, what real records read as, and what is refused.
#include <cmath>

#include "tests/biff/sheet/fixture.h"

namespace vellum::test {
namespace {

using Sheet = ISheetT<char>;

const Record newSetup{161, hex("0000 6400 0100 0100 0100 0600 0000 0000 000000000000E03F 000000000000E03F 0000")};

TEST(PageSetup, EachSetterWritesItsRecord) {
    const struct {
        const char* what;
        bool (*set)(Sheet&);
        Record expected;
    } cases[] = {
        {"landscape",
         [](Sheet& s) { return s.setLandscape(true); },
         {161, hex("0000 6400 0100 0100 0100 0000 0000 0000 000000000000E03F 000000000000E03F 0000")}},
        {"portrait",
         [](Sheet& s) { return s.setLandscape(false); },
         {161, hex("0000 6400 0100 0100 0100 0200 0000 0000 000000000000E03F 000000000000E03F 0000")}},
        {"paper",
         [](Sheet& s) { return s.setPaperCode(9); },
         {161, hex("0900 6400 0100 0100 0100 0200 0000 0000 000000000000E03F 000000000000E03F 0000")}},
        {"scale",
         [](Sheet& s) { return s.setPrintZoomPercent(55); },
         {161, hex("0000 3700 0100 0100 0100 0200 0000 0000 000000000000E03F 000000000000E03F 0000")}},
        {"fit",
         [](Sheet& s) { return s.setPrintFitPages(2, 3); },
         {161, hex("0000 6400 0100 0200 0300 0200 0000 0000 000000000000E03F 000000000000E03F 0000")}},
        {"fit is a mode", [](Sheet& s) { return s.setPrintFitPages(2, 3); }, {129, hex("C105")}},
        {"a scale ends it",
         [](Sheet& s) { return s.setPrintFitPages(2, 3) && s.setPrintZoomPercent(50); },
         {129, hex("C104")}},
        {"header", [](Sheet& s) { return s.setHeaderText("&P\xC3\xA9", 0.25); }, {20, hex("0300 01 2600 5000 E900")}},
        {"margin of the header",
         [](Sheet& s) { return s.setHeaderText("", 0.25); },
         {161, hex("0000 6400 0100 0100 0100 0600 0000 0000 000000000000D03F 000000000000E03F 0000")}},
        {"footer", [](Sheet& s) { return s.setFooterText("x", 0.5); }, {21, hex("0100 01 7800")}},
        {"an empty footer", [](Sheet& s) { return s.setFooterText(nullptr, 0.5); }, {21, {}}},
        {"across", [](Sheet& s) { return s.setCentersHorizontally(true); }, {131, hex("0100")}},
        {"down", [](Sheet& s) { return s.setCentersVertically(true); }, {132, hex("0100")}},
        {"left", [](Sheet& s) { return s.setMarginLeft(0.5); }, {38, hex("000000000000E03F")}},
        {"right", [](Sheet& s) { return s.setMarginRight(0.5); }, {39, hex("000000000000E03F")}},
        {"top", [](Sheet& s) { return s.setMarginTop(0.5); }, {40, hex("000000000000E03F")}},
        {"bottom", [](Sheet& s) { return s.setMarginBottom(0.5); }, {41, hex("000000000000E03F")}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        NewSheet s;
        EXPECT_TRUE(c.set(*s.sheet)) << s.book->errorMessage();
        EXPECT_STREQ(s.book->errorMessage(), "ok");
        EXPECT_EQ(only(savedRecords(*s.book), c.expected.id), std::vector{c.expected});
        // On a loaded sheet nothing else appears or changes.
        OneSheet one(std::vector<Record>{});
        EXPECT_TRUE(c.set(*one.sheet));
        const auto bare = idsOf(savedRecords(*OneSheet(std::vector<Record>{}).book));
        for (const std::uint16_t id : idsOf(savedRecords(*one.book))) {
            const bool header = id == 20 || id == 21;  // each sets two records
            EXPECT_TRUE(std::ranges::count(bare, id) != 0 || id == c.expected.id || id == 161 || header) << id;
        }
    }
}

TEST(PageSetup, WhatLoadedRecordsRead) {
    // Landscape, scale 80, A4, fit to 1 by 0 pages, resolutions, header 0.3, footer 0.25, 2 copies.
    const Record setup{161, hex("0900 5000 0100 0100 0000 0000 5802 5802 333333333333D33F 000000000000D03F 0200")};
    OneSheet one({setup,
                  {20, hex("0200 00 2641")},
                  {21, hex("0100 01 3C04")},
                  {131, hex("0100")},
                  {132, hex("0100")},
                  {38, hex("000000000000F03F")},
                  {129, hex("C105")}});
    auto& s = *one.sheet;
    EXPECT_TRUE(s.isLandscape());
    EXPECT_EQ(s.paperCode(), 9);
    EXPECT_EQ(s.printZoomPercent(), 80);
    int width = 0, height = 9;
    EXPECT_TRUE(s.printFitPages(&width, &height));
    EXPECT_EQ(width * 10 + height, 10);
    EXPECT_STREQ(s.headerText(), "&A");
    EXPECT_STREQ(s.footerText(), "\xD0\xBC");
    EXPECT_EQ(s.headerMargin(), 0.3);
    EXPECT_EQ(s.footerMargin(), 0.25);
    EXPECT_TRUE(s.centersHorizontally() && s.centersVertically());
    EXPECT_EQ(s.marginLeft(), 1.0);
    EXPECT_EQ(s.marginRight(), 0.75);
    EXPECT_EQ(s.marginTop() + s.marginBottom(), 2.0);
    EXPECT_TRUE(s.printFitPages(nullptr, nullptr));

    // Where the printer's settings do not count, neither do orientation and scale.
    OneSheet rubbish({{161, hex("0900 5000 0100 0100 0100 0400 5802 5802 333333333333D33F 000000000000D03F 0200")}});
    EXPECT_FALSE(rubbish.sheet->isLandscape());
    EXPECT_EQ(rubbish.sheet->printZoomPercent(), 100);
    EXPECT_TRUE(rubbish.sheet->setPrintFitPages(1, 1));
    EXPECT_EQ(only(savedRecords(*rubbish.book), 161).at(0).body,
              hex("0000 6400 0100 0100 0100 0200 0000 0000 333333333333D33F 000000000000D03F 0000"))
        << "a page does not turn because it is fitted";
    const auto none = idsOf(savedRecords(*OneSheet(std::vector<Record>{}).book));
    for (const int id : {20, 21, 131, 132, 161, 29, 38}) EXPECT_EQ(std::ranges::count(none, id), 0) << id;
}

TEST(PageSetup, RecordsOfTheOlderLayout) {
    OneSheet one({{20, hex("02 2641")}, {21, {}}, {27, hex("0200 0500 0300")}, {26, hex("0100 0700")}}, true);
    ASSERT_NE(one.sheet, nullptr) << one.book->errorMessage();
    EXPECT_STREQ(one.sheet->headerText(), "&A");
    EXPECT_STREQ(one.sheet->footerText(), "");
    EXPECT_EQ(one.sheet->rowBreakAt(1), 3);
    const auto out = savedRecords(*one.book);
    EXPECT_EQ(only(out, 20).at(0).body, hex("0200 00 2641"));
    EXPECT_EQ(only(out, 21).at(0).body, Bytes());
    EXPECT_EQ(only(out, 27).at(0).body, hex("0200 0300 0000 FF00 0500 0000 FF00"));
    EXPECT_EQ(only(out, 26).at(0).body, hex("0100 0700 0000 FFFF"));
}

TEST(PageSetup, WhatIsRefused) {
    NewSheet s;
    const std::string longest(255, 'x'), tooLong(256, 'x');
    const struct {
        bool done;
        const char* text;
    } cases[] = {
        {s.sheet->setHeaderText(longest.c_str(), 1), "ok"},
        {s.sheet->setHeaderText(tooLong.c_str(), 2), "string is too long"},
        {s.sheet->setFooterText(tooLong.c_str(), 2), "string is too long"},
        {s.sheet->setPaperCode(-1), "value must be in range 0-65535"},
        {s.sheet->setPrintZoomPercent(65536), "value must be in range 0-65535"},
        {s.sheet->setPrintFitPages(1, -1), "value must be in range 0-65535"},
    };
    EXPECT_TRUE(cases[0].done);
    for (const auto& c : std::span(cases).subspan(1)) EXPECT_FALSE(c.done) << c.text;
    EXPECT_STREQ(s.book->errorMessage(), cases[5].text);
    EXPECT_FALSE(s.sheet->setFooterText(tooLong.c_str(), 2));
    EXPECT_STREQ(s.book->errorMessage(), "string is too long");
    EXPECT_EQ(s.sheet->headerMargin(), 1.0) << "a text that is refused sets no margin";
    EXPECT_EQ(only(savedRecords(*s.book), 129).at(0).body, hex("C104"));
}

TEST(PageBreaks, AreSetOnceAndSortedBySaving) {
    NewSheet s;
    auto& sheet = *s.sheet;
    const struct {
        bool expected;
        bool (*act)(Sheet&);
        const char* text;
    } steps[] = {
        {true, [](Sheet& x) { return x.setRowBreak(65535, true); }, "ok"},
        {true, [](Sheet& x) { return x.setRowBreak(5, true); }, "ok"},
        {false, [](Sheet& x) { return x.setRowBreak(5, true); }, "pagebreak already exists"},
        {false, [](Sheet& x) { return x.setRowBreak(6, false); }, "pagebreak not found"},
        {false, [](Sheet& x) { return x.setRowBreak(65536, true); }, "row must be in range 0-65535"},
        {false, [](Sheet& x) { return x.setColumnBreak(256, true); }, "col must be in range 0-255"},
        {true, [](Sheet& x) { return x.setColumnBreak(255, true); }, "ok"},
        {true, [](Sheet& x) { return x.setColumnBreak(3, true); }, "ok"},
        {true, [](Sheet& x) { return x.setColumnBreak(255, false); }, "ok"},
        {false, [](Sheet& x) { return x.rowBreakAt(2) != -1; }, "index is out of range"},
        {false, [](Sheet& x) { return x.columnBreakAt(-1) != -1; }, "index is out of range"},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(step.act(sheet), step.expected) << step.text;
        EXPECT_STREQ(s.book->errorMessage(), step.text);
    }
    EXPECT_EQ(sheet.rowBreakAt(0), 65535);
    const auto out = savedRecords(*s.book);
    EXPECT_EQ(only(out, 27).at(0).body, hex("0200 0500 0000 FF00 FFFF 0000 FF00"));
    EXPECT_EQ(only(out, 26).at(0).body, hex("0100 0300 0000 FFFF"));
    EXPECT_EQ(sheet.rowBreakAt(0), 5);

    NewSheet many;
    for (int row = 0; row < 1026; ++row) EXPECT_TRUE(many.sheet->setRowBreak(row, true));
    EXPECT_FALSE(many.sheet->setRowBreak(1026, true));
    EXPECT_STREQ(many.book->errorMessage(), "number of pagebreaks is exceed limit");
    EXPECT_EQ(many.sheet->rowBreakTotal(), 1026);
}

TEST(PageBreaks, SpansOfLoadedOnesStayAndEmptyRecordsGo) {
    OneSheet one({{27, hex("0100 0900 0100 0300")}, {26, hex("0000")}});
    EXPECT_TRUE(one.sheet->setRowBreak(2, true));
    const auto out = savedRecords(*one.book);
    EXPECT_EQ(only(out, 27).at(0).body, hex("0200 0200 0000 FF00 0900 0100 0300"));
    EXPECT_TRUE(only(out, 26).empty());
}

}  // namespace
}  // namespace vellum::test
