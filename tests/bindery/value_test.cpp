#include <gtest/gtest.h>

#include <atomic>
#include <clocale>
#include <limits>
#include <thread>
#include <vector>

#include "bindery/values/error.h"
#include "bindery/values/regex.h"
#include "bindery/values/storage.h"
#include "bindery/values/value_spec.h"
#include "bindery/writer/xml_writer.h"

namespace bindery {
namespace {

using namespace std::literals;

/// What a text becomes when it is read and written: `text`, or `!code`; a facet's code stands behind the text.
std::string through(const ValueSpec& spec, std::string_view text) {
    return visitStorage(spec.storage, [&](auto type) {
        typename decltype(type)::type value{};
        int facet = 0;
        if (const int code = readValue(spec, text, &value, facet)) return "!" + std::to_string(code);
        std::string out;
        spec.toText(spec, &value, out);
        return facet != 0 ? out + "!" + std::to_string(facet) : out;
    });
}

struct Case {
    const char* text;
    const char* result;
};

void expectAll(const ValueSpec& spec, std::initializer_list<Case> cases) {
    for (const Case& c : cases) EXPECT_EQ(through(spec, c.text), c.result) << "'" << c.text << "'";
}

constexpr ValueSpec plain(Atomic atomic) {
    return valueSpec(atomic, Whitespace::collapse);
}

}  // namespace

TEST(Value, Booleans) {
    expectAll(plain(Atomic::boolean), {{"true", "true"},
                                       {"1", "true"},
                                       {" false\n", "false"},
                                       {"0", "false"},
                                       {"yes", "!35"},
                                       {"on", "!35"},
                                       {"", "!35"},
                                       {"TRUE", "!35"}});
    expectAll(plain(Atomic::onOff), {{"on", "true"}, {"off", "false"}, {"1", "true"}, {"yes", "!35"}});
}

TEST(Value, Integers) {
    expectAll(plain(Atomic::int32), {{"0", "0"},
                                     {"+7", "7"},
                                     {"-0012", "-12"},
                                     {"2147483647", "2147483647"},
                                     {"2147483648", "!35"},
                                     {"1.0", "!35"},
                                     {"", "!35"},
                                     {"+-1", "!35"},
                                     {"1x", "!35"}});
    expectAll(plain(Atomic::int8), {{"-128", "-128"}, {"128", "!35"}});
    expectAll(plain(Atomic::int16), {{"-32768", "-32768"}, {"32768", "!35"}});
    expectAll(plain(Atomic::int64), {{"-9223372036854775808", "-9223372036854775808"}, {"9223372036854775808", "!35"}});
    expectAll(plain(Atomic::uint8), {{"255", "255"}, {"256", "!35"}, {"-1", "!35"}, {"-0", "0"}});
    expectAll(plain(Atomic::uint16), {{"65535", "65535"}, {"65536", "!35"}});
    expectAll(plain(Atomic::uint32), {{"4294967295", "4294967295"}, {"4294967296", "!35"}});
    expectAll(plain(Atomic::uint64), {{"18446744073709551615", "18446744073709551615"}});
}

TEST(Value, Reals) {
    const std::string small = "0." + std::string(400, '0') + "1", large = "-1" + std::string(400, '0') + "e-5";
    expectAll(plain(Atomic::float64), {{small.c_str(), "0"}, {large.c_str(), "-INF"}, {"1e-9999999999999999999", "0"}});
    expectAll(plain(Atomic::float64), {{"15", "15"},
                                       {"0.78740157480314998", "0.78740157480315"},
                                       {"1e20", "1e+20"},
                                       {"-0", "-0"},
                                       {"+.5", "0.5"},
                                       {"INF", "INF"},
                                       {"-INF", "-INF"},
                                       {"NaN", "NaN"},
                                       {"1e999", "INF"},
                                       {"-1e-999", "-0"},
                                       {"inf", "!35"},
                                       {"nan", "!35"},
                                       {"0x10", "!35"},
                                       {"+-5", "!35"},
                                       {"1,5", "!35"},
                                       {"", "!35"},
                                       {"1 2", "!35"}});
    expectAll(plain(Atomic::float32), {{"0.1234567891", "0.1234568"}});
    static constexpr Facets places = {.fractionDigits = 2};
    static constexpr ValueSpec decimal = valueSpec(Atomic::decimal, Whitespace::collapse, {.facets = &places});
    expectAll(
        decimal,
        {{"1.5", "1.50"}, {"1.505", "1.50!18"}, {"1.500", "1.50"}, {"1e2", "!35"}, {"INF", "!35"}, {".5", "0.50"}});
    static constexpr Facets whole = {.fractionDigits = 0};
    static constexpr ValueSpec noPlaces = valueSpec(Atomic::decimal, Whitespace::collapse, {.facets = &whole});
    expectAll(noPlaces, {{"1234567890123456", "1234567890123456"}, {"2.5", "2!18"}});
}

TEST(Value, TextIsTheSameInEveryLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"})
        if (std::setlocale(LC_ALL, name) != nullptr) break;
    EXPECT_EQ(through(plain(Atomic::float64), "1234.5"), "1234.5");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Value, Facets) {
    static constexpr Facets length = {.minLength = 2, .maxLength = 3};
    expectAll(
        valueSpec(Atomic::narrow, Whitespace::preserve, {.facets = &length}),
        {{"a", "a!20"}, {"ab", "ab"}, {"\xC3\xA4\xC3\xB6\xC3\xBC", "\xC3\xA4\xC3\xB6\xC3\xBC"}, {"abcd", "abcd!19"}});
    expectAll(valueSpec(Atomic::hex, Whitespace::collapse, {.facets = &length}),
              {{"FF", "FF!20"}, {"12345", "012345"}});
    static constexpr Facets bounds = {.minimum = -1, .maximum = 5, .maximumExcluded = true};
    expectAll(valueSpec(Atomic::int32, Whitespace::collapse, {.facets = &bounds}),
              {{"-1", "-1"}, {"-2", "-2!37"}, {"4", "4"}, {"5", "5!36"}});
    static constexpr Facets digits = {.totalDigits = 3};
    expectAll(valueSpec(Atomic::int32, Whitespace::collapse, {.facets = &digits}),
              {{"-123", "-123"}, {"1234", "1234!27"}});
    expectAll(valueSpec(Atomic::narrow, Whitespace::collapse, {.fixed = "x"}), {{" x ", "x"}, {"y", "y!43"}});
    static constexpr std::string_view texts[] = {"External", "Internal"};
    expectAll(valueSpec(Atomic::narrow, Whitespace::collapse, {.enumeration = texts}),
              {{"External", "External"}, {" Internal", "Internal"}, {"Foo", "!38"}, {"", "!38"}});
    static constexpr std::string_view numbers[] = {"1", "4"};
    expectAll(valueSpec(Atomic::int32, Whitespace::collapse, {.enumeration = numbers}), {{"4", "4"}, {"5", "!38"}});
}

TEST(Value, Patterns) {
    static constinit c_regex guid("\\{[0-9A-F]{8}\\}");
    static constinit c_regex contentType(
        "(((([\\p{IsBasicLatin}-[\\p{Cc}&#127;\\(\\)<>@,;:\\\\\"/\\[\\]\\?=\\{\\}\\s\\t]])+))"
        "/((([\\p{IsBasicLatin}-[\\p{Cc}&#127;\\(\\)<>@,;:\\\\\"/\\[\\]\\?=\\{\\}\\s\\t]])+)))");
    static constexpr const c_regex* first[] = {&guid};
    static constexpr const c_regex* second[] = {&contentType};
    static constexpr Facets one = {.patterns = first}, two = {.patterns = second};
    expectAll(valueSpec(Atomic::narrow, Whitespace::collapse, {.facets = &one}),
              {{"{0123ABCD}", "{0123ABCD}"}, {"{0123ABC}", "{0123ABC}!22"}, {"x{0123ABCD}", "x{0123ABCD}!22"}});
    expectAll(valueSpec(Atomic::narrow, Whitespace::collapse, {.facets = &two}),
              {{"image/png", "image/png"}, {"image", "image!22"}});
}

TEST(Value, PatternsAreCompiledOnceByWhicheverThreadComesFirst) {
    static constinit c_regex pattern("[a-z]+[0-9]*");
    std::vector<std::thread> threads;
    std::atomic<int> matches = 0;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int k = 0; k < 200; ++k) matches += pattern.isMatch("abc1") && !pattern.isMatch("1abc");
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(matches, 800);
}

