#include <thread>
#include <vector>

#include "tests/statements/workbook/workbook_script.h"

namespace {

// One script, one result, whichever driver.
using Drivers = WorkbookScript;
INSTANTIATE_TEST_SUITE_P(Of, Drivers, testing::Values("csv", "xls", "xlsx"),
                         [](const auto& driver) { return driver.param; });

TEST_P(Drivers, GiveTheSameValues) {
    EXPECT_EQ(run(R"s(
        declare Line : record(product: text, qty: integer, price: real, open: boolean)
        declare I : range 1..2
        declare J : range 1..3
        declare A : dynamic array(text, integer) of real = {("bolts", 2023): 1.5, ("nuts", 2024): 0.1}
        declare B : array(I, J) of real = {(1, 1): 11, (1, 3): 13, (2, 2): 22}
        declare L : list of Line = [("bolt, long", 3, 0.5, true), ("a \"nut\"", 0, -1e100, false)]
        declare M : list of any = [1.25, "three", true, -7]
        declare A2 : dynamic array(text, integer) of real
        declare B2 : array(I, J) of real
        declare B3 : array(I, J) of integer
        declare L2 : list of Line
        declare M2 : list of any
        declare T : list of text
        declare S : dynamic set of integer
        write "$D:grow;t.$E" { A to "[A1:C1]", L to "[E1:H1]", M to "[J1:J1]" }
        write "$D:noindex;t.$E" { B to "[A11:C12]" }
        write "$D:partndx;t.$E" { B to "[E11:H12]" }
        read "$D:t.$E" { A2 from "[A1:C9]", L2 from "[E1:H9]", M2 from "[J1:J9]", T from "[J1:J2]", S from "[C11:A12](3,1)" }
        read "$D:noindex;t.$E" { B2 from "[A11:C12]" }
        read "$D:partndx;t.$E" { B3 from "[E11:H12]" }
        print A2
        print B2
        print B3
        print L2
        print M2
        print T)s"),
              R"s(write
write
write
read 1 [2,2,4,2,0] "SHEET: Invalid range.\n" "SHEET: Invalid range or name not found.\n"
read [6]
read [6]
A2 [[["bolts",2023],1.5],[["nuts",2024],0.1]]
B2 [[[1,1],11],[[1,2],0],[[1,3],13],[[2,1],0],[[2,2],22],[[2,3],0]]
B3 [[[1,1],11],[[1,2],0],[[1,3],13],[[2,1],0],[[2,2],22],[[2,3],0]]
L2 [{"product":"bolt, long","qty":3,"price":0.5,"open":true},{"product":"a \"nut\"","qty":0,"price":-1e+100,"open":false}]
M2 [1.25,"three",true,-7]
T ["1.25","three"]
)s");
}

TEST_P(Drivers, WorkOnSeveralThreads) {
    const std::string script = R"s(
        declare S : dynamic set of integer = {1, 2, 3}
        declare B : dynamic set of integer
        write "$D:grow;t.$E" { S to "[A1:A1]" }
        open "$D:t.$E" update
        read "$D:t.$E" { B from "[]" }
        close "$D:t.$E"
        print B)s";
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    for (auto& result : results) {
        threads.emplace_back([&] {
            WorkbookHost host(GetParam());
            for (int i = 0; i < 20; ++i) result = host.run(script);
        });
    }
    for (auto& thread : threads) thread.join();
    for (const auto& result : results) EXPECT_EQ(result, "write\nopen\nread [3]\nclose\nB [1,2,3]\n");
}

}  // namespace
