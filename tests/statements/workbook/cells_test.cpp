#include <cmath>

#include "engine/api/enums.h"
#include "engine/api/iformat.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "tests/statements/workbook/workbook_script.h"

namespace {

class Values : public WorkbookScript {
protected:
    /// Makes t.xls or t.xlsx with the cells that `fill` writes to its one sheet, S.
    template <class Fill>
    void makeFile(Fill fill) {
        using namespace vellum;
        IBookT<char>* const book = isXls() ? vlCreateBook<char>() : vlCreateXMLBook<char>();
        ASSERT_NE(book, nullptr);
        book->setLocale("UTF-8");
        fill(*book, *book->addSheet("S"));
        EXPECT_TRUE(book->saveFile(folder().path("t." + extension()).c_str())) << book->errorMessage();
        book->release();
    }
};
INSTANTIATE_FOR_DRIVERS(Values);

TEST_P(Values, DatesAsTextAndAsNumbers) {
    makeFile([](auto& book, auto& sheet) {
        const auto format = [&](int id) {
            auto* made = book.newFormat();
            made->setNumFormat(id);
            return made;
        };
        sheet.writeNumber(0, 0, 44197, format(14));
        sheet.writeNumber(1, 0, 44197.75, format(22));
        sheet.writeNumber(2, 0, 0.5, format(21));
        sheet.writeNumber(3, 0, 44197.5 + 1.25 / 86400, format(22));
        sheet.writeNumber(4, 0, 60, format(14));
        sheet.writeNumber(5, 0, 0.1, format(21));
        sheet.writeNumber(6, 0, 44197, format(2));
        sheet.writeNumber(7, 0, 1e7, format(14));  // past the last date
    });
    EXPECT_EQ(run(R"s(
        declare T : list of text
        declare N : list of real
        read "$D:t.$E" { T from "[S$A1:A8]", N from "[S$A1:A2]" }
        print T
        print N)s"),
              R"s(read [8,2]
T ["2021-01-01","2021-01-01T18:00:00","12:00:00","2021-01-01T12:00:01,250","1900-02-29","02:24:00","44197","10000000"]
N [44197,44197.75]
)s");
}

TEST_P(Values, ErrorCells) {
    makeFile([](auto&, auto& sheet) {
        sheet.writeError(0, 0, vellum::errorDivisionByZero);
        sheet.writeNumber(1, 0, 2);
    });
    EXPECT_EQ(run(R"s(
        declare L : list of real
        declare K : list of real
        read "$D:t.$E" { L from "[S$A1:A1]" }
        read "$D:skiperrcell;t.$E" { K from "[S$A1:A2]" }
        print K)s"),
              R"s(read 1 [0] "SHEET: Wrong result value at [R1C1].\n"
read [1]
K [2]
)s");
}

TEST_P(Values, WhatASheetCannotHoldAsANumber) {
    EXPECT_EQ(run(R"s(
        declare L : list of real = [1, nan, inf, -inf]
        declare T : list of text
        declare B : list of real
        write "$D:grow;nan=NA;inf=+big;t.$E" { L to "[S$A1:A1]" }
        read "$D:t.$E" { T from "[S$]" }
        read "$D:nan=na;inf=+BIG;t.$E" { B from "[S$]" }
        print T
        print B
        write "$D:inf=1e30;t.$E" { L to "[N$A3:A4]" }
        write "$D:grow;inf=1e30;nan=-1;t.$E" { L to "[N$A3:A4]" }
        read "$D:inf=1e30;nan=-1;t.$E" { B from "[N$]" }
        print B)s"),
              R"s(write
read [4]
read [4]
T ["1","NA","+big","-big"]
B [1,"nan","inf","-inf"]
write
write
read [4]
B [1,"nan","inf","-inf",1,"nan","inf","-inf"]
)s");
}

TEST_P(Values, KindsIntoTypes) {
    makeFile([](auto&, auto& sheet) {
        sheet.writeNumber(0, 0, 2.75);
        sheet.writeString(1, 0, "3.5abc");
        sheet.writeBool(2, 0, true);
        sheet.writeString(3, 0, "TRUE");
        sheet.writeString(4, 0, "\xC3\xA4\xE2\x82\xAC");
    });
    EXPECT_EQ(run(R"s(
        declare I : list of integer
        declare R : list of real
        declare T : list of text
        declare B : list of boolean
        read "$D:t.$E" { I from "[S$]", R from "[S$]", T from "[S$]", B from "[S$]" }
        print I
        print R
        print T
        print B)s"),
              "read [5,5,5,5]\n"
              "I [2,3,1,0,0]\n"
              "R [2.75,3.5,1,0,0]\n"
              "T [\"2.75\",\"3.5abc\",\"true\",\"TRUE\",\"\xC3\xA4\xE2\x82\xAC\"]\n"
              "B [true,false,true,true,false]\n");
}

TEST_P(Values, BeyondTheSheet) {
    const std::string row = isXls() ? "65536" : "1048576";
    EXPECT_EQ(run(R"s(
        declare S : dynamic set of integer = {1, 2}
        write "$D:grow;t.$E" { S to "[S$A)s" +
                  row + R"s(:A)s" + row + R"s(]" })s"),
              "write 1 \"SHEET: Wrong result value at [R" + std::to_string(std::stoi(row) + 1) + "C1].\\n\"\n");
}

}  // namespace
