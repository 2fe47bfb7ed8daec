// Cells that a csv file cannot have: errors and dates, in every form, over a workbook.
#include "engine/api/enums.h"
#include "engine/api/ibook.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "tests/statements/layouts/statement_case.h"

namespace {

/// in.xls with the sheet S from R1C1 on: "#" stands for an error, numbers behind "@" for dates, the rest is as typed.
void makeBook(const std::string& path, std::initializer_list<std::initializer_list<const char*>> rows) {
    using namespace vellum;
    IBookT<char>* const book = vlCreateBook<char>();
    ASSERT_NE(book, nullptr);
    book->setLocale("UTF-8");
    auto* const date = book->newFormat();
    date->setNumFormat(22);
    auto* const sheet = book->addSheet("S");
    int row = 0;
    for (const auto& cells : rows) {
        int col = 0;
        for (const std::string cell : cells) {
            char* end = nullptr;
            const double number = std::strtod(cell.c_str() + (cell[0] == '@'), &end);
            if (cell == "#")
                sheet->writeError(row, col, errorDivisionByZero);
            else if (cell[0] == '@')
                sheet->writeNumber(row, col, number, date);
            else if (!cell.empty() && !*end)
                sheet->writeNumber(row, col, number);
            else if (!cell.empty())
                sheet->writeString(row, col, cell.c_str());
            ++col;
        }
        ++row;
    }
    EXPECT_TRUE(book->saveFile(path.c_str())) << book->errorMessage();
    book->release();
}

void check(std::initializer_list<std::initializer_list<const char*>> rows, const std::string& script,
           const std::string& transcript) {
    support::ScriptRunner runner;
    makeBook(runner.folder().path("in.xls"), rows);
    EXPECT_EQ(transcriptOf(runner, script), transcript);
    EXPECT_TRUE(runner.host().counts.balanced());
}

TEST(ErrorCells, EndTheStatement) {
    check({{"a", "#", "3"}, {"#", "5", "6"}, {"7", "8", "9"}}, R"s(
              declare i : integer = 1 | declare a : any = 2
              declare L : list of any | declare A : dynamic array(text) of real | declare U : dynamic array(text) of any
              declare N : dynamic array(range, range) of real | declare P : dynamic array(text, range) of real
              read "xls:in.xls" { i from "[B1]" }
              read "xls:in.xls" { a from "[B1]" }
              read "xls:in.xls" { L from "[A1:C1]" }
              read "xls:in.xls" { A from "[A1:B1]" }
              read "xls:in.xls" { A from "[A2:B2]" }
              read "xls:in.xls" { A from "emptyndx;[A2:B2]" }
              read "xls:in.xls" { U from "[A1:B1]" }
              read "xls:in.xls" { N from "dataframe;[A1:C3]" }
              print i | print a | print L)s",
          R"s(read [0] 1 "SHEET: Wrong result value at [R1C2].\n"
read [0] 1 "SHEET: Wrong result value at [R1C2].\n"
read [1] 1 "SHEET: Wrong result value at [R1C2].\n"
read [0] 1 "SHEET: Wrong result value at [R1C2].\n"
read [0] 1 "SHEET: Wrong result value at [R2C1].\n"
read [0] 1 "SHEET: Wrong result value at [R2C1].\n"
read [0] 1 "SHEET: Wrong result value at [R1C2].\n"
read [1] 1 "SHEET: Wrong result value at [R1C2].\n"
i 1
a 2
L ["a"]
)s");
}

// In sets and lists a row with an error fails only when no later cell of it converts; either way it is told.
TEST(ErrorCells, InSetsAndListsALaterCellOfTheRowMakesUpForThem) {
    check({{"1", "#", "3"}, {"4", "5", "#"}, {"7", "8", "9"}}, R"s(
              declare S : dynamic set of integer | declare L : list of integer
              read "xls:in.xls" { S from "[A1:C3]" }
              read "xls:in.xls" { L from "[A1:C3]" }
              print S | print L)s",
          R"s(read [4] 1 "SHEET: Wrong result value at [R1C2].\n" "SHEET: Wrong result value at [R2C3].\n"
read [4] 1 "SHEET: Wrong result value at [R1C2].\n" "SHEET: Wrong result value at [R2C3].\n"
S [1,3,4,5]
L [1,3,4,5]
)s");
}

// The other index columns are still read: their values stay in their sets.
TEST(ErrorCells, AsIndicesEndTheReadBehindTheIndexColumns) {
    check({{"#", "x", "1"}}, R"s(
              declare I : dynamic set of integer | declare T : dynamic set of text
              declare A : dynamic array(I, T) of real
              read "xls:in.xls" { A from "[A1:C1]" }
              print I | print T | print A)s",
          "read [0] 1 \"SHEET: Wrong result value at [R1C1].\\n\"\nI []\nT [\"x\"]\nA []\n");
}

TEST(ErrorCells, LeaveTheFieldOfARecordAlone) {
    check({{"#", "x"}, {"2", "y"}}, R"s(
              declare P : record(n : integer, t : text)
              declare Q : record(n : any, t : text)
              declare L : list of P | declare q : Q
              read "xls:in.xls" { L from "[A1:B2]" }
              read "xls:in.xls" { q from "[A1:B1]" }
              print L | print q)s",
          R"s(read [2] "SHEET: Wrong result value at [R1C1].\n"
read [0] 1 "SHEET: Wrong result value at [R1C1].\n"
L [{"n":0,"t":"x"},{"n":2,"t":"y"}]
q {"n":null,"t":null}
)s");
}