TEST(Value, UnionsTakeTheFirstMemberThatFits) {
    static constinit c_regex percent("-?[0-9]+%");
    static constexpr const c_regex* patterns[] = {&percent};
    static constexpr Facets facets = {.patterns = patterns};
    static constexpr ValueSpec number = valueSpec(Atomic::int32, Whitespace::collapse);
    static constexpr ValueSpec text = valueSpec(Atomic::narrow, Whitespace::collapse, {.facets = &facets});
    static constexpr const ValueSpec* both[] = {&number, &text};
    static constexpr const ValueSpec* numbers[] = {&number};
    expectAll(valueSpec(Atomic::narrow, Whitespace::collapse, {.members = both}),
              {{"50000", "50000"}, {"50%", "50%"}, {"half", "half!22"}});
    expectAll(valueSpec(Atomic::narrow, Whitespace::collapse, {.members = numbers}), {{"1", "1"}, {"x", "!35"}});
}

TEST(Value, Whitespace) {
    expectAll(valueSpec(Atomic::wide, Whitespace::preserve), {{" a\n b ", " a\n b "}});
    expectAll(valueSpec(Atomic::wide, Whitespace::replace), {{" a\n b ", " a  b "}});
    expectAll(valueSpec(Atomic::wide, Whitespace::collapse),
              {{" a\n b ", "a b"}, {"a b", "a b"}, {" \t", ""}, {"a  ", "a"}});
}

