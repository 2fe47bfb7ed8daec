#include "tests/statements/layouts/statement_case.h"

namespace {

const StatementCase readCases[] = {
    {"base elements, appended row by row", "1,2.5\n,x\n", R"s(
        declare I : list of integer = [9]
        declare T : list of text
        read "csv:in.csv" { I from "[A1:B2]", T from "[A1:B2](#2,#1)" }
        print I | print T)s",
     R"s(read [3,3]
        I [9,1,2,0]
        T ["2.5","1","x"])s"},
    {"any", "1,2.5,TRUE\nx,,2\n", R"s(
        declare L : list of any
        read "csv:in.csv" { L from "[A1:C2]" }
        print L)s",
     R"s(read [5]
        L [1,2.5,true,"x",2])s"},
    {"types of the host", "2024-03-01\njunk\n2024-03-02\n", R"s(
        declare L : list of date
        read "csv:in.csv" { L from "[A:A]" }
        print L)s",
     R"s(read [1] 1 "SHEET: Wrong result value at [R2C1].\n"
        L ["2024-03-01"])s"},
    {"records in groups of columns, empty groups passed over", "a,1,1.5,b,2,2.5\n,,,c,3,\n\nd,4,4.5\n", R"s(
        declare Line : record(product : text, qty : integer, price : real)
        declare L : list of Line
        read "csv:in.csv" { L from "[A1:F4]" }
        print L)s",
     R"s(read [4]
        L [{"product":"a","qty":1,"price":1.5},{"product":"b","qty":2,"price":2.5},{"product":"c","qty":3,"price":0},{"product":"d","qty":4,"price":4.5}])s"},
    {"records that do not go into the columns", "1,2,3,4\n", R"s(
        declare Line : record(product : text, qty : integer, price : real)
        declare L : list of Line
        read "csv:in.csv" { L from "[A1:D1]" }
        read "csv:in.csv" { L from "[A1:B1]" })s",
     R"s(read [0] 1 "SHEET: Wrong number of columns (req:3 found:4).\n"
        read [0] 1 "SHEET: Wrong number of columns (req:3 found:2).\n")s"},
    {"a record that fails is not appended", "a,2024-03-01\nb,junk\nc,2024-03-02\n", R"s(
        declare Line : record(name : text, day : date)
        declare L : list of Line
        read "csv:in.csv" { L from "[A1:B3]" }
        print L)s",
     R"s(read [1] 1 "SHEET: Wrong result value at [R2C2].\n"
        L [{"name":"a","day":"2024-03-01"}])s"},
    {"the size of the range", "1,2,3\n4,5,6\n7,8,9\n10,11,12\n", R"s(
        declare L : list of integer
        read "csv:in.csv" { L from "RangeSize;[A1:C4]", L from "rangesize;[A:B]", L from "rangesize;[B2]" }
        print L)s",
     R"s(read [0,0,0]
        L [4,3,4,2,1,1])s"},
    {"the size of a range that is not there", "", R"s(
        declare L : list of integer
        read "csv:in.csv" { L from "rangesize;[A1:C4]", L from "rangesize;[1$A1:C4]" }
        print L)s",
     R"s(read [0,0] 1 "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n"
        L [0,0])s"},
    {"rangesize drops all other options", "1,2\n3,4\n", R"s(
        declare L : list of integer
        declare R : list of real
        declare S : dynamic set of integer
        declare A : dynamic array(integer) of real
        declare B : list of array = [A]
        read "csv:skiph;dataframe;in.csv" { L from "rangesize;[A1:B2]" }
        read "csv:in.csv" { R from "rangesize;[A1:B2]" }
        read "csv:in.csv" { S from "rangesize;[A1:B2]" }
        read "csv:in.csv" { A from "rangesize;[A1:B2]" }
        read "csv:in.csv" { B from "rangesize;[A1:B2]" }
        read "csv:in.csv" { L from "rangesize;skiph;[A1:B2]" }
        print L)s",
     R"s(read [0]
        read [0] 1 "SHEET: The option 'rangesize' can only be used with a list of integers.\n"
        read [0] 1 "SHEET: The option 'rangesize' can only be used with a list of integers.\n"
        read [0] 1 "SHEET: The option 'rangesize' can only be used with a list of integers.\n"
        read [0] 1 "SHEET: The option 'rangesize' can only be used with a list of integers.\n"
        read [0] 1 "SHEET: Range name not found.\n" "SHEET: Invalid range or name not found.\n"
        L [2,2])s"},
    {"lists that cannot be read", "1\n", R"s(
        declare N : list of integer = null
        declare S : static list of integer
        declare P : record(a : integer)
        declare Q : alias of P
        declare L : list of Q
        read "csv:in.csv" { N from "[A1]" }
        read "csv:in.csv" { S from "[A1]" }
        read "csv:in.csv" { S from "rangesize;[A1]" }
        read "csv:in.csv" { L from "[A1]" })s",
     R"s(read [0] 1 "SHEET: Trying to access an uninitialized list.\n"
        read [0] 1 "SHEET: Non dynamic list for a `read'.\n"
        read [0] 1 "SHEET: Non dynamic list for a `read'.\n"
        read [0] 1 "SHEET: Wrong data type.\n")s"},
};

