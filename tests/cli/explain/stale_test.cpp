// Which results are older than what was written: all ways in which a formula refers to a cell.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/explain/stale/dependency_index.h"
#include "cli/explain/stale/row_set.h"
#include "cli/workbook/book_file.h"
#include "cli/workbook/cell_name.h"
#include "engine/factories/factories.h"
#include "tests/cli/explain/explain_runner.h"

namespace support {
namespace {

using cli::explain::CellSet;
using cli::explain::DependencyIndex;

std::vector<std::string> names(const CellSet& cells) {
    std::vector<std::string> out;
    for (const auto& [place, rows] : cells) {
        for (const auto& [first, last] : rows.runs()) {
            for (int row = first; row <= last; ++row) {
                out.push_back(std::to_string(place.first).append("!").append(cli::cellName(row, place.second)));
            }
        }
    }
    return out;
}

/// Two sheets, "Sheet1" and "Other sheet", with formulas that all read Sheet1!A3, and some that do not.
void fill(vellum::IBookT<char>& book, vellum::ISheetT<char>& s) {
    auto* const other = book.addSheet("Other sheet");
    book.addSheet("Third");
    s.setNamedRangeByName("Area", 2, 2, 0, 0);
    s.writeFormulaNumber(0, 2, "A3", 0);              // C1
    s.writeFormulaNumber(1, 2, "SUM($A$1:$A$5)", 0);  // C2
    // Texts for .xls files name all rows or columns by their corners.
    if (!s.writeFormulaNumber(2, 2, "SUM(A:A)", 0)) s.writeFormulaNumber(2, 2, "SUM(A1:A65536)", 0);  // C3
    if (!s.writeFormulaNumber(3, 2, "SUM(3:3)", 0)) s.writeFormulaNumber(3, 2, "SUM(A3:IV3)", 0);  // C4: holds C3, too
    s.writeFormulaNumber(4, 2, "C1+1", 0);              // C5: by another formula
    s.writeFormulaNumber(5, 2, "Area*2", 0);            // C6
    s.writeFormulaNumber(6, 2, "A4+B3", 0);             // C7: not
    s.writeFormulaNumber(7, 2, "INDIRECT(\"A3\")", 0);  // C8: cannot tell
    s.writeFormulaNumber(8, 2, "C8&\"A3\"", 0);         // C9: after C8, and no reference in quotes
    for (int row = 0; row < 5; ++row) {
        const std::string text = cli::cellName(row, 0).append("*2");
        s.writeFormulaNumber(row, 4, text.c_str(), 0);  // E1:E5: filled down
    }
    book.getSheet(2)->writeFormulaNumber(0, 0, "SUM(Sheet1:Third!A3)", 0);
    other->writeFormulaNumber(0, 0, "Sheet1!A3", 0);
    other->writeFormulaNumber(1, 0, "A3", 0);  // its own
    other->writeFormulaNumber(3, 0, "'Other sheet'!A1+1", 0);
}

class Stale : public testing::TestWithParam<const char*> {};

TEST_P(Stale, FollowsReferences) {
    TempFolder folder;
    makeWorkbook(folder.path(GetParam()), fill);
    std::string error;
    const cli::BookPtr book = cli::loadBook(folder.path(GetParam()), error);
    ASSERT_TRUE(book) << error;
    const DependencyIndex index(*book);
    CellSet changed;
    changed[{0, 0}].add({2, 2});
    EXPECT_THAT(
        names(index.dependents(changed)),
        testing::UnorderedElementsAre("0!C1", "0!C2", "0!C3", "0!C4", "0!C5", "0!C6", "0!E3", "1!A1", "1!A4", "2!A1"));
    EXPECT_THAT(names(index.unsure()), testing::IsSupersetOf({"0!C8", "0!C9"}));
    EXPECT_THAT(names(index.unsure()), testing::Not(testing::Contains("0!C7")));
    EXPECT_EQ(index.size(), 9U + 1 + 3 + 1);  // E1:E5 is one entry
}

INSTANTIATE_TEST_SUITE_P(Formats, Stale, testing::Values("book.xls", "book.xlsx"));

/// Knows two sheets and no name.
class TwoSheets final : public cli::explain::FormulaNames {
public:
    explicit TwoSheets(bool package) : _package(package) {}
    int sheetIndex(std::string_view name) const override { return name == "One" ? 0 : name == "It's" ? 1 : -1; }
    int lastColumn() const override { return _package ? cli::explain::lastSheetColumn : 255; }
    int lastRow() const override { return _package ? cli::explain::lastSheetRow : 65535; }
    void resolve(std::string_view name, int, cli::explain::References& out) const override {
        out.areas.push_back({7, 7, static_cast<int>(name.size())});
    }

private:
    bool _package;
};

TEST(FormulaReferences, TextsAreRead) {
    const struct {
        const char *text, *areas;  // sheets, then corners; a name is on sheet 7
        bool cannotTell = false, package = true;
    } cases[] = {
        {"A1+$B$2", "-1 A1:A1 -1 B2:B2 "},
        {"SUM(b3:A1)", "-1 A1:B3 "},
        {"B:C", "-1 B1:C1048576 "},
        {"'It''s'!2:3", "1 A2:XFD3 "},
        {"'One:It''s'!A1", "0-1 A1:A1 "},
        {"One!A1:B2*1E5&\"A9\"&#REF!A1", "0 A1:B2 "},
        {"VLOOKUP(A1;#REF!$A:$B;2)", "-1 A1:A1 "},
        {"[1]One!A1+'[book.xlsx]One'!A2+Gone!A3", ""},
        {"A1:INDEX(B1:B9,2)", "-1 A1:A1 -1 B1:B9 ", true},
        {"first:last", "7 A6:A1 7 A5:A1 ", true},
        {"SUM(A1):A5", "-1 A1:A1 -1 A5:A5 ", true},
        {"OFFSET(A1,1,1)", "-1 A1:A1 ", true},
        {"TAX20", "-1 TAX20:TAX20 "},
        {"TAX20", "7 A6:A1 ", false, false},  // no column of a small sheet
        {"A65536+A65537", "-1 A65536:A65536 7 A7:A1 ", false, false},
    };
    for (const auto& c : cases) {
        cli::explain::References found;
        cli::explain::addReferences(c.text, 5, TwoSheets(c.package), found);
        std::string areas;
        for (const auto& area : found.areas) {
            areas += std::to_string(area.sheetFirst);
            if (area.sheetLast != area.sheetFirst) areas.append("-").append(std::to_string(area.sheetLast));
            areas.append(" ").append(cli::cellName(area.rowFirst, area.colFirst));
            areas.append(":").append(cli::cellName(area.rowLast, area.colLast)).append(" ");
        }
        EXPECT_EQ(areas, c.areas) << c.text;
        EXPECT_EQ(found.cannotTell, c.cannotTell) << c.text;
    }
}

TEST(FormulaReferences, MoveWithTheirFormula) {
    cli::explain::References found;
    cli::explain::addReferences("A1+$B$2:C3+D:D+5:$6", 0, TwoSheets(true), found);
    cli::explain::moveBy(found, 2, 1);
    ASSERT_EQ(found.areas.size(), 4U);
    const auto corners = [&](std::size_t i) {
        const auto& area = found.areas[i];
        return cli::cellName(area.rowFirst, area.colFirst)
            .append(":")
            .append(cli::cellName(area.rowLast, area.colLast));
    };
    EXPECT_EQ(corners(0), "B3:B3");
    EXPECT_EQ(corners(1), "B2:D5");
    EXPECT_EQ(corners(2), "E1:E1048576");
    EXPECT_EQ(corners(3), "A6:XFD7");  // the corner that moves has passed the other
}

TEST(StaleResults, ExplainTellsOfCellsOnce) {
    TempFolder folder;
    makeWorkbook(folder.path("book.xlsx"), fill);
    const Explanation told = explain(folder, R"q(
declare x : real
declare L : list of real
write "xlsx:book.xlsx" { x to "[A3]" }
read "xlsx:book.xlsx" { L from "[C1:C9]" })q");
    const Json warning = told.warning("stale-result");
    ASSERT_FALSE(warning.is_null());
    EXPECT_EQ(warning["details"]["depends on what the script wrote"], 6);
    EXPECT_EQ(warning["details"]["cannot tell what it depends on"], 2);
}

TEST(RowSet, KeepsRunsApartAndTellsWhatIsNew) {
    cli::explain::RowSet rows;
    rows.add({5, 7});
    rows.add({10, 12});
    std::vector<cli::explain::Rows> fresh;
    rows.add({6, 13}, &fresh);
    ASSERT_EQ(fresh.size(), 2U);
    EXPECT_EQ(fresh[0].first, 8);
    EXPECT_EQ(fresh[0].last, 9);
    EXPECT_EQ(fresh[1].first, 13);
    EXPECT_EQ(fresh[1].last, 13);
    EXPECT_EQ(rows.runs().size(), 1U);
    EXPECT_TRUE(rows.has(5) && rows.has(13) && !rows.has(4) && !rows.has(14));
}

}  // namespace
}  // namespace support
