#include "tests/statements/layouts/statement_case.h"

namespace {

const StatementCase indexColumnsCases[] = {
    {"indices first, new ones added, blank rows and blank values passed over", "a,1,10\n\nb,2,\na,2,20\n,,\nc,1,0\n",
     R"s(
        declare A : dynamic array(text, integer) of real
        read "csv:in.csv" { A from "[A:C]" }
        print A)s",
     R"s(read [3]
        A [[["a",1],10],[["a",2],20],[["c",1],0]])s"},
    {"the selection gives the order, the header is left out", "year,v,name\n2020,5,x\n2021,6,y\n", R"s(
        declare A : dynamic array(text, integer) of real
        read "csv:in.csv" { A from "skiph;[A1:C3](name,year,v)" }
        print A)s",
     R"s(read [2]
        A [[["x",2020],5],[["y",2021],6]])s"},
    {"index values convert", "3.5,1\nTRUE,2\n,3\n", R"s(
        declare I : dynamic array(integer) of real
        read "csv:in.csv" { I from "emptyndx;[A1:B3]" }
        print I)s",
     R"s(read [3]
        I [[[3],1],[[1],2],[[0],3]])s"},
    {"an empty index fails, unless emptyndx", "a,1\n,2\nb,3\n", R"s(
        declare A : dynamic array(text) of real
        declare B : dynamic array(text) of real
        read "csv:in.csv" { A from "[A1:B3]" }
        read "csv:in.csv" { B from "emptyndx;[A1:B3]" }
        print A | print B)s",
     R"s(read [1] 1 "SHEET: An index cannot be an empty cell ([R2C1]).\n"
        read [3]
        A [[["a"],1]]
        B [[["a"],1],[[""],2],[["b"],3]])s"},
    {"an index that a fixed set does not have", "a,1\nz,2\n", R"s(
        declare S : set of text = {"a"}
        declare A : array(S) of real
        read "csv:in.csv" { A from "[A1:B2]" }
        print A)s",
     R"s(read [1] 1 "SHEET: Wrong index value at [R2C1].\n"
        A [[["a"],1]])s"},
    {"all kinds of value", "a,1\nb,x\nc,TRUE\n", R"s(
        declare T : dynamic array(text) of text
        declare B : dynamic array(text) of boolean
        declare U : dynamic array(text) of any
        read "csv:in.csv" { T from "[A:B]", B from "[A:B]", U from "[A:B]" }
        print T | print B | print U)s",
     R"s(read [3,3,3]
        T [[["a"],"1"],[["b"],"x"],[["c"],"TRUE"]]
        B [[["a"],true],[["b"],false],[["c"],true]]
        U [[["a"],1],[["b"],"x"],[["c"],true]])s"},
    {"types of the host, which may refuse", "a,2024-03-01\nb,junk\n", R"s(
        declare A : dynamic array(text) of date
        read "csv:in.csv" { A from "[A:B]" }
        print A)s",
     R"s(read [1] 1 "SHEET: Wrong result value at [R2C2].\n"
        A [[["a"],"2024-03-01"]])s"},
    {"records, also from empty cells", "a,1,x\nb,,\n", R"s(
        declare P : record(n : integer, t : text)
        declare A : dynamic array(text) of P
        read "csv:in.csv" { A from "[A1:C2]" }
        print A)s",
     R"s(read [2]
        A [[["a"],{"n":1,"t":"x"}],[["b"],{"n":0,"t":null}]])s"},
    {"an alias as index", "2024-03-01,1\njunk,2\n", R"s(
        declare Day : alias of date
        declare A : dynamic array(Day) of real
        read "csv:in.csv" { A from "[A:B]" }
        print A)s",
     R"s(read [1] 1 "SHEET: Wrong index value at [R2C1].\n"
        A [[["2024-03-01"],1]])s"},
    {"columns and types that do not fit", "a,1,2\n", R"s(
        declare A : dynamic array(text) of real
        declare P : record(n : integer, t : text)
        declare Q : alias of P
        declare B : dynamic array(text) of P
        declare C : dynamic array(text) of Q
        declare D : dynamic array(date) of real
        declare N : dynamic array(text) of real = null
        read "csv:in.csv" { A from "[A1:C1]" }
        read "csv:in.csv" { B from "[A1:B1]" }
        read "csv:in.csv" { C from "[A1:C1]" }
        read "csv:in.csv" { D from "[A1:B1]" }
        read "csv:in.csv" { N from "[A1:B1]" })s",
     R"s(read [0] 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
        read [0] 1 "SHEET: Wrong number of columns (req:3 found:2).\n"
        read [0] 1 "SHEET: Wrong data type.\n"
        read [0] 1 "SHEET: Wrong index type.\n"
        read [0] 1 "SHEET: Trying to access an uninitialized array.\n")s"},
};

