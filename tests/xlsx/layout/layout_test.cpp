// Rows and columns that come and go.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>
#include <utility>

#include "tests/support/rounds.h"
#include "tests/xlsx/sheet/sheet_fixture.h"
#include "xlsx/layout/moved_tables.h"
#include "xlsx/layout/range_index.h"

namespace vellum::test {
namespace {

using Place = std::pair<int, int>;

/// What a sheet shows of itself.
struct Shown {
    std::map<Place, std::string> cells;  // formula text, or value
    std::map<int, std::string> rows;     // height, hidden, level
    std::vector<std::array<int, 4>> merges;
    std::vector<std::string> names;
    std::map<std::string, std::array<int, 4>> areas;  // of names
    std::string filter;
    std::array<int, 4> filterRange{};
    std::set<int> filterColumns;  // from the sheet's first column

    bool operator==(const Shown&) const = default;
};

/// Rows without a number follow each other from the first one that was loaded.
Shown shownBy(TestSheet<>& sheet, int firstLoaded = 0) {
    Shown shown;
    int row = 0, col = 0;
    for (; sheet->cellFrom(&row, &col); ++col) {
        shown.cells[{row, col}] = sheet->isFormulaCell(row, col) ? "=" + sheet.formula(row, col)
                                                                 : std::to_string(sheet->readNumber(row, col, nullptr));
    }
    int next = firstLoaded;
    for (const auto& element : sheet->root().sheetData().row()) {
        const int at = element.isset_r() ? static_cast<int>(element.r()) - 1 : next;
        next = at + 1;
        if (!element.isset_ht()) continue;
        shown.rows[at] =
            std::to_string(element.ht()) + (element.hidden() ? "h" : "") + std::to_string(element.outlineLevel());
    }
    for (int i = 0; i < sheet->mergeTotal(); ++i) {
        std::array<int, 4> at{};
        sheet->mergeByIndex(i, &at[0], &at[1], &at[2], &at[3]);
        shown.merges.push_back(at);
    }
    if (const auto* const names = sheet.book.workbook().find_definedNames()) {
        for (const auto& name : names->definedName()) {
            shown.names.emplace_back(name.text().begin(), name.text().end());
            std::array<int, 4> at{};
            const std::string called(name.name().begin(), name.name().end());
            if (sheet->namedRangeByName(called.c_str(), &at[0], &at[1], &at[2], &at[3], -1, nullptr))
                shown.areas[called] = at;
        }
    }
    if (const auto* const filter = sheet->root().find_autoFilter()) {
        shown.filter = filter->ref();
        for (const auto& column : filter->filterColumn()) shown.filter += " " + std::to_string(column.colId());
        if (const auto range = readCellRange(std::string_view(filter->ref()))) {
            shown.filterRange = {static_cast<int>(range->rowFirst), static_cast<int>(range->rowLast),
                                 static_cast<int>(range->colFirst), static_cast<int>(range->colLast)};
            for (const auto& column : filter->filterColumn())
                shown.filterColumns.insert(static_cast<int>(range->colFirst + column.colId()));
        }
    }
    return shown;
}

struct Change {
    bool inserts, rows;
    int first, count;
};

/// Where an index goes; -1 when it goes away.
int moved(int at, const Change& change) {
    if (at < change.first) return at;
    if (change.inserts) return at + change.count;
    return at < change.first + change.count ? -1 : at - change.count;
}

/// A range by what becomes of each index in it.
bool movedRange(int& first, int& last, const Change& change) {
    int newFirst = -1, newLast = -1;
    for (int i = first; i <= last; ++i) {
        const int to = moved(i, change);
        if (to < 0) continue;
        if (newFirst < 0) newFirst = to;
        newLast = to;
    }
    first = newFirst;
    last = newLast;
    return newFirst >= 0;
}

Shown afterwards(const Shown& before, const Change& change) {
    Shown after;
    for (const auto& [at, text] : before.cells) {
        const int row = change.rows ? moved(at.first, change) : at.first;
        const int col = change.rows ? at.second : moved(at.second, change);
        if (row >= 0 && col >= 0) after.cells[{row, col}] = text;
    }
    for (const auto& [at, text] : before.rows) {
        const int row = change.rows ? moved(at, change) : at;
        if (row >= 0) after.rows[row] = text;
    }
    for (auto at : before.merges) {
        if (!movedRange(at[change.rows ? 0 : 2], at[change.rows ? 1 : 3], change)) continue;
        if (at[0] != at[1] || at[2] != at[3]) after.merges.push_back(at);
    }
    for (auto [name, at] : before.areas) {
        if (movedRange(at[change.rows ? 0 : 2], at[change.rows ? 1 : 3], change)) after.areas[name] = at;
    }
    after.filterRange = before.filterRange;
    if (before.filter.empty() ||
        !movedRange(after.filterRange[change.rows ? 0 : 2], after.filterRange[change.rows ? 1 : 3], change)) {
        after.filterRange = {};
        return after;
    }
    for (const int col : before.filterColumns) {
        const int to = change.rows ? col : moved(col, change);
        if (to >= 0) after.filterColumns.insert(to);
    }
    return after;
}

class RandomSheet {
public:
    explicit RandomSheet(unsigned seed) : _random(seed) {}

