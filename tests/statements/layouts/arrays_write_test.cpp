#include "tests/statements/layouts/statement_case.h"

namespace {

TEST(ArraysWrite, IndexColumns) {
    const StatementCase cases[] = {
        {"entries in the array's order", "", R"s(
            declare A : dynamic array(text, integer) of real = {("b", 2): 1.5, ("a", 1): 2, ("b", 1): 3}
            write "csv:grow;out.csv" { A to "[A1:C1](#3,#1,#2)" })s",
         R"s(write
            out.csv: 2,1.5,b|1,3,b|1,2,a|)s"},
        {"cut without grow", "", R"s(
            declare A : dynamic array(text) of real = {("a"): 1, ("b"): 2, ("c"): 3}
            write "csv:out.csv" { A to "[A1:B2]" })s",
         R"s(write
            out.csv: a,1|b,2|)s"},
        {"a static array has all its entries", "", R"s(
            declare I : range 1..3
            declare A : array(I) of real = {(2): 5}
            write "csv:grow;out.csv" { A to "[A1:B1]" })s",
         R"s(write
            out.csv: 1,0|2,5|3,0|)s"},
        {"records and types of the host", "", R"s(
            declare Day : alias of date
            declare P : record(n : integer, t : text)
            declare A : dynamic array(Day) of P = {("2024-03-01"): (1, "x")}
            declare B : dynamic array(date) of any = {("2024-03-02"): 5}
            write "csv:grow;out.csv" { A to "[A1:C1]", B to "[D1:E1]" })s",
         R"s(write
            out.csv: 2024-03-01,1,x,2024-03-02,5|)s"},
        {"an empty array writes nothing", "", R"s(
            declare A : dynamic array(text) of real
            declare i : integer = 1
            write "csv:grow;out.csv" { A to "[A1:B1]", i to "[A1]" })s",
         R"s(write
            out.csv: 1|)s"},
        {"what does not fit", "", R"s(
            declare A : dynamic array(text) of real
            declare P : record(n : integer, t : text)
            declare Q : alias of P
            declare B : dynamic array(text) of Q
            declare C : dynamic array(any) of real
            declare N : dynamic array(text) of real = null
            write "csv:out.csv" { A to "[A1:C1]" }
            write "csv:out.csv" { B to "[A1:C1]" }
            write "csv:out.csv" { N to "[A1:C1]" })s",
         R"s(write 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
            write 1 "SHEET: Wrong data type.\n"
            write 1 "SHEET: Trying to access an uninitialized array.\n"
            out.csv: |)s"},
        {"index sets of records cannot be written", "", R"s(
            declare P : record(n : integer)
            declare A : dynamic array(P) of real
            declare J : range 1..1
            declare B : dynamic array(P, J) of real = {((1), 1): 5}
            write "csv:out.csv" { A to "[A1:B1]" }
            write "csv:partndx;out.csv" { B to "[A1:B1]" })s",
         R"s(write 1 "SHEET: Wrong index type.\n"
            write 1 "SHEET: Wrong index type.\n"
            out.csv: |)s"},
    };
    checkStatements(cases);
}