TEST(ArraysRead, IndexColumns) {
    checkStatements(indexColumnsCases);
}

TEST(ArraysRead, Autondx) {
    const StatementCase cases[] = {
        {"rows count from 1 or from the value; blank rows take no index", "5\n\n6\n,7\n", R"s(
            declare A : dynamic array(range) of real
            declare B : dynamic array(range) of real
            read "csv:autondx;in.csv" { A from "[A1:A3]", B from "autondx=5;[A1:A3]" }
            print A | print B)s",
         R"s(read [2,2]
            A [[[1],5],[[2],6]]
            B [[[5],5],[[6],6]])s"},
        {"negative bases, and records", "1,x\n2,y\n", R"s(
            declare P : record(n : integer, t : text)
            declare A : dynamic array(range) of P
            read "csv:in.csv" { A from "autondx=-1;[A1:B2]" }
            print A)s",
         R"s(read [2]
            A [[[-1],{"n":1,"t":"x"}],[[0],{"n":2,"t":"y"}]])s"},
        {"an index outside a fixed range", "1\n2\n3\n", R"s(
            declare R : range 1..2
            declare A : array(R) of real
            read "csv:in.csv" { A from "autondx;[A1:A3]" }
            print A)s",
         R"s(read [2] 1 "SHEET: Wrong result value at [R3C1].\n"
            A [[[1],1],[[2],2]])s"},
        {"what it asks of the array", "1,2\n", R"s(
            declare A : dynamic array(integer) of real
            declare B : dynamic array(range, range) of real
            declare C : dynamic array(range) of real
            read "csv:autondx;in.csv" { A from "[A1]" }
            read "csv:autondx;in.csv" { B from "[A1]" }
            read "csv:autondx;in.csv" { C from "[A1:B1]" }
            read "csv:autondx;partndx;in.csv" { C from "[A1:B1]" })s",
         R"s(read [0] 1 "SHEET: The option 'autondx' requires 1-dimension arrays indiced by a range set.\n"
            read [0] 1 "SHEET: The option 'autondx' requires 1-dimension arrays indiced by a range set.\n"
            read [0] 1 "SHEET: Wrong number of columns (req:1 found:2).\n"
            read [0] 1 "SHEET: Wrong number of columns (req:0 found:2).\n")s"},
        {"noindex wins over it", "7,8\n", R"s(
            declare R : range 1..2
            declare A : array(R) of real
            read "csv:noindex;autondx=9;in.csv" { A from "[A1:B1]" }
            print A)s",
         R"s(read [2]
            A [[[1],7],[[2],8]])s"},
    };
    checkStatements(cases);
}

// J of these tables, over 3 by 3 cells of which one is empty.
constexpr const char* square = "1,2,3\n4,,6\n7,8,9\n";

