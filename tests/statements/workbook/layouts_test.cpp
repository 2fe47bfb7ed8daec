#include "tests/statements/workbook/workbook_script.h"

namespace {

using Layouts = WorkbookScript;
INSTANTIATE_FOR_DRIVERS(Layouts);

TEST_P(Layouts, IndexColumns) {
    EXPECT_EQ(run(R"s(
        declare A : dynamic array(text, integer) of real = {("bolts", 2023): 1.5, ("nuts", 2024): 0.1, ("nuts", 2023): -3}
        declare B : dynamic array(text, integer) of real
        write "$D:grow;t.$E" { A to "[Data$A1:C1]" }
        read "$D:t.$E" { B from "[Data$]" }
        print B)s"),
              R"s(write
read [3]
B [[["bolts",2023],1.5],[["nuts",2023],-3],[["nuts",2024],0.1]]
)s");
}

TEST_P(Layouts, HeaderAndSelection) {
    EXPECT_EQ(run(R"s(
        declare A : dynamic array(text) of real = {("a"): 1, ("b"): 2}
        declare B : dynamic array(text) of real
        declare C : dynamic array(real) of text
        write "$D:skiph+;grow;t.$E" { A to "[Data$A1:B1](name,value)" }
        read "$D:skiph;t.$E" { B from "[Data$](name,value)", C from "[Data$](#2,#1)" }
        read "$D:skiph;t.$E" { B from "[Data$](Name,value)" }
        print B
        print C)s"),
              R"s(write
read [2,2]
read 1 [0] "SHEET: Invalid column identifier in selection (Name,value)).\n" "SHEET: Invalid range or name not found.\n"
B [[["a"],1],[["b"],2]]
C [[[1],"a"],[[2],"b"]]
)s");
}

TEST_P(Layouts, NoindexPartndxAutondx) {
    EXPECT_EQ(run(R"s(
        declare I : range 1..2
        declare J : range 1..3
        declare A : array(I, J) of real = {(1, 1): 11, (1, 3): 13, (2, 2): 22}
        declare N : array(I, J) of real
        declare P : array(I, J) of real
        declare U : dynamic array(dynamic range) of integer
        write "$D:noindex;t.$E" { A to "[N$B2:D3]" }
        write "$D:partndx;t.$E" { A to "[P$A1:D2]" }
        read "$D:noindex;t.$E" { N from "[N$]" }
        read "$D:partndx;t.$E" { P from "[P$]" }
        read "$D:autondx=5;t.$E" { U from "[N$C2:C3]" }
        print N
        print P
        print U)s"),
              R"s(write
write
read [6]
read [6]
read [2]
N [[[1,1],11],[[1,2],0],[[1,3],13],[[2,1],0],[[2,2],22],[[2,3],0]]
P [[[1,1],11],[[1,2],0],[[1,3],13],[[2,1],0],[[2,2],22],[[2,3],0]]
U [[[5],0],[[6],22]]
)s");
}

TEST_P(Layouts, DataFrame) {
    EXPECT_EQ(run(R"s(
        declare R : range 1..2
        declare Names : dynamic set of text = {"price", "qty"}
        declare A : array(R, Names) of real = {(1, "price"): 2.5, (2, "qty"): 7}
        declare Back : dynamic set of text
        declare B : dynamic array(R, Back) of real
        write "$D:dataframe;skiph+;grow;t.$E" { A to "[F$A1:B1]" }
        read "$D:dataframe;skiph;t.$E" { B from "[F$]" }
        print B)s"),
              R"s(write
read [4]
B [[[1,"price"],2.5],[[1,"qty"],0],[[2,"price"],0],[[2,"qty"],7]]
)s");
}

TEST_P(Layouts, SetsListsRecordsAndUnions) {
    EXPECT_EQ(run(R"s(
        declare Line : record(product: text, qty: integer, price: real, open: boolean)
        declare S : dynamic set of text = {"x", "y", "z"}
        declare L : list of Line = [("bolt", 3, 0.5, true), ("nut", 0, 0.25, false)]
        declare M : list of any = [1, 2.5, "three", true]
        declare S2 : dynamic set of text
        declare L2 : list of Line
        declare M2 : list of any
        declare Size : list of integer
        write "$D:grow;t.$E" { S to "[S$A1:B1]", L to "[L$A1:D1]", M to "[M$A1:A1]" }
        read "$D:t.$E" { S2 from "[S$]", L2 from "[L$]", M2 from "[M$]", Size from "rangesize;[L$]" }
        print S2
        print L2
        print M2
        print Size)s"),
              R"s(write
read [3,2,4,0]
S2 ["x","y","z"]
L2 [{"product":"bolt","qty":3,"price":0.5,"open":true},{"product":"nut","qty":0,"price":0.25,"open":false}]
M2 [1,2.5,"three",true]
Size [2,4]
)s");
}

TEST_P(Layouts, ListOfArraysSharesItsIndex) {
    EXPECT_EQ(run(R"s(
        declare Keys : dynamic set of text = {"a", "b", "c"}
        declare A : dynamic array(Keys) of real = {("a"): 1, ("c"): 3}
        declare B : dynamic array(Keys) of text = {("b"): "bee", ("c"): "sea"}
        declare Both : list of array = [A, B]
        declare A2 : dynamic array(Keys) of real
        declare B2 : dynamic array(Keys) of text
        declare Back : list of array = [A2, B2]
        write "$D:grow;t.$E" { Both to "[S$A1:C1]" }
        read "$D:t.$E" { Back from "[S$A1:C3]" }
        print A2
        print B2)s"),
              R"s(write
read [4]
A2 [[["a"],1],[["c"],3]]
B2 [[["b"],"bee"],[["c"],"sea"]]
)s");
}

TEST_P(Layouts, GrowAndItsAbsence) {
    EXPECT_EQ(run(R"s(
        declare S : dynamic set of integer = {1, 2, 3, 4, 5}
        declare Cut : dynamic set of integer
        declare Grown : dynamic set of integer
        write "$D:t.$E" { S to "[Cut$A1:B2]" }
        write "$D:grow;t.$E" { S to "[Grown$A1:B2]" }
        read "$D:t.$E" { Cut from "[Cut$]", Grown from "[Grown$]" }
        print Cut
        print Grown)s"),
              R"s(write
write
read [4,5]
Cut [1,2,3,4]
Grown [1,2,3,4,5]
)s");
}

}  // namespace
