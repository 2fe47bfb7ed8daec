#include "tests/statements/layouts/statement_case.h"

namespace {

const StatementCase readCases[] = {
    {"one index column, a value column for each array", "k,v,w\na,1,x\n\nb,,y\nc,3,\n", R"s(
        declare A : dynamic array(text) of real
        declare B : dynamic array(text) of text
        declare S : dynamic set of text
        declare C : dynamic array(S) of real | declare D : dynamic array(S) of any
        declare L : list of array = [C, D]
        read "csv:skiph;in.csv" { L from "[A1:C5]" }
        print C | print D)s",
     R"s(read [4]
        C [[["a"],1],[["c"],3]]
        D [[["a"],"x"],[["b"],"y"]])s"},
    {"autondx counts the rows that are not empty", "1,2\n\n,4\n", R"s(
        declare R : dynamic range
        declare A : dynamic array(R) of real | declare B : dynamic array(R) of real
        declare L : list of array = [A, B]
        read "csv:autondx=5;in.csv" { L from "[A1:B3]" }
        print A | print B)s",
     R"s(read [3]
        A [[[5],1]]
        B [[[5],2],[[6],4]])s"},
    {"a list of any counts as a list of values on a read", "1\n", R"s(
        declare A : dynamic array(text) of real
        declare L : list of any = [A]
        read "csv:in.csv" { L from "[A1]" }
        print A)s",
     R"s(read [1]
        A [])s"},
    {"failures name the cell; what was stored stays", "a,1,2\n,3,4\n", R"s(
        declare S : dynamic set of text
        declare A : dynamic array(S) of real | declare B : dynamic array(S) of real
        declare L : list of array = [A, B]
        declare F : set of text = {"a"}
        declare C : array(F) of real
        declare M : list of array = [C]
        read "csv:in.csv" { L from "[A1:C2]" }
        read "csv:in.csv" { M from "emptyndx;[A1:B2]" }
        print A | print B | print C)s",
     R"s(read [2] 1 "SHEET: An index cannot be an empty cell ([R2C1]).\n"
        read [1] 1 "SHEET: Wrong index value at [R2C1].\n"
        A [[["a"],1]]
        B [[["a"],2]]
        C [[["a"],1]])s"},
    {"what goes together", "a,1,2\n", R"s(
        declare S : dynamic set of text | declare R : range 1..2 | declare Q : dynamic range
        declare P : record(n : integer)
        declare A : dynamic array(S) of real
        declare A2 : dynamic array(S, S) of real
        declare B : dynamic array(text) of real
        declare C : dynamic array(S) of P
        declare D : dynamic array(date) of real
        declare E : array(R) of real | declare F : dynamic array(Q) of real
        declare G : dynamic array(Q, Q) of real
        declare N : dynamic array(S) of real = null
        declare x : integer
        declare Dims : list of array = [A, A2]
        declare Sets : list of array = [A, B]
        declare Recs : list of array = [A, C]
        declare Rec1 : list of array = [C]
        declare Types : list of array = [D]
        declare Ranges : list of array = [E, F]
        declare Nulls : list of array = [A, N]
        declare Mixed : list of array = [A, x]
        declare Plane : list of array = [G]
        declare None : list of array = []
        read "csv:in.csv" { Dims from "[A1:C1]" }
        read "csv:in.csv" { Sets from "[A1:C1]" }
        read "csv:in.csv" { Recs from "[A1:C1]" }
        read "csv:in.csv" { Rec1 from "[A1:B1]" }
        read "csv:in.csv" { Types from "[A1:B1]" }
        read "csv:in.csv" { Nulls from "[A1:C1]" }
        read "csv:in.csv" { Mixed from "[A1:C1]" }
        read "csv:autondx;in.csv" { Sets from "[A1:C1]" }
        read "csv:autondx;in.csv" { Plane from "[A1]" }
        read "csv:in.csv" { Ranges from "[A1:B1]" }
        read "csv:autondx;in.csv" { Ranges from "[A1:C1]" }
        read "csv:in.csv" { None from "[A1]" })s",
     R"s(read [0] 1 "SHEET: Inconsistent array list.\n"
        read [0] 1 "SHEET: Inconsistent array list.\n"
        read [0] 1 "SHEET: Wrong array type for a worksheet.\n"
        read [0] 1 "SHEET: Wrong array type for a worksheet.\n"
        read [0] 1 "SHEET: Wrong index type.\n"
        read [0] 1 "SHEET: Trying to access an uninitialized array.\n"
        read [0] 1 "SHEET: Wrong list type for a worksheet.\n"
        read [0] 1 "SHEET: Inconsistent array list.\n"
        read [0] 1 "SHEET: The option 'autondx' requires 1-dimension arrays indiced by a range set.\n"
        read [0] 1 "SHEET: Wrong number of columns (req:3 found:2).\n"
        read [0] 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
        read [0] 1 "SHEET: Wrong number of columns (req:0 found:1).\n")s"},
};

