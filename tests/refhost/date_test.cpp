#include "refhost/values/date.h"

#include <gtest/gtest.h>

namespace refhost {
namespace {

TEST(Date, TextsThatAreDates) {
    const struct {
        const char *text, *printed;
    } cases[] = {
        {"", ""},
        {"2024-02-29", "2024-02-29"},
        {"2024-03-01T08:30", "2024-03-01T08:30:00"},
        {"2024-03-01 23:59:59", "2024-03-01T23:59:59"},
        {"2024-03-01T08:30:05,25", "2024-03-01T08:30:05,250"},
        {"08:30:05.007", "08:30:05,007"},
        {"00:00", "00:00:00"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const auto date = parseDate(c.text);
        ASSERT_TRUE(date);
        char text[maxDateText];
        EXPECT_EQ(printDate(*date, text), static_cast<int>(std::string(c.printed).size()));
        EXPECT_STREQ(text, c.printed);
        EXPECT_EQ(parseDate(text), date);
    }
}

TEST(Date, TextsThatAreNone) {
    for (const char* text : {"2023-02-29", "1900-02-29", "2024-13-01", "2024-00-01", "2024-1-1", "24-01-01",
                             "2024-01-01T", "2024-01-01T24:00", "12:60", "2024-01-01x", " 2024-01-01", "tomorrow",
                             "2024-01-01T08:30:05,", "2024-01-01T08:30:05,1234"})
        EXPECT_FALSE(parseDate(text)) << text;
}

}  // namespace
}  // namespace refhost
