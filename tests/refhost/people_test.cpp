#include <gtest/gtest.h>

#include <sstream>

#include "refhost/report/text_table.h"
#include "refhost/run/script_run.h"
#include "tests/support/script_runner.h"

namespace refhost {
namespace {

struct Told {
    std::string out, err;
};

Told told(const std::string& script, const support::Files& files = {}) {
    support::ScriptRunner runner(files);
    std::ostringstream out, err;
    runScript(runner.host(), script, {}, out, err);
    return {out.str(), err.str()};
}

TEST(ForPeople, ValuesAndTables) {
    const struct {
        const char *script, *shown;
    } cases[] = {
        {"declare x : real = 0.1", "x = 0.1\n"},
        {"declare x : range 1..4", "x (4 elements): 1..4\n"},
        {"declare x : range 0..2147483645", "x (2147483646 elements): 0..2147483645\n"},
        {"declare x : dynamic range = 2..4", "x (3 elements): 2..4\n"},
        {"declare x : dynamic set of integer = 2..4", "x (3 elements): 2, 3, 4\n"},
        {"declare x : set of text = {\"a\\nb\", \"c\"}", "x (2 elements): a\\nb, c\n"},
        {"declare R : record(n: text, q: real)\ndeclare x : set of R = {(\"a\", 1), (\"b\", 2)}",
         "x (2 elements)\n"
         "  n  q\n"
         "  -  -\n"
         "  a  1\n"
         "  b  2\n\n"},
        {"declare x : list of any = [1]", "x (1 item): 1\n"},
        {"declare x : list of real = null", "x: uninitialised\n"},
        {"declare x : dynamic array(text, 1..2) of real = {(\"an\", 1): 10, (\"bel\", 2): 2.5}",
         "x (2 entries)\n"
         "  text   1    2\n"
         "  ----  --  ---\n"
         "  an    10\n"
         "  bel       2.5\n\n"},
        {"declare R : record(n: text, p: record(q: real))\ndeclare x : list of R = [(\"\xC3\xA4\", (1)), (\"abc\", "
         "(12))]",
         "x (2 items)\n"
         "  n    p.q\n"
         "  ---  ---\n"
         "  \xC3\xA4      1\n"
         "  abc   12\n\n"},
        {"declare x : dynamic array(1..1, text, boolean) of text = {(1, \"a\", true): \"v\"}",
         "x (1 entry)\n"
         "  integer  text  boolean  value\n"
         "  -------  ----  -------  -----\n"
         "        1  a     true     v\n\n"},
    };
    for (const auto& c : cases) EXPECT_EQ(told(std::string(c.script) + "\nprint x").out, c.shown) << c.script;
}

// A table of two indices takes the line as far as it goes, and is a list of entries beyond.
TEST(ForPeople, TheWidestTable) {
    const auto shown = [](std::size_t width) {
        const std::string text(width, 'x');
        return told("declare x : dynamic array(text, 1..1) of text = {(\"a\", 1): \"" + text + "\"}\nprint x").out;
    };
    const std::size_t rest = 2 + 4 + 2;  // the margin, the first column, the gap
    EXPECT_EQ(shown(100 - rest).find("integer"), std::string::npos);
    EXPECT_NE(shown(101 - rest).find("integer"), std::string::npos);
}

TEST(ForPeople, MessagesNameTheLine) {
    const Told result =
        told("declare x : real\n\nread \"csv:d.csv\" { x from \"[A1]\", x from \"there\" }\nopen \"csv:none\"",
             {{"d.csv", "1\n"}});
    EXPECT_EQ(result.out, "read csv:d.csv: x (1), x (0)\n");
    EXPECT_EQ(
        result.err,
        "line 3: SHEET: Range name not found.\nline 3: SHEET: Invalid range or name not found.\nline 3: 1 of 2 items "
        "not done\n"
        "line 4: cannot open 'none' for reading: No such file or directory\nline 4: 'csv:none' could not be opened\n");
}

TEST(ForPeople, NothingIsWrittenWhereTheCloseFails) {
    const Told result = told("declare x : real = 5\nwrite \"xlsx:new.xlsx\" { x to \"A1\" }");
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(
        result.err.ends_with("line 2: 1 of 1 item not done\n"
                             "line 2: 'xlsx:new.xlsx' could not be closed: its data may be lost\n"))
        << result.err;
}

TEST(ForPeople, TextsCannotLeaveTheirLine) {
    EXPECT_EQ(shownText("a\x1b[31m\r\xC2\x9B\xFFz"), "a\\x1b[31m\\r\\xc2\\x9b\\xffz");
    EXPECT_EQ(shownWidth("e\xCC\x81\xE2\x82\xAC"), 2u);
}

}  // namespace
}  // namespace refhost