TEST(ErrorCells, AreEmptyCellsUnderSkiperrcell) {
    check({{"#", "#", "#"}, {"a", "#", "3"}, {"#", "5", "6"}}, R"s(
              declare i : integer = 1 | declare t : text = "x" | declare a : any = 2
              declare S : dynamic set of text | declare L : list of any | declare A : dynamic array(text) of real
              declare P : record(n : text, t : text)
              declare R : list of P
              declare N : dynamic array(range, range) of real
              declare F : dynamic array(range, text) of real
              read "xls:skiperrcell;in.xls" { i from "[A1]", t from "[A1]", a from "[A1]", S from "[A1:C3]", L from "[A1:B3]" }
              read "xls:skiperrcell;in.xls" { A from "[A1:B2]", R from "[A1:B2]", N from "dataframe;[A1:C2]" }
              read "xls:skiperrcell;in.xls" { A from "[A1:B3]" }
              read "xls:skiperrcell;in.xls" { F from "dataframe;skiph;[A2:C3]" }
              read "xls:in.xls" { F from "dataframe;skiph;[A2:C3]" }
              print i | print t | print a | print S | print L | print A | print R | print N | print F)s",
          R"s(read [1,1,1,4,2]
read [0,1,2]
read [0] 1 "SHEET: An index cannot be an empty cell ([R3C1]).\n"
read [2]
read [0] 1 "SHEET: Wrong result value at [R2C2].\n"
i 0
t null
a null
S ["a","3","5","6"]
L ["a",5]
A []
R [{"n":"a","t":null}]
N [[[2,1],0],[[2,3],3]]
F [[[1,"#2"],5],[[1,"3"],6]]
)s");
}

TEST(ErrorCells, InTheHeaderOfADataFrame) {
    const char* const declared = R"s(
              declare R : range 1..1 | declare S : dynamic set of text = {"p", "q"}
              declare A : array(R, S) of real = {(1, "p"): 7, (1, "q"): 8}
              declare L : list of any
        )s";
    check({{"#", "#"}}, declared + std::string(R"s(
              write "xls:dataframe;skiph+;in.xls" { A to "[S$A1:B2]" }
              write "xls:skiperrcell;dataframe;skiph+;in.xls" { A to "[S$A1:B2]" }
              read "xls:in.xls" { L from "[S$]" }
              print L)s"),
          "write 1 \"SHEET: Wrong result value at [R1C1].\\n\"\nwrite\nread [4]\nL [\"p\",\"q\",7,8]\n");
}

TEST(Dates, ReadAsTextsAsNumbersAndAsDates) {
    check({{"@44197", "@44197.75", "@0.5", "2020-02-03"}}, R"s(
              declare T : dynamic set of text | declare R : list of real | declare D : list of date | declare A : list of any
              read "xls:in.xls" { T from "[A1:D1]", R from "[A1:C1]", D from "[A1:D1]", A from "[A1:C1]" }
              print T | print R | print D | print A)s",
          R"s(read [4,3,4,3]
T ["2021-01-01","2021-01-01T18:00:00","12:00:00","2020-02-03"]
R [44197,44197.75,0.5]
D ["2021-01-01","2021-01-01T18:00:00","12:00:00","2020-02-03"]
A ["2021-01-01","2021-01-01T18:00:00","12:00:00"]
)s");
}

// Behind the last row of a sheet each write is refused; what was opened is closed all the same.
TEST(EndOfTheSheet, EachFormNamesTheFirstCellThatDoesNotFit) {
    check({{"x"}}, R"s(
              declare I : range 1..2 | declare T : dynamic set of text = {"a", "b"}
              declare A : dynamic array(T, I) of real = {("a", 1): 1, ("b", 2): 2}
              declare B : dynamic array(T, I) of text = {("a", 1): "x", ("b", 1): "y"}
              declare L : list of array = [A, B]
              declare P : record(n : real, t : text)
              declare r : P = (1, "x") | declare R : list of P = [(1, "x"), (2, "y")] | declare x : real = 5
              write "xls:grow;in.xls" { A to "[S$A65536:C65536]" }
              write "xls:grow;partndx;in.xls" { A to "[S$A65536:C65536]" }
              write "xls:grow;noindex;in.xls" { A to "[S$A65536:B65536]" }
              write "xls:grow;in.xls" { L to "[S$A65536:D65536]" }
              write "xls:grow;in.xls" { R to "[S$B65536:C65536]" }
              write "xls:grow;in.xls" { T to "[S$A65536]" }
              write "xls:in.xls" { x to "[S$A65537]" }
              write "xls:in.xls" { r to "[S$B65537:C65537](#2,#1)" })s",
          R"s(write 1 "SHEET: Wrong data value for [R65537C1].\n"
write 1 "SHEET: Wrong data value for [R65537C1].\n"
write 1 "SHEET: Wrong data value for [R65537C1].\n"
write 1 "SHEET: Wrong data value for [R65537C1].\n"
write 1 "SHEET: Wrong result value at [R65537C2].\n"
write 1 "SHEET: Wrong result value at [R65537C1].\n"
write 1 "SHEET: Wrong result value at [R65537C1].\n"
write 1 "SHEET: Wrong result value at [R65537C3].\n"
)s");
}

}  // namespace
