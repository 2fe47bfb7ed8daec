// Labels that are names defined in the workbook.
#include <chrono>
#include <memory>

#include "engine/api/ibook.h"
#include "engine/api/isheet.h"
#include "engine/factories/factories.h"
#include "tests/statements/workbook/workbook_script.h"

namespace {

struct Release {
    void operator()(vellum::IBookT<char>* book) const { book->release(); }
};

class Names : public WorkbookScript {
protected:
    using Sheet = vellum::ISheetT<char>;

    /// A new workbook of the driver's format, which `finish` makes the file of the scripts.
    void start() {
        _book.reset(isXls() ? vellum::vlCreateBook<char>() : vellum::vlCreateXMLBook<char>());
        _book->setLocale("UTF-8");
    }
    bool removeSheet(int index) { return _book->removeSheet(index); }
    Sheet& add(const std::string& name) { return *_book->addSheet(name.c_str()); }
    void finish() { ASSERT_TRUE(_book->saveFile(folder().path("t." + extension()).c_str())) << _book->errorMessage(); }

private:
    std::unique_ptr<vellum::IBookT<char>, Release> _book;
};
INSTANTIATE_FOR_DRIVERS(Names);

TEST_P(Names, OfTheBookAndOfSheetsWithSelections) {
    start();
    Sheet& a = add("A");
    Sheet& b = add("B");
    a.writeString(0, 0, "year");
    a.writeString(0, 1, "units");
    for (int row = 1; row <= 3; ++row) {
        a.writeNumber(row, 0, 2020 + row);
        a.writeNumber(row, 1, row * 10);
        b.writeNumber(row, 0, -row);
    }
    EXPECT_TRUE(a.setNamedRangeByName("Prices", 0, 3, 0, 1));
    EXPECT_TRUE(a.setNamedRangeByName("Columns", 0, isXls() ? 65535 : 1048575, 1, 1));
    EXPECT_TRUE(a.setNamedRangeByName("Twice", 1, 1, 0, 0, -1));
    EXPECT_TRUE(b.setNamedRangeByName("Twice", 2, 2, 0, 0, 1, true));  // a name of sheet B, hidden
    EXPECT_TRUE(b.setNamedRangeByName("Äpfel", 3, 3, 0, 0, 1));
    finish();
    EXPECT_EQ(run(R"s(
        declare P : dynamic array(integer) of real
        declare Q : dynamic array(integer) of real
        declare C : dynamic set of text
        declare x : real
        declare y : real
        read "$D:t.$E" { P from "skiph;PRICES(year,units)", Q from "skiph;prices(#2,#1)" }
        read "$D:skiperrcell;t.$E" { C from "Columns" }
        read "$D:t.$E" { x from "twice", y from "äPFEL" }
        read "$D:t.$E" { x from "Price" }
        print P
        print Q
        print C
        print x
        print y)s"),
              R"s(read [3,3]
read [4]
read [1,1]
read 1 [0] "SHEET: Range name not found.\n" "SHEET: Invalid range or name not found.\n"
P [[[2021],10],[[2022],20],[[2023],30]]
Q [[[10],2021],[[20],2022],[[30],2023]]
C ["units","10","20","30"]
x 2021
y -3
)s");
}

TEST_P(Names, OfTwoInOneSheetTheYoungestCounts) {
    start();
    Sheet& a = add("A");
    a.writeNumber(0, 0, 1);
    a.writeNumber(1, 0, 2);
    EXPECT_TRUE(a.setNamedRangeByName("N", 0, 0, 0, 0, -1));
    EXPECT_TRUE(a.setNamedRangeByName("n", 1, 1, 0, 0, 0));
    finish();
    EXPECT_EQ(run(R"s(
        declare x : real
        read "$D:t.$E" { x from "N" }
        print x)s"),
              "read [1]\nx 2\n");
}

// The name stays where it is, though the cells below it are filled.
TEST_P(Names, WrittenWithAndWithoutGrow) {
    start();
    EXPECT_TRUE(add("A").setNamedRangeByName("Area", 1, 2, 1, 2));
    finish();
    EXPECT_EQ(run(R"s(
        declare A : dynamic array(integer) of real = {(1): 10, (2): 20, (3): 30}
        declare B : dynamic array(integer) of real
        declare C : dynamic array(integer) of real
        write "$D:t.$E" { A to "Area" }
        read "$D:t.$E" { B from "[A$B2:C9]" }
        write "$D:grow;t.$E" { A to "area" }
        read "$D:t.$E" { C from "[A$B2:C9]" }
        read "$D:t.$E" { B from "Area" }
        print B
        print C)s"),
              R"s(write
read [2]
write
read [3]
read [2]
B [[[1],10],[[2],20]]
C [[[1],10],[[2],20],[[3],30]]
)s");
}

TEST_P(Names, TheLastOfFiveThousandIsFoundInTime) {
    start();
    constexpr int sheets = 200, names = 5000;
    std::vector<Sheet*> all;
    for (int i = 0; i < sheets; ++i) all.push_back(&add(std::string("S").append(std::to_string(i))));
    for (int i = 0; i < names; ++i) {
        ASSERT_TRUE(all[std::size_t(i % sheets)]->setNamedRangeByName(
            std::string("N").append(std::to_string(i)).c_str(), 0, 0, 0, 0));
    }
    all.back()->writeNumber(0, 0, 7);
    finish();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(run(R"s(
        declare x : real
        open "$D:t.$E"
        read "$D:t.$E" { x from "N199" }
        print x)s"),
              "open\nread [1]\nx 7\n");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

TEST_P(Names, BuiltInNamesAndThoseOfRemovedSheets) {
    start();
    Sheet& a = add("A");
    Sheet& b = add("B");
    a.writeNumber(4, 2, 5);
    EXPECT_TRUE(a.setPrintAreaRange(4, 4, 2, 2));
    EXPECT_TRUE(b.setNamedRangeByName("Lost", 0, 0, 0, 0));
    EXPECT_TRUE(removeSheet(1));
    finish();
    const std::string prefix = isXls() ? "" : "_xlnm.";  // the name as the format writes it
    EXPECT_EQ(run(R"s(
        declare x : real
        read "$D:t.$E" { x from ")s" +
                  prefix + R"s(print_area" }
        read "$D:t.$E" { x from "Lost" }
        print x)s"),
              R"s(read [1]
read 1 [0] "SHEET: Range name not found.\n" "SHEET: Invalid range or name not found.\n"
x 5
)s");
}

}  // namespace
