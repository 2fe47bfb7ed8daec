#include "tests/statements/layouts/statement_case.h"

namespace {

const StatementCase readCases[] = {
    {"base types by the kind of the cell", "3.7,abc,TRUE,-2\n", R"s(
        declare i : integer | declare r : real | declare t : text | declare b : boolean
        declare i2 : integer | declare r2 : real | declare t2 : text | declare b2 : boolean
        declare t3 : text
        read "csv:in.csv" { i from "[A1]", r from "[D1]", t from "[B1]", b from "[C1]" }
        read "csv:in.csv" { i2 from "[C1]", r2 from "[C1]", t2 from "[A1]", b2 from "[D1]", t3 from "[C1]" }
        print i | print r | print t | print b | print i2 | print r2 | print t2 | print b2 | print t3)s",
     R"s(read [1,1,1,1]
        read [1,1,1,1,1]
        i 3
        r -2
        t "abc"
        b true
        i2 1
        r2 1
        t2 "3.7"
        b2 true
        t3 "TRUE")s"},
    {"text that is no number reads as 0 without a message", "abc,3.5 kg\n", R"s(
        declare i : integer = 9 | declare r : real = 9 | declare b : boolean = true
        read "csv:in.csv" { i from "[A1]", r from "[B1]", b from "[A1]" }
        print i | print r | print b)s",
     R"s(read [1,1,1]
        i 0
        r 3.5
        b false)s"},
    {"an empty cell is a value", "1\n", R"s(
        declare i : integer = 9 | declare t : text = "x" | declare d : date = "2024-01-02" | declare a : any = 5
        read "csv:in.csv" { i from "[C9]", t from "[C9]", d from "[C9]", a from "[C9]" }
        print i | print t | print d | print a)s",
     R"s(read [1,1,1,1]
        i 0
        t null
        d null
        a null)s"},
    {"numbers as text go by the host's format", "0.1234567,1234567\n", R"s(
        param realformat "%.3g"
        declare t : text | declare u : text
        read "csv:in.csv" { t from "[A1]", u from "[B1]" }
        print t | print u)s",
     R"s(read [1,1]
        t "0.123"
        u "1.23e+06")s"},
    {"the corner of the rectangle, not the first selected column", "1,2,3\n4,5,6\n", R"s(
        declare a : integer | declare b : integer | declare c : integer
        read "csv:in.csv" { a from "[A1:C2](#3,#1)", b from "[A1:C2](#3,#2)", c from "skiph;[A1:C2]" }
        print a | print b | print c)s",
     R"s(read [1,1,1]
        a 1
        b 2
        c 4)s"},
    {"any takes the cell's own type", "3,3.5,abc,TRUE,3000000000\n", R"s(
        declare a : any | declare b : any | declare c : any = "old" | declare d : any | declare e : any
        read "csv:in.csv" { a from "[A1]", b from "[B1]", c from "[C1]", d from "[D1]", e from "[E1]" }
        print a | print b | print c | print d | print e)s",
     R"s(read [1,1,1,1,1]
        a 3
        b 3.5
        c "abc"
        d true
        e 3000000000.0)s"},
    {"any that holds a date takes a text", "abc\n", R"s(
        declare d : date = "2024-01-02"
        declare a : any = d
        read "csv:in.csv" { a from "[A1]" }
        print a)s",
     R"s(read [1]
        a "abc")s"},
    {"types of the host go by their text", "2024-03-01,junk\n", R"s(
        declare Day : alias of date
        declare d : date | declare e : Day | declare f : date = "2020-01-01"
        read "csv:in.csv" { d from "[A1]", e from "[A1]", f from "[B1]" }
        print d | print e | print f)s",
     R"s(read [1,1,0] 1 "SHEET: Wrong result value at [R1C2].\n"
        d "2024-03-01"
        e "2024-03-01"
        f "2020-01-01")s"},
    {"a record takes a column for each base field", "7,x,1.5,2024-03-01,y\n", R"s(
        declare Point : record(x : real, y : any)
        declare Line : record(name : text, at : Point, day : date)
        declare r : Line
        declare s : Line
        read "csv:in.csv" { r from "[A1:E1](#2,#1,#3,#4)", s from "[A1:C1]" }
        print r)s",
     R"s(read [1,0] 1 "SHEET: Wrong number of columns (req:4 found:3).\n"
        r {"name":"x","at":{"x":7,"y":1.5},"day":"2024-03-01"})s"},
    {"a field that refuses its text ends the record", "x,junk,5\n", R"s(
        declare Line : record(name : text, day : date, n : integer)
        declare r : Line
        read "csv:in.csv" { r from "[A1:C1]" }
        print r)s",
     R"s(read [0] 1 "SHEET: Wrong result value at [R1C2].\n"
        r {"name":"x","day":null,"n":0})s"},
    {"types that a sheet cannot hold", "1\n", R"s(
        declare Pair : record(a : integer, b : integer)
        declare Other : alias of Pair
        declare o : Other
        read "csv:in.csv" { o from "[A1]" })s",
     R"s(read [0] 1 "SHEET: Wrong data type.\n")s"},
    {"items behind a failed one are not done", "1,2\n", R"s(
        declare a : integer | declare b : integer | declare c : integer
        read "csv:in.csv" { a from "[A1]", b from "[nowhere$A1]", c from "[B1]" }
        print a | print c)s",
     R"s(read [1,0,0] 2 "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n"
        a 1
        c 0)s"},
};

TEST(Scalars, Read) {
    checkStatements(readCases);
}

TEST(Scalars, Write) {
    const StatementCase cases[] = {
        {"base types", "", R"s(
            declare i : integer = -3 | declare r : real = 2.5 | declare t : text = "a,b" | declare b : boolean = true
            declare n : text
            write "csv:out.csv" { i to "[A1]", r to "[B1]", t to "[C1]", b to "[D1]", n to "[E1]" })s",
         R"s(write
            out.csv: -3,2.5,"a,b",TRUE,|)s"},
        {"the first cell alone", "", R"s(
            declare i : integer = 7
            write "csv:out.csv" { i to "[B2:D9]" })s",
         R"s(write
            out.csv: |,7|)s"},
        {"any writes what it holds", "", R"s(
            declare d : date = "2024-03-01"
            declare a : any = 3 | declare b : any = "x" | declare c : any = true | declare e : any | declare f : any = d
            write "csv:out.csv" { a to "[A1]", b to "[B1]", c to "[C1]", e to "[D1]", f to "[E1]" })s",
         R"s(write
            out.csv: 3,x,TRUE,,2024-03-01|)s"},
        {"records, in the order of the selection", "", R"s(
            declare Point : record(x : real, y : any)
            declare Line : record(name : text, at : Point, day : date)
            declare r : Line = ("n", (1, 2.5), "2024-03-01")
            write "csv:out.csv" { r to "[A1:D1](#4,#3,#2,#1)" })s",
         R"s(write
            out.csv: 2024-03-01,2.5,1,n|)s"},
        {"a range that is too narrow ends the statement silently", "", R"s(
            declare Pair : record(a : integer, b : integer)
            declare p : Pair = (1, 2) | declare i : integer = 5
            write "csv:out.csv" { p to "[A1]", i to "[A1]" })s",
         R"s(write 2
            out.csv: |)s"},
        {"types that a sheet cannot hold", "", R"s(
            declare Pair : record(a : integer, b : integer)
            declare Other : alias of Pair
            declare o : Other
            write "csv:out.csv" { o to "[A1]" })s",
         R"s(write 1 "SHEET: Wrong data type.\n"
            out.csv: |)s"},
    };
    checkStatements(cases);
}

}  // namespace
