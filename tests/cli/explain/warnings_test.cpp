// Each warning: a script that gets it, and one beside it that must not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "engine/api/enums.h"
#include "engine/api/iautofilter.h"
#include "engine/api/ifiltercolumn.h"
#include "engine/api/iformat.h"
#include "tests/cli/explain/explain_runner.h"

namespace support {
namespace {

using Book = vellum::IBookT<char>;
using Sheet = vellum::ISheetT<char>;

const std::string declarations = R"(
declare i : integer
declare r : real
declare t : text
declare S : dynamic set of text
declare L : list of real
declare A : dynamic array(text) of real
declare B : dynamic array(text, text) of real
declare Full : dynamic array(text) of real = {"a": 1, "b": 2, "c": 3}
declare Wide : list of real = [0.1, 0.30000000000000004, 2]
declare Long : list of text = ["x"]
)";

const std::string longText(2000, 'x');

const Files csvFiles = {
    {"texts.csv", "12 kg,7,\"12\"\ninfo,8,x\n"},
    {"heads.csv", "key, Total ,n,n\na,1,2,3\n"},
    {"rows.csv", "a,1\nb,2\na,3\n,4\n"},
    {"big.csv", "3000000000,7\n"},
    {"long.csv", longText + ",short\n"},
    {"old.csv", "p,9\nq,9\nr,9\ns,9\n"},
    {"three.csv", "p,9\nq,9\nr,9\n"},
    {"open.csv", "1\n"},
    {".~lock.open.csv#", "someone\n"},
};

void fillXlsx(Book& book, Sheet& s) {
    const char* const keys[] = {"a", "b", "c", "d"};
    for (int row = 0; row < 4; ++row) {
        s.writeString(row, 0, keys[row]);
        s.writeNumber(row, 1, row);
    }
    s.writeError(0, 2, vellum::errorNotAvailable);
    s.writeFormula(1, 2, "B1+1");
    s.writeFormulaNumber(2, 2, "B2+1", 2);
    s.addValidationRule(2, 6, 0, 0, 5, 5, "0.5");
    s.addMerge(5, 6, 0, 0);
    s.writeString(5, 0, "m");
    s.writeNumber(5, 1, 1);
    s.writeNumber(6, 1, 2);
    s.setRowHidden(3, true);
    s.writeString(9, 0, "head");
    s.writeNumber(10, 0, 1);
    s.writeNumber(11, 0, 2);
    s.filterObject()->setFilterRange(9, 11, 0, 0);
    s.filterObject()->filterColumn(0)->addValueFilter("1");
    s.applyFilter();
    s.writeString(13, 0, "12");
    s.setNamedRangeByName("Small", 19, 20, 0, 1);
    s.setNamedRangeByName("Large", 29, 32, 0, 1);
    (void)book;
}

void fillXls(Book& book, Sheet& s) {
    auto* const date = book.newFormat();
    date->setNumFormat(14);
    s.writeFormulaNumber(0, 0, "1+45000", 45001, date);
    s.writeNumber(1, 0, 45001, date);
    s.writeNumber(2, 0, 7);
    s.writeFormula(0, 3, "1+1");
    s.setProtected(true);
}

struct Case {
    const char* warning;
    const char* gets;    // a statement that gets it
    const char* spared;  // one that must not
    std::vector<std::string> cells;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.warning;
}

class Warnings : public testing::TestWithParam<Case> {
protected:
    Warnings() {
        for (const auto& [name, content] : csvFiles) _folder.write(name, content);
        makeWorkbook(_folder.path("book.xlsx"), fillXlsx);
        makeWorkbook(_folder.path("book.xls"), fillXls);
        makeWorkbook(_folder.path("plain.xls"), [](Book&, Sheet& s) { s.writeNumber(0, 0, 1); });
    }
    Explanation explained(const char* statement) const { return explain(_folder, declarations + statement); }

