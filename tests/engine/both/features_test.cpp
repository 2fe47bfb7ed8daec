// Features of a sheet that either engine has: what was set is told again, at once and after a save and a load.
#include <functional>

#include "tests/engine/both/engines.h"

namespace vellum {
namespace {

using Sheet = ISheetT<char>;

class Features : public EachEngine {};
INSTANTIATE_FOR_EACH_ENGINE(Features);

/// Numbers of an answer, an area for one, as a text.
template <class... Numbers>
std::string listed(Numbers... numbers) {
    std::string text;
    ((text += std::to_string(static_cast<int>(numbers)) + " "), ...);
    return text;
}

struct Case {
    const char* what;
    std::function<bool(Sheet&)> set;
    std::function<std::string(Sheet&)> get;
    std::string before, after;
};

const Case cases[] = {
    {"landscape", [](Sheet& s) { return s.setLandscape(true); }, [](Sheet& s) { return listed(s.isLandscape()); }, "0 ",
     "1 "},
    {"paper", [](Sheet& s) { return s.setPaperCode(9); }, [](Sheet& s) { return listed(s.paperCode()); }, "0 ", "9 "},
    {"print zoom", [](Sheet& s) { return s.setPrintZoomPercent(55); },
     [](Sheet& s) { return listed(s.printZoomPercent()); }, "100 ", "55 "},
    {"fit", [](Sheet& s) { return s.setPrintFitPages(2, 3); },
     [](Sheet& s) {
         int width = 0, height = 0;
         const bool fits = s.printFitPages(&width, &height);
         return listed(fits, width, height);
     },
     "0 1 1 ", "1 2 3 "},
    {"header", [](Sheet& s) { return s.setHeaderText("&CPage &P\xC3\xA9", 0.25); },
     [](Sheet& s) { return s.headerText() + listed(s.headerMargin() * 100); }, "",
     "&CPage &P\xC3\xA9"
     "25 "},
    {"centred", [](Sheet& s) { return s.setCentersHorizontally(true) && s.setCentersVertically(true); },
     [](Sheet& s) { return listed(s.centersHorizontally(), s.centersVertically()); }, "0 0 ", "1 1 "},
    {"margins",
     [](Sheet& s) {
         return s.setMarginLeft(0.5) && s.setMarginRight(1.5) && s.setMarginTop(2.5) && s.setMarginBottom(3.5);
     },
     [](Sheet& s) {
         return listed(s.marginLeft() * 10, s.marginRight() * 10, s.marginTop() * 10, s.marginBottom() * 10);
     },
     "", "5 15 25 35 "},
    {"breaks", [](Sheet& s) { return s.setRowBreak(5, true) && s.setColumnBreak(3, true); },
     [](Sheet& s) {
         return listed(s.rowBreakTotal(), s.columnBreakTotal()) +
                (s.rowBreakTotal() > 0 ? listed(s.rowBreakAt(0), s.columnBreakAt(0)) : "");
     },
     "0 0 ", "1 1 5 3 "},
    {"panes", [](Sheet& s) { return s.splitAt(3, 2); },
     [](Sheet& s) {
         int row = 0, col = 0;
         return s.splitPosition(&row, &col) ? listed(row, col) : "none";
     },
     "none", "3 2 "},
    {"zoom", [](Sheet& s) { return s.setZoomPercent(75); }, [](Sheet& s) { return listed(s.zoomPercent()); }, "100 ",
     "75 "},
    {"rows in a group", [](Sheet& s) { return s.groupRowRange(1, 2, true); },
     [](Sheet& s) { return listed(s.isRowHidden(1), s.isRowHidden(3)); }, "0 0 ", "1 0 "},
    {"columns in a group", [](Sheet& s) { return s.groupColumnRange(1, 2, true); },
     [](Sheet& s) { return listed(s.isColumnHidden(1), s.isColumnHidden(3)); }, "0 0 ", "1 0 "},
    {"protection", [](Sheet& s) { return s.setProtected(true, "secret", -1); },
     [](Sheet& s) { return listed(s.isProtected()); }, "0 ", "1 "},
    {"links",
     [](Sheet& s) {
         return s.addHyperlink("http://example.org/", 1, 2, 3, 4) && s.addHyperlink("S!A1", 0, 0, 0, 0) &&
                s.removeHyperlinkAt(1);
     },
     [](Sheet& s) {
         int a = 0, b = 0, c = 0, d = 0;
         const std::string target = s.hyperlinkTotal() > 0 ? s.hyperlinkAt(0, &a, &b, &c, &d) : "";
         return target + listed(s.hyperlinkTotal(), a, b, c, d);
     },
     "0 0 0 0 0 ", "http://example.org/1 1 2 3 4 "},
    {"rows inserted", [](Sheet& s) { return s.writeNumber(3, 1, 7) && s.insertRows(1, 2); },
     [](Sheet& s) { return listed(s.readNumber(5, 1)); }, "0 ", "7 "},
    {"columns removed", [](Sheet& s) { return s.writeNumber(3, 4, 7) && s.removeColumns(0, 1); },
     [](Sheet& s) { return listed(s.readNumber(3, 2)); }, "0 ", "7 "},
};

TEST_P(Features, WhatIsSetIsToldAgain) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        book = createBook(GetParam());
        ASSERT_TRUE(book->setLocale("UTF-8"));
        Sheet* const sheet = book->addSheet("S");
        ASSERT_NE(sheet, nullptr);
        EXPECT_TRUE(c.before.empty() || c.get(*sheet) == c.before) << c.get(*sheet);
        EXPECT_TRUE(c.set(*sheet)) << error();
        EXPECT_EQ(error(), "ok");
        EXPECT_EQ(c.get(*sheet), c.after);
        const BookPtr<char> again = reloaded();
        ASSERT_NE(again->getSheet(0), nullptr);
        EXPECT_EQ(c.get(*again->getSheet(0)), c.after);
    }
}

}  // namespace
}  // namespace vellum
