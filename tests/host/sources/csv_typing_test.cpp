#include "host/sources/csv_typing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "host/sources/csv_table.h"

namespace quillet {
namespace {

CsvField typed(const std::string& field, char decimalSep) {
    CsvTable table(nullptr, nullptr, 0);
    table.decimalSep = decimalSep;
    // What stands behind the field must not count, whether it can be read or not.
    std::string buffer = field + "9", slack = field + std::string(typingSlack, '9');
    const CsvField typed = typeCsvField(buffer.data(), field.size(), 0, table);
    const CsvField again = typeCsvField(slack.data(), field.size(), typingSlack, table);
    EXPECT_EQ(typed.kind, again.kind) << field;
    EXPECT_EQ(std::memcmp(&typed.number, &again.number, typed.kind == CsvFieldKind::number ? sizeof(double) : 0), 0);
    return again;
}

TEST(CsvTyping, Numbers) {
    const struct {
        const char* field;
        double value;
        char decimalSep = '.';
    } cases[] = {
        {"0", 0},
        {"-0", 0},
        {"+7", 7},
        {"1234567890", 1234567890},
        {"-123456789", -123456789},
        {"-2147483647", -2147483647},
        {"9999999999", 9999999999.0},
        {"12345678901", 12345678901.0},
        {"9007199254740991", 9007199254740991.0},
        {".5", 0.5},
        {"-.5e1", -5},
        {"5.", 5},
        {"0.1", 0.1},
        {"1e5", 1e5},
        {"1E-5", 1e-5},
        {"0x1F", 31},
        {"0x1p-2", 0.25},
        {"1,5", 1.5, ','},
        {",5", 0.5, ','},
        {"1.5", 1.5, ','},
        {"2.2250738585072014e-308", 2.2250738585072014e-308},
        {"123456789012345678901234567890.0", 123456789012345678901234567890.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.field);
        const CsvField field = typed(c.field, c.decimalSep);
        ASSERT_EQ(field.kind, CsvFieldKind::number);
        EXPECT_EQ(field.number, c.value);
    }
    EXPECT_TRUE(std::signbit(typed("-0.0", '.').number));
    EXPECT_FALSE(std::signbit(typed("-0", '.').number));
}

TEST(CsvTyping, TextsThatLookLikeNumbers) {
    for (const char* field : {"007",
                              "-01",
                              "+",
                              "-",
                              ".",
                              "12345678901234567890",
                              "9007199254740992",
                              "-9007199254740993",
                              "1e400",
                              "1e-400",
                              "1.5x",
                              "1 ",
                              " 1",
                              "1,5",
                              "1..5",
                              "nan",
                              "inf",
                              "0x",
                              "1e",
                              "--1",
                              "1.000.000",
                              "true",
                              "TRUEX"}) {
        EXPECT_EQ(typed(field, '.').kind, CsvFieldKind::text) << field;
    }
    EXPECT_EQ(typed("1,5.5", ',').kind, CsvFieldKind::text);
}

TEST(CsvTyping, KeepsTheFieldAndKnowsBooleans) {
    CsvTable table(nullptr, nullptr, 0);
    table.decimalSep = ',';
    char field[] = "1,5,5";
    EXPECT_EQ(typeCsvField(field, 5, 0, table).kind, CsvFieldKind::text);
    EXPECT_STREQ(field, "1,5,5");
    EXPECT_EQ(typed("TRUE", '.').boolean, 1);
    EXPECT_EQ(typed("FALSE", '.').kind, CsvFieldKind::boolean);
    std::strcpy(table.trueText, "1");  // numbers come first
    char one[] = "1";
    EXPECT_EQ(typeCsvField(one, 1, 0, table).kind, CsvFieldKind::number);
}

}  // namespace
}  // namespace quillet
