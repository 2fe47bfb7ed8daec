#include "cli/workbook/json_lines.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <vector>

namespace cli {
namespace {

std::string shown(double value) {
    std::ostringstream out;
    JsonLines(out).number(value);
    return out.str();
}

TEST(JsonLines, NumbersAsPrintfShowsThem) {
    std::mt19937_64 random(7);
    std::vector<double> values = {0.0,    -0.0, 0.1,  1e15, 1e15 - 1, -1e15, 1e16, 123456789012345678.0,
                                  5e-324, 1e22, 1e300};
    for (int i = 0; i < 2000; ++i) {
        const auto bits = random();
        double value;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value)) values.push_back(value);
        values.push_back(static_cast<double>(static_cast<int>(bits)));
    }
    for (const double value : values) {
        char expected[40];
        std::snprintf(expected, sizeof expected, "%.17g", value);
        EXPECT_EQ(shown(value), expected);
    }
    EXPECT_EQ(shown(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(shown(-std::numeric_limits<double>::infinity()), "-1e999");
}

TEST(JsonLines, TextsAreEscaped) {
    std::ostringstream out;
    JsonLines(out).text("a\"b\\c\n\r\t\x01\x1f\x7f \xE2\x82\xAC").text("").text(std::string_view("\0", 1));
    EXPECT_EQ(out.str(), "\"a\\\"b\\\\c\\n\\r\\t\\u0001\\u001f\x7f \xE2\x82\xAC\"\"\"\"\\u0000\"");
}

}  // namespace
}  // namespace cli
