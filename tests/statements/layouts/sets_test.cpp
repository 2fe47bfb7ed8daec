#include "tests/statements/layouts/statement_case.h"

namespace {

const StatementCase readCases[] = {
    {"row by row, blanks passed over, duplicates counted", "b,a\n,b\nc,\n", R"s(
        declare S : dynamic set of text
        read "csv:in.csv" { S from "[A1:B3]" }
        print S)s",
     R"s(read [4]
        S ["b","a","c"])s"},
    {"in the order of the selection", "1,2,3\n4,5,6\n", R"s(
        declare S : dynamic set of integer = {5}
        read "csv:in.csv" { S from "skiph;[A1:C2](#3,#1)" }
        print S)s",
     R"s(read [2]
        S [5,6,4])s"},
    {"conversions", "3.5,TRUE\nabc,x\n", R"s(
        declare I : dynamic set of integer | declare R : dynamic set of real
        declare T : dynamic set of text | declare B : dynamic set of boolean
        read "csv:in.csv" { I from "[A1:B2]", R from "[A1:B2]", T from "[A1:B1]", B from "[A1:B1]" }
        print I | print R | print T | print B)s",
     R"s(read [4,4,2,2]
        I [3,1,0]
        R [3.5,1,0]
        T ["3.5","TRUE"]
        B [true])s"},
    {"a range set is widened", "2022\n2020\n", R"s(
        declare R : dynamic range
        read "csv:in.csv" { R from "[A:A]" }
        print R)s",
     R"s(read [2]
        R [2020,2021,2022])s"},
    {"an alias of a base type and of a type of the host", "2024-03-01,7\njunk,8\n", R"s(
        declare Day : alias of date
        declare Id : alias of integer
        declare D : dynamic set of Day | declare I : dynamic set of Id | declare E : dynamic set of Day
        read "csv:in.csv" { D from "[A1]", I from "[B:B]", E from "[A:A]" }
        print D | print I | print E)s",
     R"s(read [1,2,1] 1 "SHEET: Wrong result value at [R2C1].\n"
        D ["2024-03-01"]
        I [7,8]
        E ["2024-03-01"])s"},
    {"sets that cannot be read", "1\n", R"s(
        declare N : dynamic set of text = null
        declare S : set of text = {"a"}
        declare R : range 1..3
        declare D : dynamic set of date
        declare A : dynamic set of any
        read "csv:in.csv" { N from "[A1]" }
        read "csv:in.csv" { S from "[A1]" }
        read "csv:in.csv" { R from "[A1]" }
        read "csv:in.csv" { D from "[A1]" }
        read "csv:in.csv" { A from "[A1]" })s",
     R"s(read [0] 1 "SHEET: Trying to access an uninitialized set.\n"
        read [0] 1 "SHEET: Non dynamic set for a `write'.\n"
        read [0] 1 "SHEET: Non dynamic set for a `write'.\n"
        read [0] 1 "SHEET: Wrong data type.\n"
        read [0] 1 "SHEET: Wrong data type.\n")s"},
    {"finished after the read when the host asks for it", "1\n2\n", R"s(
        param finish true
        declare S : dynamic set of integer
        read "csv:in.csv" { S from "[A1]" }
        read "csv:in.csv" { S from "[A2]" }
        print S)s",
     R"s(read [1]
        read [0] 1 "SHEET: Non dynamic set for a `write'.\n"
        S [1])s"},
};

TEST(Sets, Read) {
    checkStatements(readCases);
}

TEST(Sets, Write) {
    const StatementCase cases[] = {
        {"cut at the end of the range", "", R"s(
            declare S : dynamic set of integer = {1, 2, 3, 4, 5}
            write "csv:out.csv" { S to "[A1:B2]" })s",
         R"s(write
            out.csv: 1,2|3,4|)s"},
        {"three rows under grow", "", R"s(
            declare S : dynamic set of integer = {1, 2, 3, 4, 5}
            write "csv:grow;out.csv" { S to "[A1:B2]" })s",
         R"s(write
            out.csv: 1,2|3,4|5|)s"},
        {"any set can be written, across the selected columns", "", R"s(
            declare R : range 3..6
            declare S : set of text = {"x"}
            write "csv:grow;out.csv" { R to "[A1:C1](#3,#1)", S to "[B1:B9]" })s",
         R"s(write
            out.csv: 4,x,3|6,,5|)s"},
        {"types of the host and their aliases", "", R"s(
            declare Day : alias of date
            declare D : dynamic set of date = {"2024-03-01", "2024-03-02"}
            declare E : dynamic set of Day = {"2024-03-03"}
            declare Id : alias of integer
            declare I : dynamic set of Id = {7}
            write "csv:grow;out.csv" { D to "[A1]", E to "[B1]", I to "[C1]" })s",
         R"s(write
            out.csv: 2024-03-01,2024-03-03,7|2024-03-02|)s"},
        {"records take their columns side by side", "", R"s(
            declare P : record(a : integer, b : text)
            declare S : dynamic set of P = {(1, "x"), (2, "y"), (3, "z")}
            write "csv:grow;out.csv" { S to "[A1:D1]" }
            write "csv:grow;out.csv" { S to "[A1:C1]" }
            write "csv:grow;out.csv" { S to "[A1]" })s",
         R"s(write
            write 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
            write 1 "SHEET: Wrong number of columns (req:2 found:1).\n"
            out.csv: 1,x,2,y|3,z|)s"},
        {"sets that cannot be written", "", R"s(
            declare N : dynamic set of text = null
            declare P : record(a : integer)
            declare Q : alias of P
            declare S : dynamic set of Q
            write "csv:out.csv" { N to "[A1]" }
            write "csv:out.csv" { S to "[A1]" })s",
         R"s(write 1 "SHEET: Trying to access an uninitialized set.\n"
            write 1 "SHEET: Wrong data type.\n"
            out.csv: |)s"},
    };
    checkStatements(cases);
}

}  // namespace