TEST(ArrayLists, Read) {
    checkStatements(readCases);
}

TEST(ArrayLists, Write) {
    const std::string arrays = R"s(
        declare S : dynamic set of text = {"a", "b", "c", "d", "e"}
        declare A : dynamic array(S) of real = {("a"): 1, ("c"): 3, ("d"): 4}
        declare B : dynamic array(S) of text = {("b"): "x", ("c"): "y", ("e"): "z"}
        declare L : list of array = [A, B])s";
    const StatementCase cases[] = {
        {"a row for each distinct index, with holes", "", R"s(write "csv:grow;out.csv" { L to "[A1:C1]" })s",
         R"s(write
            out.csv: a,1|b,,x|c,3,y|d,4|e,,z|)s"},
        {"the end of the range ends it without grow", "", R"s(write "csv:out.csv" { L to "[A1:C3]" })s",
         R"s(write
            out.csv: a,1|b,,x|c,3,y|)s"},
        {"under grow the range moves down by its height", "",
         R"s(write "csv:grow;out.csv" { L to "[B2:D3](#3,#1,#2)" })s",
         R"s(write
            out.csv: |,1,,a|,,x,b|,3,y,c|,4,,d|,,z,e|)s"},
        {"a cell without an entry is left alone", "", R"s(
            declare T : list of text = ["1", "2", "3", "4", "5", "6"]
            write "csv:out.csv" { T to "[A1:C2]", L to "[A1:C2]" })s",
         R"s(write
            out.csv: a,1,3|b,5,x|)s"},
        {"empty arrays are out of the game", "", R"s(
            declare E : dynamic array(S) of real
            declare M : list of array = [E, B]
            declare N : list of array = [E]
            declare i : integer = 9
            write "csv:grow;out.csv" { M to "[A1:C1]", N to "[E1:F1]", i to "[E1]" })s",
         R"s(write
            out.csv: b,,x,,9|c,,y|e,,z|)s"},
        {"without indices under autondx", "", R"s(
            declare R : range 1..3
            declare C : dynamic array(R) of real = {(1): 1, (3): 3}
            declare D : array(R) of real = {(2): 5}
            declare M : list of array = [C, D]
            write "csv:autondx;grow;out.csv" { M to "[A1:B1]" }
            write "csv:autondx;out.csv" { L to "[D1:E1]" })s",
         R"s(write
            write 1 "SHEET: The option 'autondx' requires 1-dimension arrays indiced by a range set.\n"
            out.csv: 1,0|,5|3,0|)s"},
        {"two dimensions over ranges of their own", "", R"s(
            declare P : range 1..2 | declare Q : range 2..3
            declare C : dynamic array(P, S) of real = {(1, "b"): 12, (2, "a"): 21}
            declare D : dynamic array(Q, S) of real = {(2, "a"): 5, (3, "c"): 6}
            declare M : list of array = [C, D]
            write "csv:grow;out.csv" { M to "[A1:D1]" })s",
         R"s(write
            out.csv: 1,b,12|2,a,21,5|3,c,,6|)s"},
        {"columns that do not fit", "", R"s(write "csv:out.csv" { L to "[A1:B3]" })s",
         R"s(write 1 "SHEET: Wrong number of columns (req:3 found:2).\n"
            out.csv: |)s"},
    };
    for (const StatementCase& c : cases) {
        const std::string script = arrays + "\n" + c.script;
        const StatementCase whole = {c.name, c.csv, script.c_str(), c.transcript};
        checkStatements({&whole, 1});
    }
}

}  // namespace
