// Ranges as pictures in characters, and the labels that choose them.
#include "cli/show/show.h"

#include <gtest/gtest.h>

#include <clocale>
#include <fstream>
#include <sstream>

#include "cli/show/print_grid.h"
#include "cli/tables/area.h"
#include "cli/workbook/book_file.h"
#include "engine/api/enums.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"

namespace cli {
namespace {

/// Two sheets in either engine: texts, numbers, dates, what is hidden.
BookPtr sample(bool package) {
    BookPtr book(package ? vellum::vlCreateXMLBook<char>() : vellum::vlCreateBook<char>());
    book->setLocale("UTF-8");
    auto* const sheet = book->addSheet("Sales");
    auto* const date = book->newFormat();
    date->setNumFormat(book->newCustomNumFormat("yyyy-mm-dd"));
    auto* const percent = book->newFormat();
    percent->setNumFormat(10);
    sheet->writeString(0, 0, "product");
    sheet->writeString(0, 1, "since");
    sheet->writeString(1, 0, "anvil, the big one");
    sheet->writeNumber(1, 1, 45352, date);
    sheet->writeNumber(1, 2, 0.125, percent);
    sheet->writeString(2, 0, "bellows and more\nof it");
    sheet->writeBool(2, 2, true);
    sheet->writeError(2, 3, vellum::errorNotAvailable);
    sheet->writeString(3, 2, "hidden");
    sheet->setRowHidden(3, true);
    sheet->writeNumber(19, 0, 1234567890123);
    sheet->setColumn(0, 0, 9);
    sheet->setColumn(1, 3, 6);
    book->addSheet("2024 plan")->writeString(2, 2, "x");
    sheet->setNamedRangeByName("Since", 0, 1, 1, 1);
    return book;
}

std::string picture(vellum::IBookT<char>& book, const char* label, Fit fit = Fit::sheet, int width = 0) {
    SheetArea area;
    std::string error;
    if (!findArea(book, label, area, error)) return error;
    std::ostringstream out;
    printGrid(readGrid(book, area, fit, 1000), width, out);
    return out.str();
}

class Show : public testing::TestWithParam<bool> {
protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }
};
INSTANTIATE_TEST_SUITE_P(BothEngines, Show, testing::Bool());

TEST_P(Show, AsOnTheSheet) {
    const BookPtr book = sample(GetParam());
    EXPECT_EQ(picture(*book, ""), R"(   |      A      |     B      |   C    |   D    |
---+-------------+------------+--------+--------+
 1 | product     | since      |        |        |
 2 | anvil, the… | 2024-03-01 | 12.50% |        |
 3 | bellows and more of it   |  TRUE  |  #N/A  |
 : |
20 | 1.23457E+12 |            |        |        |
)");
    EXPECT_EQ(picture(*book, "A1:C2", Fit::content), R"(  |         A          |     B      |   C    |
--+--------------------+------------+--------+
1 | product            | since      |        |
2 | anvil, the big one | 2024-03-01 | 12.50% |
)");
    EXPECT_EQ(picture(*book, "A1:D2", Fit::content, 40), R"(  |         A          |     B      |
--+--------------------+------------+
1 | product            | since      |
2 | anvil, the big one | 2024-03-01 |
  … columns C to D do not fit
)");
}

TEST_P(Show, Labels) {
    const BookPtr book = sample(GetParam());
    const struct {
        const char *label, *cells;  // sheet, first and last row, first and last column
    } cases[] = {
        {"", "0 0 19 0 3"},
        {"[]", "0 0 19 0 3"},
        {"[B2]", "0 1 1 1 1"},
        {"[b2:c3]", "0 1 2 1 2"},
        {"[$B$2:C3]", "0 1 2 1 2"},
        {"skiph;[B2:C3](#1)", "0 1 2 1 2"},
        {"[R2C1:R3C4]", "0 1 2 0 3"},
        {"r2c1", "0 1 1 0 0"},
        {"[A:B]", "0 0 19 0 1"},
        {"2:3", "0 1 2 0 3"},
        {"[2$]", "1 2 2 2 2"},
        {"[2024 plan$A1:B2]", "1 0 1 0 1"},
        {"'2024 PLAN'!A1", "1 0 0 0 0"},
        {"2024 plan", "1 2 2 2 2"},
        {"since", "0 0 1 1 1"},
        {"none", "there is no area 'none'"},
        {"[none$A1]", "there is no sheet 'none'"},
        {"none!A1", "there is no sheet 'none'"},
        {"B2:A1", "0 0 1 0 1"},
        {"R0C1", "there is no area 'R0C1'"},
        {"[XFE1]", "there is no area 'XFE1'"},
    };
    for (const auto& c : cases) {
        SheetArea area;
        std::string found;
        if (findArea(*book, c.label, area, found)) {
            std::ostringstream text;
            text << area.sheet << ' ' << area.rowFirst << ' ' << area.rowLast << ' ' << area.colFirst << ' '
                 << area.colLast;
            found = text.str();
        }
        EXPECT_EQ(found, c.cells) << c.label;
    }
}

TEST(ShowCsv, ReadByTheModulesRules) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const std::string path = testing::TempDir() + "show me.csv";
    std::ofstream(path) << "\xEF\xBB\xBFname;price\n\"a;b\";1,5\n\n;TRUE\n";
    std::ostringstream out, errors;
    EXPECT_EQ(show({"csv:fsep=;;dsep=,;" + path, "", false, 0, "", 0}, out, errors), 0) << errors.str();
    EXPECT_EQ(out.str(), R"(  |  A   |   B   |
--+------+-------+
1 | name | price |
2 | a;b  |   1.5 |
3 |      |       |
4 |      | TRUE  |
)");
    out.str("");
    EXPECT_EQ(show({path + ".none", "", false, 0, "", 0}, out, errors), 2);
    EXPECT_NE(errors.str(), "");
    EXPECT_EQ(out.str(), "");
}

TEST(ShowHtml, APageWithEachCell) {
    const std::string path = testing::TempDir() + "show_html.csv", page = testing::TempDir() + "show.html";
    std::ofstream(path) << "a<b,12\n";
    std::ostringstream out, errors;
    EXPECT_EQ(show({path, "", false, 0, page, 0}, out, errors), 0) << errors.str();
    std::ifstream in(page);
    const std::string text((std::istreambuf_iterator<char>(in)), {});
    EXPECT_NE(text.find("a&lt;b"), std::string::npos);
    EXPECT_NE(text.find("B1: 12"), std::string::npos);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(show({path, "", false, 0, "/no such folder/x.html", 0}, out, errors), 2);
}

}  // namespace
}  // namespace cli