TEST(ArraysWrite, Noindex) {
    const StatementCase cases[] = {
        {"absent entries: a zero of a static array, a blank of a dynamic one", "", R"s(
            declare I : range 1..2 | declare J : range 1..3
            declare A : array(I, J) of real = {(1, 2): 5, (2, 3): 6}
            declare B : dynamic array(I, J) of real = {(1, 2): 5, (2, 1): 0, (2, 3): 6}
            declare T : dynamic array(I, J) of text = {(1, 2): "x"}
            write "csv:noindex;grow;out.csv" { A to "[A1:C1]", B to "[D1:F1]", T to "[G1:I1]" })s",
         R"s(write
            out.csv: 0,5,0,,5,,,x,|0,0,6,0,,6,,,|)s"},
        {"one dimension flows, under autondx as well", "", R"s(
            declare I : range 1..5
            declare A : array(I) of integer = {(1): 1, (2): 2, (3): 3, (4): 4, (5): 5}
            write "csv:noindex;grow;out.csv" { A to "[A1:B1]" }
            write "csv:autondx;out.csv" { A to "[D1:E2]" }
            write "csv:autondx=7;grow;out.csv" { A to "[G1]" })s",
         R"s(write
            write
            write
            out.csv: 1,2,,1,2,,1|3,4,,3,4,,2|5,,,,,,3|,,,,,,4|,,,,,,5|)s"},
        {"three dimensions", "", R"s(
            declare I : range 1..2
            declare A : array(I, I, I) of integer = {(1,1,1): 1, (1,1,2): 2, (1,2,1): 3, (2,2,2): 8}
            write "csv:noindex;grow;out.csv" { A to "[A1:B1]" })s",
         R"s(write
            out.csv: 1,2|3,0|0,0|0,8|)s"},
        {"cut without grow", "", R"s(
            declare I : range 1..3
            declare A : array(I, I) of integer = {(1,1): 1, (2,2): 2, (3,3): 3}
            write "csv:noindex;out.csv" { A to "[A1:C2]" })s",
         R"s(write
            out.csv: 1,0,0|0,2,0|)s"},
        {"records, blank where the entry is absent", "", R"s(
            declare P : record(n : integer, t : text)
            declare I : range 1..2
            declare A : dynamic array(I, I) of P = {(1, 1): (1, "x"), (2, 2): (4, "y")}
            declare B : dynamic array(I) of P = {(2): (5, "z")}
            write "csv:noindex;grow;out.csv" { A to "[A1:D1]", B to "[E1:F1]" })s",
         R"s(write
            out.csv: 1,x,,,,|,,4,y,5,z|)s"},
        {"columns that do not fit", "", R"s(
            declare P : record(n : integer, t : text)
            declare I : range 1..2
            declare A : array(I, I) of integer
            declare B : dynamic array(I) of P
            declare C : dynamic array(text) of real
            declare D : dynamic array(range, range) of real
            write "csv:noindex;out.csv" { A to "[A1:C1]" }
            write "csv:noindex;out.csv" { B to "[A1:C1]" }
            write "csv:autondx;out.csv" { C to "[A1:B1]" }
            write "csv:autondx;out.csv" { D to "[A1:B1]" })s",
         R"s(write 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
            write 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
            write 1 "SHEET: The option 'autondx' requires 1-dimension arrays indiced by a range set.\n"
            write 1 "SHEET: The option 'autondx' requires 1-dimension arrays indiced by a range set.\n"
            out.csv: |)s"},
    };
    checkStatements(cases);
}

TEST(ArraysWrite, Partndx) {
    const StatementCase cases[] = {
        {"a row for each combination that has an entry", "", R"s(
            declare S : dynamic set of text = {"a", "b", "c"}
            declare J : range 1..3
            declare A : dynamic array(S, J) of real = {("a", 2): 12, ("c", 1): 31, ("c", 3): 0}
            write "csv:partndx;grow;out.csv" { A to "[A1:D1]" })s",
         R"s(write
            out.csv: a,,12,|c,31,,0|)s"},
        {"three dimensions, with carries over the middle one", "", R"s(
            declare I : range 1..2
            declare A : dynamic array(I, I, I) of real = {(1,1,2): 112, (1,2,1): 121, (2,1,1): 211, (2,2,2): 222}
            write "csv:partndx;grow;out.csv" { A to "[A1:D1]" })s",
         R"s(write
            out.csv: 1,1,,112|1,2,121,|2,1,211,|2,2,,222|)s"},
        {"static arrays", "", R"s(
            declare I : range 1..2
            declare A : array(I, I) of real = {(1, 2): 5}
            write "csv:partndx;grow;out.csv" { A to "[A1:C1]" })s",
         R"s(write
            out.csv: 1,0,5|2,0,0|)s"},
        {"an explicit last set, records, and cut rows", "", R"s(
            declare S : dynamic set of text = {"x", "y"}
            declare P : record(n : integer, t : text)
            declare A : dynamic array(integer, S) of P = {(7, "y"): (1, "p"), (8, "x"): (2, "q"), (9, "x"): (3, "r")}
            write "csv:partndx;out.csv" { A to "[A1:E2]" })s",
         R"s(write
            out.csv: 7,,,1,p|8,2,q,,|)s"},
        {"an empty array is done", "", R"s(
            declare J : range 1..2
            declare A : dynamic array(text, J) of real
            declare i : integer = 1
            write "csv:partndx;out.csv" { A to "[A1:C1]", i to "[A1]" })s",
         R"s(write
            out.csv: 1|)s"},
        {"columns have to fit exactly", "", R"s(
            declare J : range 1..2
            declare A : dynamic array(text, J) of real = {("a", 1): 1}
            declare B : array(J) of real
            write "csv:partndx;out.csv" { A to "[A1:D1]" }
            write "csv:partndx;out.csv" { A to "[A1:B1]" }
            write "csv:partndx;out.csv" { B to "[A1:B1]" })s",
         R"s(write 1 "SHEET: Wrong number of columns (req:3 found:4).\n"
            write 1 "SHEET: Wrong number of columns (req:3 found:2).\n"
            write 1 "SHEET: Wrong number of columns (req:2 found:2).\n"
            out.csv: |)s"},
    };
    checkStatements(cases);
}