TEST(Lists, Read) {
    checkStatements(readCases);
}

TEST(Lists, Write) {
    const StatementCase cases[] = {
        {"plain lists flow across the columns", "", R"s(
            declare L : list of real = [1, 2.5, 3]
            declare T : list of text = ["x", "y"]
            write "csv:grow;out.csv" { L to "[A1:B1]", T to "[C1:C9]" })s",
         R"s(write
            out.csv: 1,2.5,x|3,,y|)s"},
        {"a list of any writes each item by its type", "", R"s(
            declare d : date = "2024-03-01"
            declare L : list of any = [1, "x", true, 2.5, d, null]
            write "csv:out.csv" { L to "[A1:F1]" })s",
         R"s(write
            out.csv: 1,x,TRUE,2.5,2024-03-01,|)s"},
        {"records", "", R"s(
            declare Line : record(product : text, qty : integer)
            declare L : list of Line = [("a", 1), ("b", 2), ("c", 3)]
            write "csv:out.csv" { L to "[A1:D1]" }
            write "csv:out.csv" { L to "[A1:C9]" })s",
         R"s(write
            write 1 "SHEET: Wrong number of columns (req:2 found:3).\n"
            out.csv: a,1,b,2|)s"},
        {"an empty list writes nothing and succeeds", "", R"s(
            declare Line : record(product : text, qty : integer)
            declare L : list of Line
            declare A : list of array
            declare i : integer = 1
            write "csv:out.csv" { L to "[A1]", A to "[A1]", i to "[A1]" })s",
         R"s(write
            out.csv: 1|)s"},
        {"a list of any with an array is a list of arrays", "", R"s(
            declare A : dynamic array(text) of real = {("a"): 1}
            declare L : list of any = [A]
            declare M : list of any = [A, 5]
            write "csv:out.csv" { L to "[A1:B1]" }
            write "csv:out.csv" { M to "[A1:B1]" })s",
         R"s(write
            write 1 "SHEET: Wrong list type for a worksheet.\n"
            out.csv: a,1|)s"},
        {"lists that cannot be written", "", R"s(
            declare N : list of text = null
            write "csv:out.csv" { N to "[A1]" }
            write "csv:out.csv" { N to "rangesize;[A1]" })s",
         R"s(write 1 "SHEET: Trying to access an uninitialized list.\n"
            write 1 "SHEET: Range name not found.\n" "SHEET: Invalid range or name not found.\n"
            out.csv: )s"},
    };
    checkStatements(cases);
}

}  // namespace
