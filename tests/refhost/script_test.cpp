// What the statements of a script do beside moving data: status, order, contexts, parameters.
#include <gtest/gtest.h>

#include "tests/support/script_runner.h"

namespace support {
namespace {

std::string text(const ScriptResult& result) {
    std::string all;
    for (const Json& line : result.lines) all += line.dump() + "\n";
    return all;
}

constexpr const char* data = "anvil,1\nbellows,2.5\n";

TEST(Script, LinesHaveTheirKeysInOrder) {
    const auto result = runScript(R"(declare S : dynamic set of text
                                     declare x : real = 3.5
                                     read "csv:data.csv" { S from "[A:A]", x from "[B2]" }
                                     write "csv:out.csv" { x to "[A1]" }
                                     open "csv:data.csv"
                                     close "csv:data.csv"
                                     print x)",
                                  {{"data.csv", data}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(text(result),
              R"({"op":"read","source":"csv:data.csv","status":0,"counts":[2,1],"messages":[],"driver":[],"close":0}
{"op":"write","source":"csv:out.csv","status":0,"messages":[],"driver":[],"close":0}
{"op":"open","source":"csv:data.csv","status":0,"messages":[],"driver":[]}
{"op":"close","source":"csv:data.csv","status":0,"messages":[],"driver":[]}
{"op":"print","name":"x","value":2.5}
)");
    EXPECT_EQ(result.files.at("out.csv"), "2.5\n");
}

TEST(Script, FailuresDoNotStopIt) {
    const auto result = runScript(R"(declare x : integer
                                     read "csv:none.csv" { x from "[A1]", x from "[A2]" }
                                     read "csv:data.csv" { x from "[C1]", x from "[A1]" }
                                     read "pdf:data.pdf" { x from "[A1]" }
                                     open "none.csv"
                                     close "csv:data.csv"
                                     read "csv:data.csv" { x from "[B1]" }
                                     print x)",
                                  {{"data.csv", data}});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(text(result),
              R"({"op":"read","source":"csv:none.csv","status":-1,"counts":[0,0],"messages":[],"driver":[],"close":null}
{"op":"read","source":"csv:data.csv","status":0,"counts":[1,1],"messages":[],"driver":[],"close":0}
{"op":"read","source":"pdf:data.pdf","status":-1,"counts":[0],"messages":[],"driver":[],"close":null}
{"op":"open","source":"none.csv","status":-1,"messages":[],"driver":[]}
{"op":"close","source":"csv:data.csv","status":-1,"messages":[],"driver":[]}
{"op":"read","source":"csv:data.csv","status":0,"counts":[1],"messages":[],"driver":[],"close":0}
{"op":"print","name":"x","value":1}
)");
    EXPECT_EQ(
        result.errors,
        "line 2: cannot open 'none.csv' for reading: No such file or directory\nline 4: there is no driver 'pdf'\n"
        "line 5: 'none.csv' names no driver, as in csv:none.csv\nline 6: 'csv:data.csv' is not open\n");
}

TEST(Script, ReportsKeepTheirOrderAndNewlines) {
    const auto result = runScript(R"(declare x : integer
                                     read "csv:data.csv" { x from "nowhere" }
                                     open "csv:data.csv"
                                     write "csv:data.csv" { x to "[A1]" })",
                                  {{"data.csv", data}});
    ASSERT_EQ(result.lines.size(), 3u);
    EXPECT_EQ(result.lines[0]["messages"],
              Json({"SHEET: Range name not found.\n", "SHEET: Invalid range or name not found.\n"}));
    EXPECT_EQ(result.lines[0]["status"], 1);
    EXPECT_EQ(
        result.lines[2].dump(),
        R"({"op":"write","source":"csv:data.csv","status":-1,"messages":[],"driver":[{"code":2,"text":"file already open for reading only"}],"close":null})");
}

TEST(Script, NothingRunsWhenItIsNotUnderstood) {
    const auto result = runScript("declare x : real = 1\nwrite \"csv:out.csv\" { x to \"[A1]\" }\nprint y");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "line 3, column 7: 'y' is not declared\n");
    EXPECT_EQ(result.files.count("out.csv"), 0u);
}

TEST(Script, AnOpenSourceIsSharedWithinItsContext) {
    const auto result = runScript(R"(declare x : integer = 7
                                     declare y : integer
                                     open "csv:data.csv" update
                                     write "csv:data.csv" { x to "[A1]" }
                                     read "csv:data.csv" { y from "[A1]" }
                                     print y
                                     context 2
                                     read "csv:data.csv" { y from "[A1]" }
                                     print y
                                     close "csv:data.csv"
                                     context 1
                                     close "csv:data.csv"
                                     read "csv:data.csv" { y from "[A1]" }
                                     print y)",
                                  {{"data.csv", "1,2\n"}});
    std::vector<int> values;
    for (const Json& line : result.lines)
        if (line["op"] == "print") values.push_back(line["value"]);
    EXPECT_EQ(values, (std::vector<int>{7, 1, 7}));
    EXPECT_EQ(result.status, 1) << "context 2 has nothing open";
    EXPECT_EQ(result.files.at("data.csv"), "7,2\n");
}

TEST(Script, WhatIsLeftOpenIsClosedAtTheEnd) {
    EXPECT_EQ(runScript(R"(declare x : integer = 7
                           open "csv:new.csv" update
                           write "csv:new.csv" { x to "[A1]" })")
                  .files.at("new.csv"),
              "7\n");
}

TEST(Script, Parameters) {
    ScriptRunner runner(Files{{"data.csv", data}});
    const auto result = runner.run(R"(declare S : dynamic set of text
                                      declare x : real = 0.1
                                      param realformat "%.3f"
                                      param finish true
                                      param deny "./secret.csv"
                                      context 2
                                      read "csv:data.csv" { S from "[A:A]" }
                                      read "csv:data.csv" { S from "[A:A]" }
                                      write "csv:out.csv" { x to "[A1]" }
                                      write "csv:secret.csv" { x to "[A1]" })");
    EXPECT_EQ(result.lines[0]["status"], 0);
    EXPECT_EQ(result.lines[1]["messages"], Json({"SHEET: Non dynamic set for a `write'.\n"}))
        << "finished by the first read";
    EXPECT_EQ(result.files.at("out.csv"), "0.100\n");
    EXPECT_EQ(result.lines[3]["status"], -1);
    EXPECT_EQ(result.files.count("secret.csv"), 0u);
    EXPECT_EQ(runner.host().counts.setsFinished, 1);
}

TEST(Script, ACloseThatFailsIsAFailure) {
    ScriptRunner runner;
    runner.host().faults.closeOutput = 2;  // the first close is that of the probe
    const auto result = runner.run("declare x : real\nwrite \"csv:out.csv\" { x to \"[A1]\" }");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.lines[0]["status"], 0);
    EXPECT_EQ(result.lines[0]["close"], 1);
}

TEST(Script, AliasesAndRecordsAreVariablesOfTheirNameToo) {
    const auto result = runScript(R"(declare Day : alias of date
                                     declare Days : dynamic set of Day
                                     read "csv:d.csv" { Day from "[A2]", Days from "[A:A]" }
                                     print Day
                                     print Days)",
                                  {{"d.csv", "2024-01-02\n2024-01-03\n2024-01-02\n"}});
    EXPECT_EQ(result.lines[1]["value"], "2024-01-03");
    EXPECT_EQ(result.lines[2]["value"], Json({"2024-01-02", "2024-01-03"}));
}

}  // namespace
}  // namespace support
