#include "refhost/values/format_real.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace refhost {
namespace {

std::string byPrintf(const char* format, double value) {
    char text[512];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

void expectAsPrintf(const char* format, double value) {
    char text[512];
    const int length = formatReal(text, sizeof text, format, value);
    const std::string expected = byPrintf(format, value);
    ASSERT_EQ(text, expected) << format;
    ASSERT_EQ(length, static_cast<int>(expected.size()));
}

TEST(FormatReal, IsWhatPrintfGives) {
    constexpr double inf = std::numeric_limits<double>::infinity();
    const double values[] = {
        0,    -0.0,   1,         -1,         0.1,  0.5,   1e15,   123456789012345,        999999999999999,
        1e-5, 0.0001, 9.9999995, 0.00001234, 1e22, 1e100, 5e-324, 1.7976931348623157e308, 3.0000000000000004,
        2.5,  100,    123456,    1234567,    inf,  -inf};
    for (const char* format : {"%g", "%.0g", "%.1g", "%.3g", "%.6g", "%.10g", "%.15g", "%.16g", "%.17g", "%.40g",
                               "%.2f", "%12.4e", "a%gb%%", "%#.15g", "%+.3g", "%.100g"})
        for (const double value : values) expectAsPrintf(format, value);
}

TEST(FormatReal, IsWhatPrintfGivesForAnyBits) {
    std::mt19937_64 random(42);
    for (int i = 0; i < 200000; ++i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (value != value) continue;
        expectAsPrintf("%.15g", value);
        expectAsPrintf(i % 2 ? "%.6g" : "%.17g", value);
        const double decimal =
            static_cast<double>(static_cast<std::int64_t>(bits % 2000000) - 1000000) / 1000;  // prices and the like
        expectAsPrintf("%.15g", decimal);
        expectAsPrintf("%.4g", decimal);
    }
}

TEST(FormatReal, CutsAtTheBuffersEndAndTellsTheWholeLength) {
    char text[4] = "???";
    EXPECT_EQ(formatReal(text, sizeof text, "%.15g", 3.25e-7), 8);
    EXPECT_STREQ(text, "3.2");
    EXPECT_EQ(formatReal(nullptr, 0, "%.15g", 1.5), 3);
}

TEST(FormatReal, RefusesFormatsOfAnythingElse) {
    for (const char* format : {"", "3", "%s", "%d", "%g%g", "%*g", "%.*g", "%", "%.99999g", "%Lg", "%n", "%%"}) {
        char text[8] = "0";
        EXPECT_EQ(formatReal(text, sizeof text, format, 1.5), -1) << format;
        EXPECT_STREQ(text, "0") << format;
    }
}

}  // namespace
}  // namespace refhost