    TempFolder _folder;
};

TEST_P(Warnings, ComeAndStayAway) {
    const Case& c = GetParam();
    const Explanation with = explained(c.gets), without = explained(c.spared);
    ASSERT_TRUE(with.errors.empty() && without.errors.empty()) << with.errors << without.errors;
    const Json warning = with.warning(c.warning);
    ASSERT_FALSE(warning.is_null()) << "got " << testing::PrintToString(with.warnings());
    if (!c.cells.empty()) {
        EXPECT_EQ(warning["cells"].get<std::vector<std::string>>(), c.cells);
    }
    EXPECT_GE(with.status, 1);
    EXPECT_TRUE(without.warning(c.warning).is_null());
    EXPECT_NE(without.status, 2) << without.lines.back().dump();
}

const Case cases[] = {
    {"text-read-as-number",
     R"q(read "csv:texts.csv" { L from "[A:A]" })q",
     R"q(read "csv:texts.csv" { L from "[B:B]" })q",
     {"A1", "A2"}},
    {"number-stored-as-text",
     R"q(read "xlsx:book.xlsx" { r from "[A14]" })q",
     R"q(read "xlsx:book.xlsx" { t from "[A14]" })q",
     {"A14"}},
    {"near-header",
     R"q(read "csv:skiph;heads.csv" { A from "[A:D](key,total)" })q",
     R"q(read "csv:skiph;heads.csv" { A from "[A:D](key, n)" })q",
     {"B1"}},
    {"duplicate-header",
     R"q(read "csv:skiph;heads.csv" { A from "[A:D](key,n)" })q",
     R"q(read "csv:skiph;heads.csv" { A from "[A:D](key,#3)" })q",
     {"D1"}},
    {"leftover-option",
     R"q(read "csv:skipp;heads.csv" { t from "[A1]" })q",
     R"q(read "csv:skiph;heads.csv" { t from "[A1]" })q",
     {}},
    {"empty-index",
     R"q(read "csv:rows.csv" { A from "[A:B]" })q",
     R"q(read "csv:rows.csv" { A from "[A1:B3]" })q",
     {"A4"}},
    {"merged-index",
     R"q(read "xlsx:emptyndx;book.xlsx" { A from "[A6:B7]" })q",
     R"q(read "xlsx:emptyndx;book.xlsx" { A from "[A6:B6]" })q",
     {"A7"}},
    {"error-cell",
     R"q(read "xlsx:skiperrcell;book.xlsx" { L from "[C1:C3]" })q",
     R"q(read "xlsx:skiperrcell;book.xlsx" { L from "[C2:C3]" })q",
     {"C1"}},
    {"no-cached-value",
     R"q(read "xlsx:book.xlsx" { L from "[C2:C3]" })q",
     R"q(read "xlsx:book.xlsx" { L from "[C3]" })q",
     {"C2"}},
    {"no-cached-value",
     R"q(read "xls:book.xls" { L from "[D1:D2]" })q",
     R"q(read "xls:book.xls" { L from "[A1]" })q",
     {"D1"}},
    {"stale-result",
     R"q(write "xlsx:book.xlsx" { r to "[B2]" }
         read "xlsx:book.xlsx" { L from "[C3]" })q",
     R"q(write "xlsx:book.xlsx" { r to "[B1]" }
         read "xlsx:book.xlsx" { L from "[C3]" })q",
     {"C3"}},
    {"validation-broken",
     R"q(write "xlsx:book.xlsx" { Wide to "[F1:F3]" })q",
     R"q(write "xlsx:book.xlsx" { Wide to "[F2:F3]" })q",
     {"F1"}},
    {"formula-date",
     R"q(read "xls:book.xls" { L from "[A1:A3]" })q",
     R"q(read "xls:book.xls" { L from "[A2:A3]" })q",
     {"A1"}},
    {"duplicate-index",
     R"q(read "csv:rows.csv" { A from "[A1:B3]" })q",
     R"q(read "csv:rows.csv" { A from "[A1:B2]" })q",
     {"A3"}},
    {"hidden-rows",
     R"q(read "xlsx:book.xlsx" { A from "[A1:B4]" })q",
     R"q(read "xlsx:book.xlsx" { A from "[A1:B3]" })q",
     {"A4"}},
    {"filtered-rows",
     R"q(read "xlsx:book.xlsx" { L from "[A11:A12]" })q",
     R"q(read "xlsx:book.xlsx" { L from "[A11]" })q",
     {"A12"}},
    {"near-buffer",
     R"q(read "csv:long.csv" { t from "[A1]" })q",
     R"q(read "csv:bufsize=4;long.csv" { t from "[A1]" })q",
     {"A1"}},
    {"lost-digits", R"q(read "csv:big.csv" { i from "[A1]" })q", R"q(read "csv:big.csv" { r from "[A1]" })q", {"A1"}},
    {"lost-digits",
     R"q(write "csv:new.csv" { Wide to "[A1:A3]" })q",
     R"q(write "xlsx:new.xlsx" { Wide to "[A1:A3]" })q",
     {"A2"}},
    {"data-cut",
     R"q(write "csv:new.csv" { Full to "[A1:B2]" })q",
     R"q(write "csv:new.csv" { Full to "[A1:B3]" })q",
     {}},
    {"old-rows-left",
     R"q(write "csv:old.csv" { Full to "[A1:B3]" })q",
     R"q(write "csv:three.csv" { Full to "[A1:B3]" })q",
     {"A4", "B4"}},
    {"formula-overwritten",
     R"q(write "xlsx:book.xlsx" { Wide to "[C1:C3]" })q",
     R"q(write "xlsx:book.xlsx" { Wide to "[D1:D3]" })q",
     {"C2", "C3"}},
    {"protected-sheet", R"q(write "xls:book.xls" { r to "[B1]" })q", R"q(write "xls:plain.xls" { r to "[B1]" })q", {}},
    {"locked-file", R"q(write "csv:open.csv" { r to "[A1]" })q", R"q(write "csv:three.csv" { r to "[A1]" })q", {}},
    {"name-not-moved",
     R"q(write "xlsx:grow;book.xlsx" { Full to "Small" })q",
     R"q(write "xlsx:grow;book.xlsx" { Full to "Large" })q",
     {}},
};

INSTANTIATE_TEST_SUITE_P(All, Warnings, testing::ValuesIn(cases), [](const auto& c) {
    std::string name = c.param.warning + std::to_string(c.index);
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

}  // namespace
}  // namespace support
