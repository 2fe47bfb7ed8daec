#include <gtest/gtest.h>

#include "refhost/script/script.h"

namespace refhost {
namespace {

std::string errorOf(const char* script) {
    TypeRegistry types;
    try {
        parseScript(script, types);
    } catch (const ScriptError& e) {
        return std::to_string(e.at.line) + ":" + std::to_string(e.at.column) + " " + e.what();
    }
    return "(understood)";
}

const struct {
    const char *script, *error;
} placeAndReasonCases[] = {
    // words
    {"declare x : text = \"abc\n", "1:20 this text has no closing quote"},
    {"declare x : text = \"a\\q\"", "1:22 a text knows the escapes \\\", \\\\, \\n and \\t only"},
    {"print $x", "1:7 '$' has no meaning here"},
    {"print x.y", "1:8 '.' has no meaning here"},
    {"declare x : integer = 12ab", "1:23 this is neither a number nor a name"},
    {"declare \xC3\xBC : real", "1:9 a character that has no meaning here"},
    {"declare x : text = \"\xC3\xA4\xC3\xB6\" 1", "1:25 the end of the statement is expected instead of '1'"},
    // statements
    {"\n# nothing\nfoo 1", "3:1 there is no statement 'foo'"},
    {"{", "1:1 a statement is expected instead of '{'"},
    {"print x", "1:7 'x' is not declared"},
    {"declare x : real print x", "1:18 the end of the statement is expected instead of 'print'"},
    {"declare x : real\ndeclare x : text", "2:9 'x' is declared already"},
    {"declare inf : real", "1:9 'inf' is a word of the language"},
    {"read csv { }", "1:6 a source in quotes is expected instead of 'csv'"},
    {"declare x : real\nread \"a\" { x to \"[A1]\" }", "2:14 'from' is expected instead of 'to'"},
    {"declare x : real\nwrite \"a\" { x to \"[A1]\"\n  x to \"[A2]\" }", "3:3 ',' is expected instead of 'x'"},
    {"read \"a\" {", "1:11 the name of a variable is expected instead of the end of the script"},
    {"context two", "1:9 the number of a context is expected instead of 'two'"},
    {"context 99999999999", "1:9 this integer does not fit 32 bits"},
    {"param colour true", "1:7 there is no parameter 'colour'"},
    {"param realformat \"%d\"", "1:18 a printf format for one real is expected, such as \"%.15g\""},
    {"param finish 1", "1:14 true or false is expected instead of '1'"},
    // types
    {"declare x : number", "1:13 there is no type 'number'"},
    {"declare x : set of set of text", "1:20 'set' cannot stand here: elements are scalars or records"},
    {"declare x : range 1..", "1:22 the last integer of a range is expected instead of the end of the line"},
    {"declare x : range", "1:13 a range that is not dynamic needs its bounds, as in 1..10"},
    {"declare x : range -2147483648..2147483647", "1:19 this range is too long"},
    {"declare x : range 0..2147483646", "1:19 this range is too long"},
    {"declare x : dynamic real", "1:13 'dynamic' goes with a set, range, list or array"},
    {"declare v : real\ndeclare x : array(v) of real", "2:19 'v' is no set"},
    {"declare R : record(a: real, a: text)", "1:29 a second field 'a'"},
    // values
    {"declare x : integer = 1.5", "1:23 an integer is expected"},
    {"declare x : integer = 2147483648", "1:23 this integer does not fit 32 bits"},
    {"declare x : real = \"1\"", "1:20 a number is expected"},
    {"declare x : real = -", "1:21 a number is expected instead of the end of the line"},
    {"declare x : real = 1e999", "1:20 number out of range"},
    {"declare x : boolean = 1", "1:23 true or false is expected"},
    {"declare x : date = \"2024-02-30\"", "1:20 '2024-02-30' is no date such as 2024-03-01"},
    {"declare x : set of text = {\"a\", 2}", "1:33 a text is expected"},
    {"declare x : set of text = [\"a\"]", "1:27 a set in braces is expected"},
    {"declare x : list of text = {\"a\"}", "1:28 a list in brackets is expected"},
    {"declare x : list of array = [1]", "1:30 the name of an array is expected"},
    {"declare x : list of array = [y]", "1:30 'y' is not declared"},
    {"declare x : array(1..2, text) of real = {(1): 2}", "1:42 this array has 2 indices, not 1"},
    {"declare x : array(1..2, text) of real = {(1, 2): 2}", "1:46 a text is expected"},
    {"declare x : array(1..2) of real = {1}", "1:35 an array as entries (index, ...): value in braces is expected"},
    {"declare x : array(1..2) of real = {1: 2, 3}", "1:43 ':' is expected instead of '}'"},
    {"declare x : record(a: real, b: text) = (1)", "1:40 record 'x' has 2 fields, not 1"},
    {"declare x : record(a: real, b: text) = (b: 1, a: 2)", "1:44 field 'a' is expected here"},
    {"declare x : record(a: real, b: text) = (a: 1, 2)",
     "1:47 either all fields have their name or none instead of '2'"},
};

TEST(ScriptErrors, PlaceAndReason) {
    for (const auto& c : placeAndReasonCases) EXPECT_EQ(errorOf(c.script), c.error) << c.script;
    EXPECT_EQ(errorOf(("declare x : real = " + std::string(5000, '(')).c_str()), "1:120 brackets are nested too deep");
}

TEST(ScriptErrors, AllThisIsUnderstood) {
    EXPECT_EQ(errorOf("# comment\r\n"
                      "declare from : range 1..2\n"
                      "declare Years : range -2..2024   # to the end\r\n"
                      "declare Grow  : dynamic range\n"
                      "declare From5 : dynamic range = 5..9\n"
                      "declare P     : dynamic set of text = {\"a # b\", \"\\\"\\\\\\n\\t\",\n   \"c\",}\n"
                      "declare Day   : alias of date\n"
                      "declare Point : record(date: Day, inner: record(x: any, y: real))\n"
                      "declare A : dynamic array(Years, P, text, 1..3, range, dynamic set of Day) of Point\n"
                      "declare B : array(P) of real = {\"a\": 1, (\"c\"): -inf}\n"
                      "declare L : list of array = [A, B]\n"
                      "declare M : list of any = [1, 2.5, \"x\", true, null, L, Years]\n"
                      "declare N : static list of integer = null\n"
                      "declare S : set of Day = {\"2024-01-01\"}\n"
                      "declare p : Point = (\"2024-01-01\", (x: nan, y: +1.5e-3))\n"
                      "declare text : set of text = {\"a\"}\n"
                      "declare half : array(text, from) of real = {(\"b\", 1): .5}\n"
                      "param deny \"/etc\"\nparam finish false\n\n\n"
                      "read \"csv:x\" {\n  P from \"[A:A]\", # the first\n  B from \"[B]\"\n}\n"
                      "open \"csv:x\" update\nclose \"csv:x\"\ncontext -1\nprint p"),
              "(understood)");
}

}  // namespace
}  // namespace refhost