    int pick(int below) { return static_cast<int>(_random() % static_cast<unsigned>(below)); }

    /// Groups of formulas lie in columns or rows, some apart from their master.
    std::string rows() {
        std::map<Place, std::string> cells;
        for (int i = 0; i < 30; ++i) cells[{pick(20), pick(12)}] = "<v>" + std::to_string(pick(90)) + "</v>";
        for (int si = 0; si < 4; ++si) {
            const int row = pick(15), col = pick(8), height = 1 + pick(5), width = 1 + pick(4);
            const std::string number = std::to_string(pick(3) == 0 ? 0 : si);
            const std::string ref = cellRangeText({u(row), u(row + height - 1), u(col), u(col + width - 1)});
            for (int r = 0; r < height; ++r) {
                for (int c = 0; c < width; ++c) {
                    const bool master = r == 0 && c == 0;
                    cells[{row + r, col + c}] = master ? "<f t=\"shared\" ref=\"" + ref + "\" si=\"" + number +
                                                             "\">A1+$B$2*C" + std::to_string(row + 3) + "</f>"
                                                       : "<f t=\"shared\" si=\"" + number + "\"/>";
                }
            }
        }
        cells[{pick(20), pick(12)}] = "<f t=\"array\" ref=\"C3:D6\">B2:B5*2</f><v>1</v>";
        std::string xml;
        const bool numbered = pick(4) != 0;
        for (int row = 0; row < 22; ++row) {
            xml += numbered ? "<row r=\"" + std::to_string(row + 1) + "\"" : "<row";
            if (pick(3) == 0) xml += " ht=\"" + std::to_string(10 + pick(20)) + "\" hidden=\"true\" outlineLevel=\"1\"";
            xml += " spans=\"1:14\">";
            for (const auto& [at, content] : cells) {
                if (at.first == row)
                    xml += "<c r=\"" + cellAddressText(u(row), u(at.second)) + "\">" + content + "</c>";
            }
            xml += "</row>";
        }
        return xml;
    }

    std::string merges() {
        std::string xml = "<mergeCells>";
        for (int i = 0; i < 4; ++i) {
            const int row = pick(20), col = pick(12);
            xml +=
                "<mergeCell ref=\"" + cellRangeText({u(row), u(row + 1 + pick(4)), u(col), u(col + pick(4))}) + "\"/>";
        }
        return xml + "</mergeCells>";
    }

