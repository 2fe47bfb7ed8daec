// Codes of number formats, and what cells show by them.
#include "cli/formats/number_format.h"

#include <gtest/gtest.h>

#include "cli/formats/builtin_codes.h"

namespace cli {
namespace {

struct Case {
    const char* code;
    double value;
    const char* shown;
};

void expectShown(const Case& c) {
    EXPECT_EQ(NumberFormat(c.code).show(c.value, false), c.shown) << c.code << " of " << c.value;
}

TEST(NumberFormat, General) {
    const Case cases[] = {
        {"General", 0, "0"},
        {"General", -3.5, "-3.5"},
        {"General", 0.1 + 0.2, "0.3"},
        {"General", 1.0 / 3, "0.333333333"},
        {"General", 100.0 / 3, "33.33333333"},
        {"General", 1234567.891234, "1234567.891"},
        {"General", 12345678901, "12345678901"},
        {"General", 123456789012, "1.23457E+11"},
        {"General", -1e20, "-1E+20"},
        {"General", 0.00001, "0.00001"},
        {"General", 0.0000123456789, "1.23457E-05"},
        {"General", 1e-300, "1E-300"},
        {"General", 9999999999.96, "10000000000"},
        {"General\" kg\"", 12, "12 kg"},
    };
    for (const Case& c : cases) expectShown(c);
}

TEST(NumberFormat, DigitsAndPlaces) {
    const Case cases[] = {
        {"0", 2.5, "3"},
        {"0", -0.4, "-0"},
        {"0.00", 2.675, "2.68"},  // by its 15 digits, not by its bits
        {"0.00", 1e15, "1000000000000000.00"},
        {"000.0", 7.25, "007.3"},
        {"#", 0, ""},
        {".00", 12.5, "12.50"},
        {"0.##", 5, "5."},
        {"0.0#", 5.125, "5.13"},
        {"?0.0?", 5.5, " 5.5 "},
        {"#,##0", 1234567, "1,234,567"},
        {"#,##0", 12, "12"},
        {"#,##0.00", -1234.5, "-1,234.50"},
        {"0,000", 7, "0,007"},
        {"0.0,,\" m\"", 12345678, "12.3 m"},
        {"0%", 0.125, "13%"},
        {"0.0%", -0.0555, "-5.6%"},
        {"000-0000", 5551234, "555-1234"},
        {"$#,##0.00", 5, "$5.00"},
        {"[$\xE2\x82\xAC-407] 0.0", 2, "\xE2\x82\xAC 2.0"},
        {"0\\ \"h\"_)", 3, "3 h "},
        {"0.00E+00", 12345, "1.23E+04"},
        {"0.00E+00", 0.00012345, "1.23E-04"},
        {"0.0E+00", 9.97, "1.0E+01"},
        {"0.0E-0", 12345, "1.2E4"},
        {"##0.0E+0", 12345, "12.3E+3"},
        {"0E+00", 0, "0E+00"},
        {"#.#\" e\"e+\" \"#", 123456.789, "1.2 ee +5"},
        {"?,???", 12, "   12"},
        {"# ?/?", 2.5, "2 1/2"},
        {"# ?/?", 3, "3    "},
        {"# ?\?/??", 3.14159265, "3 14/99"},
        {"?/8", 1.5, "12/8"},
        {"# ?/16", 0.5, " 8/16"},
        {"?/?", 5e9, "5000000000/1"},
        {"?/?", 2e13, "20000000000000/1"},
        {"?\?/??", 1e12 + 0.5, "2000000000001/2 "},
        {"?/999999999999999999", 1e10, "10000000000"},  // more digits than a ratio has
        {"@", 1.5, "1.5"},
    };
    for (const Case& c : cases) expectShown(c);
}

TEST(NumberFormat, LongerThanAnyCode) {
    const std::string places(longestCode, '0');
    EXPECT_EQ(NumberFormat(places).show(1, false).size(), places.size());
    EXPECT_EQ(NumberFormat(places + "0").show(1, false), "1");
}

TEST(NumberFormat, Sections) {
    const Case cases[] = {
        {"0;(0)", -5, "(5)"},
        {"0;(0)", 5, "5"},
        {"0;(0)", 0, "0"},
        {"0;-0;\"none\"", 0, "none"},
        {"0;;", -1, ""},
        {"0;-0;;@", 0, ""},
        {"[Red]0.0;[Blue]-0.0", -1.25, "-1.3"},
        {"[>=1000]0.0,\"k\";0", 1500, "1.5k"},
        {"[>=1000]0.0,\"k\";0", -15, "-15"},
        {"[<0]\"below \"0;[=0]\"none\";0", -2, "below 2"},
        {"[<0]\"below \"0;[=0]\"none\";0", 0, "none"},
        {"[<0]\"below \"0;[=0]\"none\";0", 7, "7"},
        {"[>5]0;[<2]0", 3, "########"},
        {"0;\"minus \"0;@", -3, "minus 3"},
    };
    for (const Case& c : cases) expectShown(c);
}

TEST(NumberFormat, DatesAndTimes) {
    constexpr double moment = 45352.75;  // 1 March 2024, 18:00
    const Case cases[] = {
        {"yyyy-mm-dd", moment, "2024-03-01"},
        {"d.m.yy", moment, "1.3.24"},
        {"ddd d mmm yyyy", moment, "Fri 1 Mar 2024"},
        {"dddd, mmmm", moment, "Friday, March"},
        {"mmmmm", moment, "M"},
        {"hh:mm:ss", moment, "18:00:00"},
        {"h:mm AM/PM", moment, "6:00 PM"},
        {"h AM/PM", 0.01, "12 AM"},
        {"h a/p", moment, "6 p"},
        {"m/d/yyyy h:mm", moment + 5.0 / 1440, "3/1/2024 18:05"},
        {"mm:ss", 61.0 / 86400, "01:01"},
        {"mm:ss.0", 61.26 / 86400, "01:01.3"},
        {"hh:mm:ss.000", 0.5 + 0.0004 / 86400, "12:00:00.000"},
        {"[h]:mm", 2.5, "60:00"},
        {"[mm]:ss", 0.0625, "90:00"},
        {"[ss]", 0.001, "86"},
        {"yyyy-mm-dd", 60, "1900-02-29"},
        {"yyyy-mm-dd", 0, "1900-01-00"},
        {"hh:mm", 0.99999999, "00:00"},  // a day later
        {"yyyy-mm-dd", -1, "########"},
        {"yyyy-mm-dd", 3e6, "########"},
        {"[$-409]d/m/yyyy;@", 45352, "1/3/2024"},
        {"yyyy\"m\"mm", moment, "2024m03"},
    };
    for (const Case& c : cases) expectShown(c);
    EXPECT_EQ(NumberFormat("yyyy-mm-dd ddd").show(0, true), "1904-01-01 Fri");
    EXPECT_EQ(NumberFormat("yyyy-mm-dd").show(43890, true), "2024-03-01");
}

TEST(NumberFormat, Texts) {
    EXPECT_EQ(NumberFormat("0.00").showText("abc"), "abc");
    EXPECT_EQ(NumberFormat("0;-0;0;\"<\"@\">\"").showText("abc"), "<abc>");
    EXPECT_EQ(NumberFormat("0;-0;0;").showText("abc"), "");
    EXPECT_EQ(NumberFormat("@\"!\"").showText("abc"), "abc!");
}

TEST(NumberFormat, AnyCodeShowsSomething) {
    for (const char* code :
         {"",    ";", ";;;", "\"", "\\",  "_",   "*",   "[",   "[]", "[$", "[$-",  "[<",  "[<x]0", "E+",
          "0E+", "/", "0/",  "?/", "h.0", "...", ",,,", "%%%", "[h", "@@", "\xC3", "0/0", "y/0",   "# ?/10"}) {
        for (const double value : {0.0, -1.5, 1e308, 4e-324, 45352.3}) {
            EXPECT_LT(NumberFormat(code).show(value, false).size(), 400u) << code;
        }
        EXPECT_LT(NumberFormat(code).showText("t").size(), 10u) << code;
    }
    EXPECT_EQ(NumberFormat(builtInCode(44)).show(-1234.5, false), " $(1,234.50)");
}

}  // namespace
}  // namespace cli