TEST(Value, BytesThatAreNoUtf8BecomeTheReplacementCharacter) {
    for (const Atomic atomic : {Atomic::narrow, Atomic::wide})
        expectAll(valueSpec(atomic, Whitespace::preserve),
                  {{"a\xE9z", "a\xEF\xBF\xBDz"}, {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"}, {"\xC3", "\xEF\xBF\xBD"}});
}

TEST(Value, Binary) {
    expectAll(plain(Atomic::hex), {{"00ff", "00FF"}, {"f", "0F"}, {"", ""}, {"0g", "!35"}});
    expectAll(plain(Atomic::base64), {{"TWFu", "TWFu"},
                                      {"TW E=", "TWE="},
                                      {"TQ==", "TQ=="},
                                      {"", ""},
                                      {"T", "!35"},
                                      {"TQ=a", "!35"},
                                      {"T*==", "!35"}});
}

TEST(Value, Dates) {
    const struct {
        Atomic atomic;
        const char* text;
        const char* result;
    } cases[] = {
        {Atomic::dateTime, "2020-01-31T12:30:05.25Z", "2020-01-31T12:30:05.25Z"},
        {Atomic::dateTime, "-0044-03-15T24:00:00+01:30", "-0044-03-15T24:00:00+01:30"},
        {Atomic::dateTime, "2020-01-31", "!35"},
        {Atomic::dateTime, "2020-13-31T00:00:00", "!35"},
        {Atomic::date, "2020-02-29-05:00", "2020-02-29-05:00"},
        {Atomic::date, "2020-02-30-05:00", "!35"},
        {Atomic::date, "2021-02-29", "!35"},
        {Atomic::date, "1900-02-29", "!35"},
        {Atomic::date, "2000-02-29", "2000-02-29"},
        {Atomic::date, "-0005-02-29", "-0005-02-29"},
        {Atomic::date, "-0004-02-29", "!35"},
        {Atomic::date, "2020-04-31", "!35"},
        {Atomic::date, "2020-12-31+14:00", "2020-12-31+14:00"},
        {Atomic::date, "2020-12-31-14:01", "!35"},
        {Atomic::date, "020-02-20", "!35"},
        {Atomic::date, "02020-02-20", "!35"},
        {Atomic::gYear, "0000", "!35"},
        {Atomic::gYear, "-012020", "!35"},
        {Atomic::gMonthDay, "--02-30", "!35"},
        {Atomic::time, "23:59:60", "!35"},
        {Atomic::time, "23:59:59.5", "23:59:59.5"},
        {Atomic::time, "00:00:00.0000001", "00:00:00.0000001"},
        {Atomic::gYearMonth, "2020-02", "2020-02"},
        {Atomic::gYear, "12020", "12020"},
        {Atomic::gMonthDay, "--02-29", "--02-29"},
        {Atomic::gDay, "---31", "---31"},
        {Atomic::gDay, "--31", "!35"},
        {Atomic::gMonth, "--12Z", "--12Z"},
    };
    for (const auto& c : cases) EXPECT_EQ(through(plain(c.atomic), c.text), c.result) << c.text;
}

TEST(Escape, NarrowAndWide) {
    const struct {
        const wchar_t* wide;
        const char* text;
        const char* attribute;
    } cases[] = {
        {L"\"'&<", "&quot;&apos;&amp;&lt;", "&quot;&apos;&amp;&lt;"},
        {L"a]]>b", "a]]&gt;b", "a]]&gt;b"},
        {L"a]>b", "a]&gt;b", "a]&gt;b"},
        {L"]>", "]>", "]>"},  // not at position 0 or 1
        {L"a>b", "a>b", "a>b"},
        {L"\t\n\r", "\t\n&#13;", "&#9;&#10;&#13;"},
        {L"a\x01z\xFFFE", "a_x0001_z_xFFFE_", "a_x0001_z_xFFFE_"},
        {L"\xE4\x20AC\x1F600", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {L"", "", ""},
        {L"  ", "  ", "  "},
        {L"a\tb\nc", "a\tb\nc", "a&#9;b&#10;c"},
    };
    for (const auto& c : cases) {
        for (const bool attribute : {false, true}) {
            std::string wide, narrow;
            appendEscaped(wide, std::wstring_view(c.wide), attribute);
            appendEscaped(narrow, std::string_view(toUtf8(c.wide)), attribute);
            EXPECT_EQ(wide, attribute ? c.attribute : c.text);
            EXPECT_EQ(narrow, wide);
        }
    }
}

TEST(Escape, OnlyWideValues) {
    std::string out;
    appendEscaped(out, L" "sv, false);
    appendEscaped(out, " "sv, false);
    appendEscaped(out, L"\xD83D\xDE00"sv, false);  // surrogates are joined
    appendEscaped(out, L"a\xD83Dz"sv, false);      // one alone ends the value
    EXPECT_EQ(out,
              "&#160; \xF0\x9F\x98\x80"
              "a");
}

}  // namespace bindery
