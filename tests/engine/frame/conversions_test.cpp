#include "engine/text/conversions.h"

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <string>

#include "engine/text/file_open.h"

namespace vellum {
namespace {

std::string failure(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& e) {
        return e.what();
    }
    return "ok";
}

const struct {
    const char* narrow;
    const wchar_t* wide;
} sameText[] = {
    {"", L""},
    {"plain", L"plain"},
    {"a\xC3\xA4z", L"a\u00E4z"},
    {"\xE2\x82\xAC", L"\u20AC"},
    {"x\xF0\x9F\x98\x80", L"x\U0001F600"},
};

TEST(Conversions, Utf8BothWays) {
    StringPool pool;
    for (const auto& c : sameText) {
        SCOPED_TRACE(c.narrow);
        EXPECT_STREQ(narrowToWide(c.narrow, pool, true), c.wide);
        EXPECT_STREQ(wideToNarrow(c.wide, pool, true), c.narrow);
        EXPECT_EQ(toWide(std::string_view(c.narrow), true), c.wide);
        EXPECT_EQ(toNarrow(c.wide, true), c.narrow);
    }
    EXPECT_EQ(narrowToWide(nullptr, pool, true), nullptr);
    EXPECT_EQ(wideToNarrow(nullptr, pool, false), nullptr);
}

TEST(Conversions, BadUtf8IsRefused) {
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"a\xFF", "Invalid UTF-8"},
        {"\x80z", "Invalid UTF-8"},
        {"\xC3(", "Invalid UTF-8"},
        {"\xC0\x80", "Invalid UTF-8"},  // overlong
        {"abc\xE2\x82", "Not enough space"},
        {"\xED\xA0\x80", "Invalid code point"},
        {"\xF4\x90\x80\x80", "Invalid code point"},
    };
    StringPool pool;
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        EXPECT_EQ(failure([&] { narrowToWide(c.text, pool, true); }), c.message);
        EXPECT_EQ(failure([&] { toWide(std::string_view(c.text), true); }), c.message);
    }
}

TEST(Conversions, SurrogatesJoinOnTheWayToTheCallerOnly) {
    const wchar_t pair[] = {0xD83D, 0xDE00, 0}, high[] = {L'a', 0xD83D, L'b', 0}, low[] = {0xDE00, 0};
    StringPool pool;
    EXPECT_EQ(toNarrow(pair, true), "\xF0\x9F\x98\x80");
    EXPECT_EQ(failure([&] { toNarrow(high, true); }), "Invalid UTF-16");
    EXPECT_EQ(failure([&] { toNarrow(std::wstring_view(high).substr(0, 2), true); }), "Invalid UTF-16");
    EXPECT_EQ(failure([&] { toNarrow(low, true); }), "Invalid UTF-16");
    EXPECT_EQ(failure([&] { wideToNarrow(pair, pool, true); }), "Invalid code point");
}

TEST(Conversions, TheCLocaleHasNoForeignCharacters) {
    StringPool pool;
    EXPECT_STREQ(narrowToWide("abc", pool, false), L"abc");
    EXPECT_EQ(failure([&] { narrowToWide("\xC3\xA4", pool, false); }),
              "can't convert multibyte to wide string, perhaps incorrect locale");
    EXPECT_EQ(failure([&] { wideToNarrow(L"\u20AC", pool, false); }),
              "can't convert wide to multibyte string, perhaps incorrect locale [1]");
}

TEST(FileNames, NarrowAsTheyStandAndWideAsUtf8) {
    StringPool pool;
    const std::string name = testing::TempDir() + "open_\xC3\xA4.bin";
    openFile(name.c_str(), std::ios_base::out | std::ios_base::trunc, pool, true) << "a\r\n";
    std::string found;
    std::getline(openFile((toWide(name, true)).c_str(), forReading, pool, true), found, '\0');
    EXPECT_EQ(found, "a\r\n");
    EXPECT_FALSE(openFile((name + ".none").c_str(), forReading, pool, true).is_open());
}

}  // namespace
}  // namespace vellum
