#include "host/values/cell_values.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

#include "tests/host/values/fake_book.h"

namespace quillet {
namespace {

using fake::FakeHost;
using fake::FakeSource;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr HostType typeDate = hostTypeFirstObject;

/// A source of one cell, at C4 of the range B3:D9.
struct OneCell {
    FakeHost host;
    FakeSource source;
    fake::FakeSheet& sheet;
    RangeSpec range;

    explicit OneCell(std::uint32_t flags = 0, int bufferSize = defaultBufferSize)
        : source(0, bufferSize), sheet(source.book.add("S")) {
        range.ops = fake::fakeTableOps;
        range.flags = flags;
        range.specialValues = &source.special();
        range.textBuffer = source.context()->textBuffer();
        range.bufferSize = bufferSize;
        range.book = &source.book;
        range.sheet = &sheet;
        range.firstRow = 2;
        range.firstCol = 1;
        range.realFormat = "%.10g";
    }
    std::string cell() {
        const fake::FakeCell& c = sheet.at(3, 2);
        if (c.kind == cellText) return "'" + c.text + "'";
        if (c.kind == cellEmpty) return "blank";
        return (c.kind == cellBoolean ? "bool " : "") + std::to_string(c.number);
    }
};

/// What a cell reads as, in words.
std::string readAs(OneCell& one, HostType type) {
    HostValue value = {.bits = 0};
    value.text = reinterpret_cast<const char*>(-1);
    if (readCellAs(nullptr, one.range, type, &value, 1, 1)) return "failed";
    if (type == hostTypeInteger || type == hostTypeBoolean) return std::to_string(value.integer);
    if (type == hostTypeReal) {
        char text[64];
        std::snprintf(text, sizeof text, "%.17g", value.real);
        return text;
    }
    return value.text ? value.text : "null";
}

TEST(ReadCell, EachKindAsEachType) {
    const struct {
        const char* cell;
        const char *integer, *real, *text, *boolean, *object;
    } cases[] = {
        {"", "0", "0", "null", "0", "null"},
        {"2.75", "2", "2.75", "2.75", "1", "2.75"},
        {"-2.75", "-2", "-2.75", "-2.75", "1", "-2.75"},
        {"0", "0", "0", "0", "0", "0"},
        {"2147483647.5", "2147483647", "2147483647.5", "2147483648", "1", "2147483648"},
        {"-2147483647", "-2147483647", "-2147483647", "-2147483647", "1", "-2147483647"},
        {"2147483648", "-2147483648", "2147483648", "2147483648", "1", "2147483648"},
        {"-2147483648.9", "-2147483648", "-2147483648.9000001", "-2147483649", "1", "-2147483649"},
        {"-1e30", "-2147483648", "-1e+30", "-1e+30", "1", "-1e+30"},
        {"nan", "-2147483648", "nan", "nan", "1", "nan"},
        {"abc", "0", "0", "abc", "0", "abc"},
        {"3.5 kg", "3", "3.5", "3.5 kg", "0", "3.5 kg"},
        {"TRUE", "0", "0", "TRUE", "1", "TRUE"},
        {"true", "1", "1", "true", "1", "true"},
        {"false", "0", "0", "false", "0", "false"},
        {"#err", "failed", "failed", "failed", "failed", "failed"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cell);
        OneCell one;
        one.sheet.put(3, 2, c.cell);
        EXPECT_EQ(readAs(one, hostTypeInteger), c.integer);
        EXPECT_EQ(readAs(one, hostTypeReal), c.real);
        EXPECT_EQ(readAs(one, hostTypeText), c.text);
        EXPECT_EQ(readAs(one, hostTypeBoolean), c.boolean);
        EXPECT_EQ(readAs(one, typeDate), c.object);
    }
}

TEST(ReadCell, ErrorCells) {
    for (const HostType type : {HostType{hostTypeInteger}, HostType{hostTypeReal}, HostType{hostTypeText},
                                HostType{hostTypeBoolean}, typeDate}) {
        OneCell one;
        one.sheet.put(3, 2, "#err");
        EXPECT_EQ(readAs(one, type), "failed");
        EXPECT_EQ(FakeHost::messages(), std::vector<std::string>{"SHEET: Wrong result value at [R4C3].\n"});
        one.range.flags |= optSkipErrorCells;
        EXPECT_EQ(readAs(one, type), type == hostTypeText || type == typeDate ? "null" : "0");
    }
}

TEST(ReadCell, ObjectTextIsNotRegistered) {
    OneCell one;
    one.sheet.put(3, 2, "1.5");
    HostValue value = {.bits = 0};
    EXPECT_EQ(readCellAs(nullptr, one.range, typeDate, &value, 1, 1), 0);
    EXPECT_EQ(value.text, one.range.textBuffer);
    EXPECT_EQ(readCellAs(nullptr, one.range, hostTypeText, &value, 1, 1), 0);
    EXPECT_NE(value.text, one.range.textBuffer);
}

TEST(ReadCell, FormattedNumberIsCutToTheBuffer) {
    OneCell one(0, 1024);
    one.range.realFormat = "%2000.1f";
    one.sheet.put(3, 2, "1");
    EXPECT_EQ(readAs(one, hostTypeText).size(), 1023u);
    one.range.realFormat = "";  // a format that gives nothing
    EXPECT_EQ(readAs(one, hostTypeText), "");
}

TEST(ReadCell, SpecialValues) {
    const std::uint32_t numbers = optNanNumber | optInfNumber | optMinfNumber;
    const std::uint32_t texts = optNanText | optInfText | optMinfText;
    const struct {
        std::uint32_t flags;
        const char* cell;
        const char* real;
    } cases[] = {
        {numbers, "-99", "nan"},
        {numbers, "1000", "inf"},
        {numbers, "-1000", "-inf"},
        {numbers, "1001", "1001"},
        {optInfNumber, "-99", "-99"},  // only the forms that were given
        {optInfNumber, "-1000", "-1000"},
        {texts, "-99", "-99"},  // a text form says nothing about numbers
        {texts, "na", "nan"},
        {texts, "BIG", "inf"},
        {texts, "Small", "-inf"},
        {texts, "2.5x", "2.5"},
        {optNanText, "Big", "0"},
        {numbers, "NA", "0"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cell);
        OneCell one(c.flags);
        one.source.special() = {.nanText = "NA",
                                .infText = "Big",
                                .minfText = "small",
                                .nanNumber = -99,
                                .infNumber = 1000,
                                .minfNumber = -1000};
        one.sheet.put(3, 2, c.cell);
        EXPECT_EQ(readAs(one, hostTypeReal), c.real);
    }
}

TEST(WriteReal, SpecialValues) {
    const double nan = std::nan("");
    const struct {
        std::uint32_t flags;
        double value;
        const char* cell;
    } cases[] = {
        {0, 1.5, "1.500000"},
        {0, infinity, "inf"},
        {optGrow, infinity, "inf"},
        {optNanText, nan, "'NA'"},
        {optNanText | optNanNumber, nan, "'NA'"},
        {optNanNumber, nan, "-99.000000"},
        {optInfText, infinity, "'Big'"},
        {optInfNumber, infinity, "1000.000000"},
        {optMinfText, -infinity, "'small'"},
        {optMinfNumber, -infinity, "-1000.000000"},
        {optInfText, -infinity, "-inf"},
        {optSkipErrorCells, infinity, "blank"},
        {optSkipErrorCells | optInfText, infinity, "'Big'"},
        {optSkipErrorCells, 2.0, "2.000000"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.cell);
        OneCell one(c.flags);
        one.source.special() = {.nanText = "NA",
                                .infText = "Big",
                                .minfText = "small",
                                .nanNumber = -99,
                                .infNumber = 1000,
                                .minfNumber = -1000};
        EXPECT_EQ(writeRealToCell(one.range, 1, 1, c.value), 0);
        EXPECT_EQ(one.cell(), c.cell);
    }
}

TEST(WriteCell, BaseTypesAndRefusals) {
    OneCell one;
    const auto write = [&](HostType type, HostValue value) {
        return writeValueToCell(nullptr, one.range, type, 1, 1, &value);
    };
    EXPECT_EQ(write(hostTypeInteger, {.integer = -7}), 0);
    EXPECT_EQ(one.cell(), "-7.000000");
    EXPECT_EQ(write(hostTypeBoolean, {.integer = 1}), 0);
    EXPECT_EQ(one.cell(), "bool 1.000000");
    EXPECT_EQ(write(hostTypeText, {.text = "x"}), 0);
    EXPECT_EQ(one.cell(), "'x'");
    EXPECT_EQ(write(hostTypeText, {.text = nullptr}), 0);
    EXPECT_EQ(one.cell(), "''");
    EXPECT_EQ(writeValueToCell(nullptr, one.range, hostTypeReal, 1, 1, nullptr), 0);
    EXPECT_EQ(one.cell(), "blank");
    one.sheet.writableRows = 3;
    EXPECT_EQ(write(hostTypeInteger, {.integer = 1}), 1);
    EXPECT_TRUE(FakeHost::messages().empty());
}

TEST(WriteCell, TextOfAnObjectHasToFitTheBuffer) {
    OneCell one(0, 1024);
    HostValue value = {.integer = 1023};  // characters
    EXPECT_EQ(writeValueToCell(nullptr, one.range, typeDate, 1, 1, &value), 0);
    EXPECT_EQ(one.sheet.at(3, 2).text.size(), 1023u);
    value.integer = 1024;
    EXPECT_EQ(writeValueToCell(nullptr, one.range, typeDate, 1, 1, &value), 1);
    EXPECT_EQ(FakeHost::messages(), std::vector<std::string>{"SHEET: Buffer overflow or invalid type.\n"});
}

}  // namespace
}  // namespace quillet
