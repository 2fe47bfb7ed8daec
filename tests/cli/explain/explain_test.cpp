// What explain tells, that it tells what a run does, and that it leaves the files alone.
#include <gtest/gtest.h>

#include "tests/cli/explain/explain_runner.h"

namespace support {
namespace {

const std::string script = R"q(
declare P : dynamic set of text
declare U : dynamic array(text, integer) of real
declare N : dynamic array(text, integer) of real
declare x : real = 2.5
declare d : date
declare a : any
read "csv:skiph;sales.csv" { P from "[A:A]", U from "[A:C](product,year,units)"
}
print P
write "csv:grow;out.csv" { U to "[A1:C1]", x to "[E1]" }
write "xlsx:grow;out.xlsx" { U to "[Data$A1:C1]", x to "[E1]" }
read "csv:out.csv" { N from "[A:C]" }
print N
read "xlsx:out.xlsx" { U from "[Data$]", N from "[Data$A1:B2]" }
read "csv:missing.csv" { x from "[A1]" }
read "csv:sales.csv" { d from "[A1]" }
)q";

const Files files = {{"sales.csv", "product,year,units\nanvil,2023,120\nbellows,2024,18\n\ncog,2024,7.5\n"}};

/// What run prints of a line; explain adds to it.
Json asRun(const Json& line) {
    Json out;
    for (const char* key : {"op", "source", "name", "value", "status", "counts", "messages", "driver", "close"}) {
        if (line.contains(key) && !(line["op"] == "error")) out[key] = line[key];
    }
    return out;
}

TEST(Explain, TellsWhatRunDoesAndLeavesTheFolderAlone) {
    ScriptRunner runner(files);
    const Explanation told = explain(runner.folder(), script);
    EXPECT_EQ(told.status, 2);
    EXPECT_EQ(runner.folder().read("out.csv"), "(no file)");
    EXPECT_EQ(runner.folder().read("out.xlsx"), "(no file)");
    EXPECT_EQ(runner.folder().read("sales.csv"), files.at("sales.csv"));
    const ScriptResult ran = runner.run(script);
    ASSERT_EQ(told.lines.size(), ran.lines.size());
    for (std::size_t i = 0; i < ran.lines.size(); ++i) EXPECT_EQ(asRun(told.lines[i]), asRun(ran.lines[i]));
}

TEST(Explain, TellsOptionsPlaceColumnsAndCells) {
    TempFolder folder;
    folder.write("sales.csv", files.at("sales.csv"));
    const Explanation told = explain(folder, R"q(
declare U : dynamic array(text, integer) of real
read "csv:skiph;dsep=.;sales.csv" { U from "emptyndx;[A:C](product,year,units)" }
)q",
                                     2);
    ASSERT_EQ(told.status, 0) << told.errors;
    const Json file = told.lines.at(0)["file"], item = told.lines.at(0)["items"][0];
    EXPECT_EQ(file["name"], "sales.csv");
    EXPECT_EQ(file["format"], "csv");
    EXPECT_EQ(file["exists"], true);
    EXPECT_EQ(file["options"][0], Json::parse(R"({"name":"skiph","from":"file name"})"));
    EXPECT_EQ(item["options"],
              Json::parse(R"([{"name":"skiph","from":"file name"},{"name":"emptyndx","from":"label"}])"));
    EXPECT_EQ(item["range"], "[A:C](product,year,units)");
    EXPECT_EQ(item["area"], "A2:C5");
    EXPECT_EQ(item["headerRow"], 1);
    EXPECT_EQ(item["columns"][2], Json::parse(R"({"column":"C","header":"units"})"));
    EXPECT_EQ(item["layout"], "index columns");
    EXPECT_EQ(item["rows"], 3);
    EXPECT_EQ(item["rowsPassedOver"], 1);
    ASSERT_EQ(item["firstRows"].size(), 2U);
    EXPECT_EQ(item["firstRows"][0]["cells"][2],
              Json::parse(R"({"cell":"C2","part":"value","fate":"read","kind":"number","shows":"120","value":120})"));
}

TEST(Explain, TellsWhatStandsThereAndWhatWouldBePut) {
    TempFolder folder;
    folder.write("out.csv", "old,1\n");
    const Explanation told = explain(folder, R"(
declare x : real = 2.5
write "csv:out.csv" { x to "[B1]" })");
    EXPECT_EQ(told.status, 0);
    EXPECT_EQ(told.lines.at(0)["items"][0]["firstRows"][0]["cells"][0],
              Json::parse(R"({"cell":"B1","part":"value","fate":"written","kind":"number","shows":"1","value":2.5})"));
    EXPECT_EQ(folder.read("out.csv"), "old,1\n");
}

TEST(Explain, StatusTellsOfScriptsThatCannotBeUnderstood) {
    TempFolder folder;
    const Explanation told = explain(folder, "declare x : nothing\n");
    EXPECT_EQ(told.status, 3);
    EXPECT_NE(told.errors.find("line 1"), std::string::npos);
}

}  // namespace
}  // namespace support