TEST(ArraysRead, Noindex) {
    const StatementCase cases[] = {
        {"columns run along the last dimension; empty cells step over their entry", square, R"s(
            declare I : range 1..2 | declare J : range 1..3
            declare A : array(I, J) of real
            read "csv:noindex;in.csv" { A from "[A1:C2]" }
            print A)s",
         R"s(read [5]
            A [[[1,1],1],[[1,2],2],[[1,3],3],[[2,1],4],[[2,2],0],[[2,3],6]])s"},
        {"columns behind the last index are left", square, R"s(
            declare I : range 1..2
            declare A : array(I, I) of real
            read "csv:noindex;in.csv" { A from "[A1:C3]" }
            print A)s",
         R"s(read [3]
            A [[[1,1],1],[[1,2],2],[[2,1],4],[[2,2],0]])s"},
        {"columns that are missing are stepped over", square, R"s(
            declare I : range 5..7 | declare S : set of text = {"x", "y"}
            declare A : dynamic array(I, S) of real
            read "csv:noindex;in.csv" { A from "[A1:A2]" }
            print A)s",
         R"s(read [2]
            A [[[5,"x"],1],[[6,"x"],4]])s"},
        {"three dimensions", "1,2\n3,4\n5,6\n7,8\n", R"s(
            declare I : range 1..2
            declare A : array(I, I, I) of integer
            read "csv:noindex;in.csv" { A from "[A1:B4]" }
            print A)s",
         R"s(read [8]
            A [[[1,1,1],1],[[1,1,2],2],[[1,2,1],3],[[1,2,2],4],[[2,1,1],5],[[2,1,2],6],[[2,2,1],7],[[2,2,2],8]])s"},
        {"one dimension runs on from row to row", square, R"s(
            declare I : range 1..5
            declare A : array(I) of real
            read "csv:noindex;in.csv" { A from "[A1:B3]" }
            print A)s",
         R"s(read [4]
            A [[[1],1],[[2],2],[[3],4],[[4],0],[[5],7]])s"},
        {"an empty set ends the read at once", square, R"s(
            declare A : dynamic array(text) of real
            read "csv:noindex;in.csv" { A from "[A1:B3]" }
            print A)s",
         R"s(read [0]
            A [])s"},
        {"records in groups", "1,x,2,y\n3,z,,\n", R"s(
            declare P : record(n : integer, t : text)
            declare I : range 1..2
            declare A : dynamic array(I, I) of P
            declare B : dynamic array(I) of P
            read "csv:noindex;in.csv" { A from "[A1:D2]", B from "[A1:B2]" }
            read "csv:noindex;in.csv" { A from "[A1:B2]" }
            read "csv:noindex;in.csv" { B from "[A1:C2]" }
            print A | print B)s",
         R"s(read [3,2]
            read [0] 1 "SHEET: Wrong number of columns (req:4 found:2).\n"
            read [0] 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
            A [[[1,1],{"n":1,"t":"x"}],[[1,2],{"n":2,"t":"y"}],[[2,1],{"n":3,"t":"z"}]]
            B [[[1],{"n":1,"t":"x"}],[[2],{"n":3,"t":"z"}]])s"},
    };
    checkStatements(cases);
}

TEST(ArraysRead, Partndx) {
    const StatementCase cases[] = {
        {"the last index runs along the columns, each row afresh", "b,1,2,3\n\na,4,,6\n", R"s(
            declare J : range 1..3
            declare A : dynamic array(text, J) of real
            read "csv:partndx;in.csv" { A from "[A1:D3]" }
            print A)s",
         R"s(read [5]
            A [[["b",1],1],[["b",2],2],[["b",3],3],[["a",1],4],[["a",3],6]])s"},
        {"more columns than the last set are left", "1,2020,10,20,99\n2,2021,30,40,98\n", R"s(
            declare S : set of text = {"x", "y"}
            declare A : dynamic array(integer, integer, S) of real
            read "csv:partindex;in.csv" { A from "[A1:E2]" }
            print A)s",
         R"s(read [4]
            A [[[1,2020,"x"],10],[[1,2020,"y"],20],[[2,2021,"x"],30],[[2,2021,"y"],40]])s"},
        {"records in groups", "a,1,x,2,y\n", R"s(
            declare P : record(n : integer, t : text)
            declare J : range 1..2
            declare A : dynamic array(text, J) of P
            read "csv:partndx;in.csv" { A from "[A1:E1]" }
            print A)s",
         R"s(read [2]
            A [[["a",1],{"n":1,"t":"x"}],[["a",2],{"n":2,"t":"y"}]])s"},
        {"what it asks of array and range", "a,1,2\n,3,4\n", R"s(
            declare J : range 1..3
            declare A : dynamic array(text, J) of real
            declare B : array(J) of real
            declare D : dynamic array(date, J) of real
            declare I : range 1..2
            declare C : dynamic array(text, I) of real
            read "csv:partndx;in.csv" { A from "[A1:C1]" }
            read "csv:partndx;in.csv" { B from "[A1:C1]" }
            read "csv:partndx;in.csv" { D from "[A1:D1]" }
            read "csv:partndx;in.csv" { C from "[A1:C2]" }
            print C)s",
         R"s(read [0] 1 "SHEET: Wrong number of columns (req:4 found:3).\n"
            read [0] 1 "SHEET: Wrong number of columns (req:3 found:3).\n"
            read [0] 1 "SHEET: Wrong index type.\n"
            read [2] 1 "SHEET: An index cannot be an empty cell ([R2C1]).\n"
            C [[["a",1],1],[["a",2],2]])s"},
    };
    checkStatements(cases);
}

