#include "engine/text/locale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <exception>
#include <string>

namespace vellum {
namespace {

TEST(ListSeparator, ByCountry) {
    const struct {
        const char* name;
        char separator;
    } cases[] = {
        {nullptr, ';'},
        {"de_DE.UTF-8", ';'},
        {"Germany", ';'},
        {"German_Germany.1252", ';'},
        {"en_US.UTF-8", ','},
        {"C", ','},
        {"", ','},
        {"de_DE", ','},  // no encoding follows
        {"af_ZA.utf8", ';'},
        {"English_South Africa", ';'},
        {"nl_AW.UTF-8", ';'},
        {"az_AZ.UTF-8", ';'},
        {"rw_RW.UTF-8", ';'},
        {"Kinyarwanda", ';'},
        {"en_CA.UTF-8", ';'},
        {"de_CH.UTF-8", ','},
    };
    for (const auto& c : cases) EXPECT_EQ(listSeparatorOf(c.name), c.separator) << (c.name ? c.name : "null");
}

std::string failure(BookLocale& locale, const char* name) {
    try {
        locale.set(name);
    } catch (const std::exception& e) {
        return e.what();
    }
    return "ok";
}

TEST(BookLocale, Utf8FormsTouchNoGlobalState) {
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    BookLocale locale;
    EXPECT_FALSE(locale.utf8());
    EXPECT_EQ(locale.listSeparator(), ';');
    const struct {
        const char* name;
        char separator;
    } forms[] = {{"UTF-8.comma", ','}, {"UTF-8", ';'}, {"UTF-8.semicolon", ';'}};
    for (const auto& form : forms) {
        locale.set(form.name);
        EXPECT_TRUE(locale.utf8());
        EXPECT_EQ(locale.listSeparator(), form.separator) << form.name;
    }
    EXPECT_EQ(before, std::setlocale(LC_CTYPE, nullptr));
}

TEST(BookLocale, OtherNamesAreTheCLibrarysAndArePutBack) {
    const std::string before = std::setlocale(LC_CTYPE, nullptr);
    {
        BookLocale locale;
        locale.set("UTF-8");
        EXPECT_EQ(failure(locale, nullptr), "setlocale error (1)");
        EXPECT_TRUE(locale.utf8());
        EXPECT_EQ(failure(locale, "no such locale"), "setlocale error (2)");
        EXPECT_FALSE(locale.utf8());
        locale.set("C.UTF-8");
        EXPECT_EQ(locale.listSeparator(), ',');
        EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C.UTF-8");
    }
    EXPECT_EQ(before, std::setlocale(LC_CTYPE, nullptr));
}

TEST(BookLocale, AWideBookAsksTheCLibraryForAnyName) {
    BookLocale locale;
    EXPECT_THROW(locale.set("UTF-8", true), std::exception);  // the C library knows no such locale
    EXPECT_FALSE(locale.utf8());
}

}  // namespace
}  // namespace vellum
