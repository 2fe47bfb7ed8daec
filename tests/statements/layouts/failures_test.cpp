// Hosts that refuse, in the middle of a statement: the right message, the right counts, nothing left open.
#include "tests/statements/layouts/statement_case.h"

namespace {

using refhost::Faults;

struct FailureCase {
    const char* name;
    refhost::Countdown Faults::*fault;
    int call;  // which call fails
    const char* script;
    const char* transcript;
};

TEST(Failures, RefusedCallsOfTheHost) {
    const char* const declared = R"s(
        declare K : dynamic set of text
        declare A : dynamic array(K) of real
        declare B : dynamic array(K) of real
        declare L : list of array = [A, B]
        declare T : dynamic set of text
        declare I : list of real
        declare N : list of any
        declare D : list of date
        declare Line : record(n : text, r : real)
        declare R : list of Line
        declare F : dynamic array(range, text) of real
        declare S : list of integer
    )s";
    const FailureCase cases[] = {
        {"array not opened", &Faults::arrayBegin, 1, R"s(read "csv:in.csv" { A from "[A1:B3]" })s", "read [0] 1\n"},
        {"second of a list of arrays not opened", &Faults::arrayBegin, 2, R"s(read "csv:in.csv" { L from "[A1:C3]" })s",
         "read [0] 1\n"},
        {"index not added", &Faults::setAdd, 2, R"s(read "csv:in.csv" { A from "[A1:B3]" } | print A)s",
         "read [1] 1 \"SHEET: Wrong index value at [R2C1].\\n\"\nA [[[\"a\"],1]]\n"},
        {"entry not stored", &Faults::arrayStore, 3, R"s(read "csv:in.csv" { A from "[A1:B3]" } | print A)s",
         "read [2] 1 \"SHEET: Wrong result value at [R3C2].\\n\"\nA [[[\"a\"],1],[[\"b\"],2]]\n"},
        {"entry of a list of arrays not stored", &Faults::arrayStore, 4, R"s(read "csv:in.csv" { L from "[A1:C3]" })s",
         "read [3] 1 \"SHEET: Wrong result value at [R2C3].\\n\"\n"},
        {"name not added", &Faults::setAdd, 2, R"s(read "csv:dataframe;skiph;in.csv" { F from "[A1:C3]" })s",
         "read [0] 1 \"SHEET: Failed to insert `1' into indexing set.\\n\"\n"},
        {"element of a set not added", &Faults::setAdd, 3, R"s(read "csv:in.csv" { T from "[A1:B3]" } | print T)s",
         "read [2] 1 \"SHEET: Wrong result value at [R2C1].\\n\"\nT [\"a\",\"1\"]\n"},
        {"element of a list not appended", &Faults::listAppend, 2,
         R"s(read "csv:in.csv" { I from "[B1:B3]" } | print I)s",
         "read [1] 1 \"SHEET: Wrong result value at [R2C2].\\n\"\nI [1]\n"},
        {"any not appended", &Faults::listAppend, 2, R"s(read "csv:in.csv" { N from "[A1:B1]" } | print N)s",
         "read [1] 1 \"SHEET: Wrong result value at [R1C2].\\n\"\nN [\"a\"]\n"},
        {"any not created", &Faults::createObject, 1, R"s(read "csv:in.csv" { N from "[A1]" } | print N)s",
         "read [0] 1 \"SHEET: Failed to create object.\\n\"\nN []\n"},
        {"object not created", &Faults::createObject, 1, R"s(read "csv:in.csv" { D from "[A1]" })s",
         "read [0] 1 \"SHEET: Failed to create object.\\n\"\n"},
        {"record not created", &Faults::createObject, 2, R"s(read "csv:in.csv" { R from "[A1:B3]" })s",
         "read [1] 1 \"SHEET: Failed to create object.\\n\"\n"},
        {"record not appended", &Faults::listAppend, 2, R"s(read "csv:in.csv" { R from "[A1:B3]" })s",
         "read [1] 1 \"SHEET: Wrong result value at [R2C1].\\n\"\n"},
        {"size not appended", &Faults::listAppend, 2, R"s(read "csv:in.csv" { S from "rangesize;[A1:C3]" })s",
         "read [0] 1 \"SHEET: Wrong result value at [R1C1].\\n\"\n"},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.name);
        support::ScriptRunner runner(support::Files{{"in.csv", "a,1,10\nb,2,20\nc,3,30\n"}});
        runner.host().faults.*c.fault = c.call;
        EXPECT_EQ(transcriptOf(runner, declared + std::string(c.script)), c.transcript);
        EXPECT_TRUE(runner.host().counts.balanced());
    }
}

// The separator stands in the same block of the file, so that nothing but the field's length tells.
TEST(Failures, AFieldThatDoesNotFitTheLineBuffer) {
    const auto told = [](std::size_t length) {
        support::ScriptRunner runner(support::Files{{"in.csv", std::string(length, 'x') + ",1\n"}});
        return transcriptOf(runner, R"s(declare r : real
                                       read "csv:bufsize=2;in.csv" { r from "[B1]" }
                                       print r)s");
    };
    EXPECT_EQ(told(2047), "read [1]\nr 1\n");
    EXPECT_NE(told(2048).find("Buffer overflow at line 1"), std::string::npos) << told(2048);
}

TEST(Failures, StatusOfTheLastCallOnAnArrayIsThatOfTheItem) {
    support::ScriptRunner runner(support::Files{{"in.csv", "a,1\n"}});
    runner.host().faults.arrayEndStatus = 7;
    EXPECT_EQ(transcriptOf(runner, R"s(declare A : dynamic array(text) of real
                                      declare i : integer
                                      read "csv:in.csv" { A from "[A1:B1]", i from "[B1]" })s"),
              "read [1,0] 2\n");
    EXPECT_TRUE(runner.host().counts.balanced());
}

}  // namespace
