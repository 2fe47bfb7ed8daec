#include <gtest/gtest.h>

#include <sstream>

#include "refhost/run/script_run.h"

namespace refhost {
namespace {

/// What `print x` gives for a declaration of x, without the braces around.
std::string printed(const std::string& declarations) {
    Host host("/");
    host.load(QUILLET_MODULE);
    std::ostringstream out, err;
    RunOptions options;
    options.json = true;
    runScript(host, declarations + "\nprint x", options, out, err);
    const std::string line = out.str(), head = "{\"op\":\"print\",\"name\":\"x\",\"value\":";
    if (!err.str().empty() || !line.starts_with(head)) return err.str();
    return line.substr(head.size(), line.size() - head.size() - 2);
}

TEST(PrintJson, EveryType) {
    const struct {
        const char *declaration, *value;
    } cases[] = {
        {"declare x : integer = -7", "-7"},
        {"declare x : real = 3", "3"},
        {"declare x : real = 0.1", "0.1"},
        {"declare x : real = 1e300", "1e+300"},
        {"declare x : real = nan", "\"nan\""},
        {"declare x : real = -inf", "\"-inf\""},
        {"declare x : text", "null"},
        {"declare x : text = \"\"", "\"\""},
        {"declare x : text = \"a\\\"\\\\\\n\\tb/\"", R"("a\"\\\n\tb/")"},
        {"declare x : text = \"\x01\xC3\xA4\xFF\xED\xA0\x80\"",
         "\"\\u0001\xC3\xA4\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},
        {"declare x : boolean", "false"},
        {"declare x : any", "null"},
        {"declare x : any = 3", "3"},
        {"declare x : any = 3.0", "3.0"},
        {"declare x : any = 1e22", "1e+22"},
        {"declare x : any = 3000000000", "3000000000.0"},
        {"declare x : any = inf", "\"inf\""},
        {"declare d : date = \"2024-01-02\"\ndeclare x : any = d", "\"2024-01-02\""},
        {"declare x : date", "null"},
        {"declare x : date = \"2024-01-02T03:04\"", "\"2024-01-02T03:04:00\""},
        {"declare x : alias of date = \"2024-01-02\"", "\"2024-01-02\""},
        {"declare x : set of text = {\"b\", \"a\", \"b\"}", "[\"b\",\"a\"]"},
        {"declare x : set of text = null", "null"},
        {"declare x : range 3..5", "[3,4,5]"},
        {"declare x : dynamic range", "[]"},
        {"declare x : dynamic range = {4, 2}", "[2,3,4]"},
        {"declare x : list of integer = [2, 1, 2]", "[2,1,2]"},
        {"declare x : list of any = [2, 2.0, true, null, \"t\"]", "[2,2.0,true,null,\"t\"]"},
        {"declare x : record(a: integer, b: text, c: date, d: any, e: record(f: real)) = (1, \"b\", \"2024-01-02\", "
         "2.0, (3))",
         R"({"a":1,"b":"b","c":"2024-01-02","d":2.0,"e":{"f":3}})"},
        {"declare x : record(a: integer, b: text, c: date, d: any)", R"({"a":0,"b":null,"c":null,"d":null})"},
        {"declare x : array(1..2) of real", "[[[1],0],[[2],0]]"},
        {"declare x : array(1..2) of text", "[[[1],null],[[2],null]]"},
        {"declare R : record(a: integer)\ndeclare x : array(1..2) of R = {2: (5)}", R"([[[1],{"a":0}],[[2],{"a":5}]])"},
        {"declare x : dynamic array(text, integer) of real = {(\"b\", 2): 1.5, (\"a\", 1): 2, (\"b\", 1): 3}",
         R"([[["b",2],1.5],[["b",1],3],[["a",1],2]])"},
        {"declare x : dynamic array(boolean, date) of any = {(true, \"2024-01-02\"): 4.0}",
         R"([[[true,"2024-01-02"],4.0]])"},
        {"declare x : array(text) of real = null", "null"},
        {"declare A : dynamic array(1..2) of real = {1: 5}\ndeclare B : array(1..1) of text = null\ndeclare x : list "
         "of array = [A, B]",
         "[[[[1],5]],null]"},
    };
    for (const auto& c : cases) EXPECT_EQ(printed(c.declaration), c.value) << c.declaration;
}

TEST(PrintJson, WhatADeclarationCannotDo) {
    EXPECT_EQ(printed("declare S : set of text = {\"a\"}\ndeclare x : array(S) of real = {\"b\": 1}"),
              "line 2, column 33: this index is not in its set\n");
    EXPECT_EQ(printed("declare S : set of text = null\ndeclare x : array(S) of real"),
              "line 2, column 1: the index set 'S' is uninitialised\n");
}

}  // namespace
}  // namespace refhost