TEST(ArraysRead, Dataframe) {
    const StatementCase cases[] = {
        {"rows by number, columns by name", "a,,c\n1,2,3\n,5,6\n", R"s(
            declare A : dynamic array(range, text) of real
            read "csv:dataframe;skiph;in.csv" { A from "[A1:C3]" }
            print A)s",
         R"s(read [5]
            A [[[1,"a"],1],[[1,"#2"],2],[[1,"c"],3],[[2,"#2"],5],[[2,"c"],6]])s"},
        {"columns by number without a header", "1,2\n3,4\n", R"s(
            declare A : dynamic array(range, range) of real
            read "csv:dataframe;in.csv" { A from "[A1:B2](#2,#1)" }
            print A)s",
         R"s(read [4]
            A [[[1,1],2],[[1,2],1],[[2,1],4],[[2,2],3]])s"},
        {"a fixed set of rows ends the read", "a\n1\n2\n3\n", R"s(
            declare R : range 1..2
            declare A : dynamic array(R, text) of real
            read "csv:dataframe;skiph;in.csv" { A from "[A1:A4]" }
            print A)s",
         R"s(read [2]
            A [[[1,"a"],1],[[2,"a"],2]])s"},
        {"a name that a fixed set does not have", "a,b\n1,2\n", R"s(
            declare S : set of text = {"a"}
            declare A : dynamic array(range, S) of real
            read "csv:dataframe;skiph;in.csv" { A from "[A1:B2]" }
            print A)s",
         R"s(read [0] 1 "SHEET: Failed to insert `b' into indexing set.\n"
            A [])s"},
        {"what it asks of the item", "a,b\n1,2\n", R"s(
            declare A : dynamic array(range) of real
            declare B : dynamic array(text, text) of real
            declare C : dynamic array(range, text) of real
            declare D : dynamic array(range, range) of real
            declare P : record(n : integer)
            declare E : dynamic array(range, text) of P
            declare i : integer
            read "csv:dataframe;skiph;in.csv" { A from "[A1:B2]" }
            read "csv:dataframe;skiph;in.csv" { B from "[A1:B2]" }
            read "csv:dataframe;in.csv" { C from "[A1:B2]" }
            read "csv:dataframe;skiph;in.csv" { D from "[A1:B2]" }
            read "csv:dataframe;skiph;in.csv" { E from "[A1:B2]" }
            read "csv:in.csv" { i from "dataframe;[A1:B2]" })s",
         R"s(read [0] 1 "SHEET: The option 'dataframe' requires an array of 2 dimensions indexed by a range and a set of strings.\n"
            read [0] 1 "SHEET: The option 'dataframe' requires an array of 2 dimensions indexed by a range and a set of strings.\n"
            read [0] 1 "SHEET: The option 'dataframe' requires an array of 2 dimensions indexed by a range and a set of strings.\n"
            read [0] 1 "SHEET: The option 'dataframe' requires an array of 2 dimensions indexed by a range and a set of strings.\n"
            read [0] 1 "SHEET: The option 'dataframe' requires an array of 2 dimensions indexed by a range and a set of strings.\n"
            read [0] 1 "SHEET: The option 'dataframe' requires an array of 2 dimensions indexed by a range and a set of strings.\n")s"},
    };
    checkStatements(cases);
}

}  // namespace
