#include "engine/facts/date.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vellum {

void PrintTo(const DateTime& t, std::ostream* out) {
    *out << t.year << '-' << t.month << '-' << t.day << ' ' << t.hour << ':' << t.min << ':' << t.sec << '.' << t.msec;
}

namespace {

DateTime unpacked(double value, bool date1904 = false) {
    DateTime t{-1, -1, -1, -1, -1, -1, -1};
    EXPECT_TRUE(unpackDate(value, date1904, t)) << value;
    return t;
}

TEST(Date, NumbersAndTheirDays) {
    const struct {
        double number;
        DateTime date;
        bool date1904;
    } cases[] = {
        {1, {1900, 1, 1}, false},          {31, {1900, 1, 31}, false},
        {32, {1900, 2, 1}, false},         {59, {1900, 2, 28}, false},
        {60, {1900, 2, 29}, false},        {61, {1900, 3, 1}, false},
        {25569, {1970, 1, 1}, false},      {36526, {2000, 1, 1}, false},
        {36585, {2000, 2, 29}, false},     {44197.75, {2021, 1, 1, 18}, false},
        {2958465, {9999, 12, 31}, false},  {1, {1904, 1, 2}, true},
        {15, {1904, 1, 16}, true},  // the mended days are those of the 1900 system alone
        {42735.5, {2021, 1, 1, 12}, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.number);
        EXPECT_EQ(packDate(c.date, c.date1904), c.number);
        EXPECT_EQ(unpacked(c.number, c.date1904), c.date);
    }
    EXPECT_EQ(packDate({1904, 1, 1}, true), 0.0);
}

TEST(Date, EveryDayComesBack) {
    for (int day = 1; day < 2958466; day += 13) ASSERT_EQ(packDate(unpacked(day), false), day);
}

TEST(Date, MillisecondsRoundAndCarry) {
    EXPECT_EQ(unpacked(0.5), (DateTime{0, 0, 0, 12}));
    EXPECT_EQ(unpacked(0), DateTime{});
    EXPECT_EQ(unpacked(packTime({0, 0, 0, 23, 59, 59, 999})), (DateTime{0, 0, 0, 23, 59, 59, 999}));
    EXPECT_EQ(unpacked(100 + 1.0 / 3), (DateTime{1900, 4, 9, 8}));
    // Half a millisecond before midnight on the last of a month.
    EXPECT_EQ(unpacked(36556 + (86399.9996 / 86400)), (DateTime{2000, 2, 1}));
}

TEST(Date, OutsideTheRangeIsNoDate) {
    DateTime t;
    for (const double value : {-657435.0, 2958466.0, 1e300, -1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(unpackDate(value, false, t)) << value;
    }
    EXPECT_EQ(unpacked(-3), DateTime{});
}

}  // namespace
}  // namespace vellum
