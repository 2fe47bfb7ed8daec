#include "tests/statements/layouts/statement_case.h"

namespace {

const StatementCase onACsvSourceCases[] = {
    {"a sheet called Sheet1, and no names", "1,2\n3,4\n", R"s(
        declare a : integer | declare b : integer | declare c : integer
        read "csv:in.csv" { a from "[sheet1$B2]", b from "[1$A2]", c from "Totals" }
        print a | print b)s",
     R"s(read [1,1,0] 1 "SHEET: Range name not found.\n" "SHEET: Invalid range or name not found.\n"
        a 4
        b 3)s"},
    {"an empty file has no sheet", "", R"s(
        declare a : integer
        read "csv:in.csv" { a from "[A1]" }
        read "csv:in.csv" { a from "[]" })s",
     R"s(read [0] 1 "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n"
        read [0] 1 "SHEET: Sheet not found.\n" "SHEET: Invalid range or name not found.\n")s"},
    {"a second sheet cannot be added", "", R"s(
        declare a : integer = 7
        write "csv:out.csv" { a to "[First$A1]", a to "[Second$A1]" })s",
     R"s(write 1 "SHEET: A new sheet cannot be added.\n" "SHEET: Invalid range or name not found.\n"
        out.csv: 7|)s"},
    {"the whole sheet of an update source grows", "", R"s(
        declare S : dynamic set of integer = {1, 2, 3}
        declare one : integer = 0
        write "csv:out.csv" { one to "[A1]" }
        write "csv:out.csv" { S to "[]" }
        write "csv:out.csv" { S to "[B:B]" })s",
     R"s(write
        write
        write
        out.csv: 1,1|2,2|3,3|)s"},
    {"the area of a new sheet is its first cell", "", R"s(
        declare S : dynamic set of integer = {1}
        write "csv:out.csv" { S to "[]" })s",
     R"s(write
        out.csv: 1|)s"},
    {"names are written into an empty header", "", R"s(
        declare A : dynamic array(text) of real = {("a"): 1, ("b"): 2}
        write "csv:skiph+;grow;out.csv" { A to "[A1:C1](key, value)" }
        write "csv:skiph;grow;out.csv" { A to "[A1:C1](value,key)" }
        write "csv:skiph;out.csv" { A to "[A1:C1](value,key)" })s",
     R"s(write
        write
        write 1 "SHEET: Missing header row.\n" "SHEET: Invalid range or name not found.\n"
        out.csv: key,value|1,a|2,b|)s"},
    {"rows behind the last cell are counted, not walked", "1,2\n3\n", R"s(
        declare L : list of integer | declare S : list of integer
        declare A : dynamic array(integer) of integer
        read "csv:in.csv" { L from "[A1:XFD999999999]", S from "rangesize;[A2:B999999999]" }
        read "csv:skiph;in.csv" { L from "[A1:A999999999]", L from "[A2:A999999999]" }
        read "csv:in.csv" { A from "[A1:B999999999]" }
        print L | print S | print A)s",
     R"s(read [3,0]
        read [1,0]
        read [1]
        L [1,2,3,3]
        S [999999998,2]
        A [[[1],2]])s"},
    {"options of a label count for its item alone", "h\n1\n2\n", R"s(
        declare A : dynamic set of text | declare B : dynamic set of text
        read "csv:in.csv" { A from "skiph;[A1:A2]", B from "[A1:A2]" }
        print A | print B)s",
     R"s(read [1,2]
        A ["1"]
        B ["h","1"])s"},
};

TEST(Labels, OnACsvSource) {
    checkStatements(onACsvSourceCases);
}

}  // namespace
