#include "engine/text/text_holder.h"

#include <gtest/gtest.h>

#include <exception>

namespace vellum {
namespace {

TEST(TextHolder, EachFormIsMadeFromTheOther) {
    TextHolder holder;
    EXPECT_STREQ(holder.narrow(true), "");
    holder.setWide(L"\u00E4\U0001F600");
    EXPECT_STREQ(holder.as<char>(true), "\xC3\xA4\xF0\x9F\x98\x80");
    EXPECT_STREQ(holder.as<wchar_t>(true), L"\u00E4\U0001F600");
    holder.setNarrow("\xE2\x82\xAC");
    EXPECT_STREQ(holder.wide(true), L"\u20AC");
    holder.setNarrow(static_cast<const char*>(nullptr));
    EXPECT_STREQ(holder.narrow(true), "\xE2\x82\xAC");  // a null changes nothing
    holder.clear();
    EXPECT_STREQ(holder.wide(true), L"");
    EXPECT_STREQ(holder.give<char>(L"z", true), "z");
}

TEST(TextHolder, SurrogatesOfSixteenBitFiles) {
    TextHolder holder;
    const wchar_t pair[] = {L'a', 0xD83D, 0xDE00, 0}, broken[] = {0xDE00, 0};
    EXPECT_STREQ(holder.give<char>(pair, true), "a\xF0\x9F\x98\x80");
    EXPECT_STREQ(holder.give<wchar_t>(pair, true), pair);
    EXPECT_THROW(holder.give<char>(broken, true), std::exception);
}

TEST(TextHolder, LocaleModeTellsOfLostCharacters) {
    TextHolder holder;
    EXPECT_STREQ(holder.give<char>(L"a\u20ACz", false), "a?z");
    EXPECT_TRUE(holder.lostCharacters());
    EXPECT_STREQ(holder.give<char>(L"abc", false), "abc");
    EXPECT_FALSE(holder.lostCharacters());
    holder.setNarrow("a\xFFz");
    EXPECT_STREQ(holder.wide(false), L"a?z");
    EXPECT_TRUE(holder.lostCharacters());
}

}  // namespace
}  // namespace vellum