    std::string filter() {
        const int row = pick(6), col = pick(8), width = 1 + pick(5);
        std::string xml =
            "<autoFilter ref=\"" + cellRangeText({u(row), u(row + 5 + pick(9)), u(col), u(col + width - 1)}) + "\">";
        for (int id = 0; id < width; ++id) {
            if (pick(3) == 0)
                xml += "<filterColumn colId=\"" + std::to_string(id) +
                       "\"><filters><filter val=\"1\"/></filters></filterColumn>";
        }
        return xml + "</autoFilter>";
    }

    Change change() { return {pick(2) != 0, pick(2) != 0, pick(20), 1 + pick(4)}; }

private:
    static std::uint32_t u(int n) { return static_cast<std::uint32_t>(n); }
    std::mt19937 _random;
};

bool apply(TestSheet<>& sheet, const Change& change) {
    const int last = change.first + change.count - 1;
    if (change.rows) {
        return change.inserts ? sheet->insertRows(change.first, last, true)
                              : sheet->removeRows(change.first, last, true);
    }
    return change.inserts ? sheet->insertColumns(change.first, last, true)
                          : sheet->removeColumns(change.first, last, true);
}

TEST(Layout, EverythingGoesWhereAModelPutsIt) {
    for (unsigned seed = 1; seed <= rounds(5000); ++seed) {
        SCOPED_TRACE(seed);
        RandomSheet random(seed);
        const bool isWhole = random.pick(4) != 0;  // or loaded from some row on, to another
        const int firstRow = isWhole ? -1 : random.pick(6), from = std::max(firstRow, 0);
        TestSheet sheet(random.rows(), firstRow, isWhole ? -1 : firstRow + random.pick(20), "",
                        random.filter() + random.merges());
        sheet.book.workbook().sheets().sheet().append().name(L"S");
        for (const char* const name : {"one", "two"}) {
            const int row = random.pick(20), col = random.pick(12);
            ASSERT_TRUE(
                sheet->setNamedRangeByName(name, row, row + random.pick(5), col, col + random.pick(3), -1, false));
        }
        for (int step = 0; step < 4; ++step) {
            const Change change = random.change();
            SCOPED_TRACE(testing::Message() << (change.inserts ? "insert " : "remove ") << change.count
                                            << (change.rows ? " rows at " : " columns at ") << change.first);
            const Shown before = shownBy(sheet, from);
            ASSERT_TRUE(apply(sheet, change)) << sheet.error();
            const Shown after = shownBy(sheet, from), expected = afterwards(before, change);
            ASSERT_EQ(after.cells, expected.cells);
            ASSERT_EQ(after.rows, expected.rows);
            ASSERT_EQ(after.merges, expected.merges);
            ASSERT_EQ(after.areas, expected.areas);
            ASSERT_EQ(after.filterRange, expected.filterRange);
            ASSERT_EQ(after.filterColumns, expected.filterColumns);
            if (!change.inserts) continue;
            ASSERT_TRUE(apply(sheet, {false, change.rows, change.first, change.count}));
            ASSERT_TRUE(shownBy(sheet, from) == before) << "taking out what was put in";
        }
        TestSheet again(sheet.savedRows());
        ASSERT_EQ(shownBy(again).cells, shownBy(sheet).cells);
    }
}

TEST(Layout, RangesFollow) {
    TestSheet sheet("<row r=\"3\"><c r=\"B3\" s=\"0\"/></row>", -1, -1, "<sheetPr filterMode=\"1\"/>",
                    "<autoFilter ref=\"B3:E9\"><filterColumn colId=\"0\"><filters><filter val=\"1\"/></filters>"
                    "</filterColumn><filterColumn colId=\"2\"><filters><filter val=\"2\"/></filters></filterColumn>"
                    "<sortState ref=\"B4:E9\"><sortCondition ref=\"D4:D9\"/></sortState></autoFilter>");
    auto& workbook = sheet.book.workbook();
    workbook.sheets().sheet().append().name(L"My sheet");
    const auto name = [&](const wchar_t* text, const wchar_t* called = L"n") {
        auto& element = workbook.definedNames().definedName().append();
        element.name(called);
        element.text(text);
        return &element;
    };
    name(L"'My sheet'!$B$3:$E$9,'my sheet'!A1,Other!$B$3");
    name(L"'My sheet'!$5:$7");
    name(L"'My sheet'!$B:$B");
    name(L"'My sheet'!$A$1:$IV$65536");
    name(L"'My sheet'!$B$3:$E$9", L"_xlnm._FilterDatabase")->localSheetId(0);
    sheet.book.names().changed();

    EXPECT_TRUE(sheet->insertRows(4, 5, true));
    Shown shown = shownBy(sheet);
    EXPECT_EQ(shown.filter, "B3:E11 0 2");
    EXPECT_EQ(shown.names,
              (std::vector<std::string>{"'My sheet'!$B$3:$E$11,'my sheet'!A1,Other!$B$3", "'My sheet'!$7:$9",
                                        "'My sheet'!$B:$B", "'My sheet'!$A$1:$IV$65536", "'My sheet'!$B$3:$E$11"}));
    EXPECT_NE(sheet.saved().find("<sortState ref=\"B4:E11\"><sortCondition ref=\"D4:D11\"/>"), std::string::npos);
    EXPECT_TRUE(sheet->removeColumns(1, 2, false));
    shown = shownBy(sheet);
    EXPECT_EQ(shown.filter, "B3:C11 0") << "the column that stays keeps its filter under another number";
    EXPECT_EQ(shown.names[0], "'My sheet'!$B$3:$E$11,'my sheet'!A1,Other!$B$3") << "not asked for";
    EXPECT_EQ(shown.names[4], "'My sheet'!$B$3:$C$11") << "it always follows";
    EXPECT_TRUE(sheet->removeRows(0, 20, true));
    shown = shownBy(sheet);
    EXPECT_EQ(shown.filter, "");
    EXPECT_EQ(sheet.saved().find("filterMode"), std::string::npos);
    EXPECT_EQ(shown.names, (std::vector<std::string>{"Other!$B$3", "'My sheet'!$B:$B", "'My sheet'!$A$1:$IV$65536"}));
}

TEST(Layout, NothingIsPushedOffTheSheet) {
    TestSheet sheet(
        "<row r=\"1\"><c r=\"XFC1\"><v>1</v></c></row><row r=\"1048575\"><c r=\"A1048575\"><v>1</v></c></row>"
        "<row r=\"1048576\" ht=\"30\"/>");
    sheet.book.workbook().sheets().sheet().append().name(L"S");
    const std::string before = sheet.savedRows();
    EXPECT_FALSE(sheet->insertRows(5, 6, true));
    EXPECT_EQ(sheet.error(), "row must be in range 0-1048575");
    EXPECT_FALSE(sheet->insertColumns(0, 1, true));
    EXPECT_EQ(sheet.error(), "col must be in range 0-16383");
    EXPECT_EQ(sheet.savedRows(), before);
    EXPECT_TRUE(sheet->insertRows(5, 5, true)) << "an empty row may go";
    EXPECT_TRUE(sheet->insertColumns(3, 3, true));
    EXPECT_EQ(sheet->lastRow(), 1048576);
    EXPECT_EQ(sheet->lastCol(), 16384);
    EXPECT_EQ(sheet->rowHeightPixels(1048575), 20);
}

TEST(Layout, TablesStayWhole) {
    using Tag = excelNormal_tag;
    ooxml::dialect<Tag>::sml::c_CT_Table table;
    table.displayName(L"Rates");
    table.ref("B2:D9");
    table.totalsRowCount(1);
    const struct {
        xlsx::CellMove move;
        const char* result;
    } cases[] = {
        {{true, true, 0, 1}, "B4:D11"},
        {{true, true, 8, 8}, "B2:D10"},
        {{true, true, 9, 9}, "B2:D9"},
        {{false, true, 2, 3}, "B2:D7"},
        {{false, true, 2, 7}, "table Rates would lose all its rows"},
        {{false, true, 0, 1}, "table Rates would lose its header or totals row"},
        {{false, true, 8, 30}, "table Rates would lose its header or totals row"},
        {{false, true, 9, 30}, "B2:D9"},
        {{true, true, 0, 1048570}, "table Rates would leave the sheet"},
        {{true, false, 1, 1}, "C2:E9"},
        {{true, false, 2, 2}, "table Rates would lose or gain columns"},
        {{true, false, 4, 4}, "B2:D9"},
        {{false, false, 0, 0}, "A2:C9"},
        {{false, false, 0, 1}, "table Rates would lose or gain columns"},
        {{false, false, 4, 9}, "B2:D9"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.result);
        auto changed = table;
        std::string result;
        try {
            xlsx::checkTable<Tag>(changed, c.move);
            xlsx::moveTable<Tag>(changed, c.move);
            result = changed.ref();
        } catch (const std::exception& e) {
            result = e.what();
        }
        EXPECT_EQ(result, c.result);
    }
}

TEST(Layout, ClearingHandsGroupsOn) {
    const char* const rows =
        "<row r=\"1\" ht=\"30\"><c r=\"A1\"><f t=\"shared\" ref=\"A1:B3\" si=\"0\">C1</f></c><c r=\"B1\"><f "
        "t=\"shared\" "
        "si=\"0\"/></c></row><row r=\"2\"><c r=\"A2\"><f t=\"shared\" si=\"0\"/></c><c r=\"B2\"><f t=\"shared\" "
        "si=\"0\"/></c></row><row r=\"3\"><c r=\"B3\"><f t=\"shared\" si=\"0\"/></c></row>";
    TestSheet sheet(rows);
    EXPECT_TRUE(sheet->clearRange(-5, 1, 0, 0));
    EXPECT_EQ(sheet.formula(0, 1), "D1");
    EXPECT_EQ(sheet.formula(2, 1), "D3");
    EXPECT_EQ(sheet->cellType(1, 0), 0);
    EXPECT_TRUE(sheet->clearRange(0, 0, 0, 16383));
    EXPECT_EQ(sheet.formula(1, 1), "D2");
    EXPECT_EQ(sheet->rowHeight(0), 30);
    EXPECT_TRUE(sheet->clearRange(0, 1048575, 0, 16383));
    EXPECT_EQ(sheet.savedRows(), "");
    EXPECT_EQ(sheet->rowHeight(0), 15);
    EXPECT_FALSE(sheet->clearRange(1, 0, 0, 0));
    EXPECT_EQ(sheet.error(), "rowLast must be greater than or equal to rowFirst");
    EXPECT_FALSE(sheet->clearRange(0, 0, 1, 0));
    EXPECT_EQ(sheet.error(), "colLast must be greater than or equal to colFirst");
}

TEST(RangeIndex, FindsWhatAWalkFinds) {
    std::mt19937 random(7);
    const auto pick = [&](unsigned below) { return static_cast<std::uint32_t>(random() % below); };
    for (const std::size_t size : {0U, 1U, 16U, 17U, 900U}) {
        std::vector<xlsx::RangeIndex::Entry> entries;
        for (std::uint32_t i = 0; i < size; ++i) {
            const std::uint32_t row = pick(200), col = pick(60);
            const bool tall = pick(20) == 0;
            entries.push_back({{row, row + pick(tall ? 1000 : 4), col, col + pick(4)}, i});
        }
        const xlsx::RangeIndex index(entries);
        for (int i = 0; i < 2000; ++i) {
            const std::uint32_t row = pick(220), col = pick(70);
            const auto walked = std::find_if(entries.begin(), entries.end(),
                                             [&](const auto& entry) { return entry.range.contains(row, col); });
            const auto* const found = index.firstAt(row, col);
            ASSERT_EQ(found != nullptr, walked != entries.end());
            if (!found) continue;
            ASSERT_EQ(found->place, walked->place);
        }
    }
}

}  // namespace
}  // namespace vellum::test