TEST(ArraysWrite, Dataframe) {
    // R by {"a", "b", "c"}, with the header of out.csv written first by H.
    const std::string declared = R"s(
        declare R : range 1..2
        declare S : dynamic set of text = {"a", "b", "c"}
        declare A : array(R, S) of real = {(1, "a"): 11, (1, "b"): 12, (1, "c"): 13, (2, "a"): 21}
        declare H : list of text = )s";
    const struct {
        const char* header;
        const char* options;
        const char* transcript;
    } cases[] = {
        {"[\"c\", \"a\", \"b\"]", "dataframe;skiph;grow;", "write\nwrite\nout.csv: c,a,b|13,11,12|0,21,0|\n"},
        {"[\"c\", \"a\", \"b\"]", "dataframe;skiph+;grow;", "write\nwrite\nout.csv: c,a,b|13,11,12|0,21,0|\n"},
        {"[\"\", \"\", \"\"]", "dataframe;skiph+;grow;", "write\nwrite\nout.csv: a,b,c|11,12,13|21,0,0|\n"},
        {"[\"\", \"\", \"\"]", "dataframe;skiph;grow;", "write\nwrite\nout.csv: |11,12,13|21,0,0|\n"},
        {"[\"\", \"\", \"\"]", "dataframe;",
         "write\nwrite 1 \"SHEET: The option 'dataframe' requires an array of 2 "
         "dimensions indexed by a range and a set of strings.\\n\"\nout.csv: |\n"},
        {"[\"a\", \"\", \"\"]", "dataframe;skiph+;grow;",
         "write\nwrite 1 \"SHEET: Missing 2 column name(s) (expected:3).\\n\"\nout.csv: a|\n"},
        {"[\"a\", \"x\", \"c\"]", "dataframe;skiph;grow;",
         "write\nwrite 1 \"SHEET: Wrong index value at [R1C2] (`x' not part of the index set).\\n\"\nout.csv: "
         "a,x,c|\n"},
        {"[\"a\", \"b\", \"a\"]", "dataframe;skiph;grow;",
         "write\nwrite 1 \"SHEET: Duplicate index value `a'.\\n\"\nout.csv: a,b,a|\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.options) + c.header);
        support::ScriptRunner runner;
        const std::string script = declared + c.header +
                                   "\nwrite \"csv:out.csv\" { H to \"[A1:C1]\" }\nwrite \"csv:" + c.options +
                                   "out.csv\" { A to \"[A1:C1]\" }";
        EXPECT_EQ(transcriptOf(runner, script), c.transcript);
        EXPECT_TRUE(runner.host().counts.balanced());
    }
}

TEST(ArraysWrite, DataframeColumns) {
    const StatementCase cases[] = {
        {"by number", "", R"s(
            declare I : range 1..2
            declare A : array(I, I) of real = {(1, 1): 1, (2, 2): 4}
            write "csv:dataframe;grow;out.csv" { A to "[A1:B1](#2,#1)" })s",
         R"s(write
            out.csv: 0,1|4,0|)s"},
        {"the header is looked at before the columns are counted", "", R"s(
            declare R : range 1..1
            declare S : dynamic set of text = {"a", "b", "c"}
            declare A : array(R, S) of real
            declare H : list of text = ["c", "a"]
            write "csv:out.csv" { H to "[A1:B1]" }
            write "csv:dataframe;skiph;grow;out.csv" { A to "[A1:B2]" }
            write "csv:dataframe;skiph;grow;out.csv" { A to "[A3:B4]" })s",
         R"s(write
            write 1 "SHEET: Wrong index value at [R1C1] (`c' not part of the index set).\n"
            write 1 "SHEET: Wrong number of columns (req:3 found:2).\n"
            out.csv: c,a|)s"},
    };
    checkStatements(cases);
}

}  // namespace
