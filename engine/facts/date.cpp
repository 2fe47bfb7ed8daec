#include "engine/facts/date.h"

#include <cmath>
#include <cstdint>

namespace vellum {

namespace {

constexpr double lowestDate = -657435.0;                          // 1 January 100, exclusive
constexpr double highestDate = 2958466.0;                         // 31 December 9999 and a day, exclusive
constexpr double timeSlack = 1e-11;                               // lifts 0.999999... of a unit over the edge
constexpr std::int64_t epoch1900 = 2415019, epoch1904 = 2416481;  // Julian day numbers of serial 0

std::int64_t epochOf(bool date1904) {
    return date1904 ? epoch1904 : epoch1900;
}

// Fliegel and Van Flandern, Communications of the ACM 11 (1968), 657; all divisions truncate.
std::int64_t julianDay(std::int64_t year, std::int64_t month, std::int64_t day) {
    const std::int64_t a = (month - 14) / 12;
    const std::int64_t b = a + year;
    return ((b + 4800) * 1461) / 4 + ((month - a * 12 - 2) * 367) / 12 - (((b + 4900) / 100) * 3) / 4 + day - 32075;
}

void fromJulianDay(std::int64_t julian, DateTime& out) {
    std::int64_t l = julian + 68569;
    const std::int64_t n = 4 * l / 146097;
    l -= (146097 * n + 3) / 4;
    const std::int64_t i = 4000 * (l + 1) / 1461001;
    l -= 1461 * i / 4 - 31;
    const std::int64_t j = 80 * l / 2447;
    out.day = static_cast<int>(l - 2447 * j / 80);
    l = j / 11;
    out.month = static_cast<int>(j + 2 - 12 * l);
    out.year = static_cast<int>(100 * (n - 49) + i + l);
}

/// From the true calendar to the format's, in which day 60 is 29 February 1900.
void mendStartOf1900(DateTime& out) {
    if (out.year == 1900 && out.month < 3) {
        if (++out.day > 31) {
            out.day = 1;
            ++out.month;
        }
    } else if (out.year == 1899 && out.month == 12 && out.day == 31) {
        out.year = 1900;
        out.month = out.day = 1;
    }
}

/// Splits a fraction of a day; true when rounding to the millisecond made a whole day of it.
bool unpackTime(double fraction, DateTime& out) {
    double rest = fraction * 24;
    out.hour = static_cast<int>(rest);
    rest = (rest - out.hour) * 60;
    out.min = static_cast<int>(rest);
    rest = (rest - out.min) * 60;
    out.sec = static_cast<int>(rest);
    out.msec = static_cast<int>((rest - out.sec) * 1000 + 0.5);
    if (out.msec < 1000) return false;
    out.msec = 0;
    if (++out.sec < 60) return false;
    out.sec = 0;
    if (++out.min < 60) return false;
    out.min = 0;
    if (++out.hour < 24) return false;
    out.hour = 0;
    return true;
}

}  // namespace

double packTime(const DateTime& t) {
    return t.hour / 24.0 + t.min / 1440.0 + t.sec / 86400.0 + t.msec / 86400000.0;
}

double packDate(const DateTime& t, bool date1904) {
    std::int64_t number = julianDay(t.year, t.month, t.day) - epochOf(date1904);
    // Before 1 March 1900, the day that never was included: its formula gives the day behind it.
    const bool leapDay1900 = t.year == 1900 && t.month == 2 && t.day == 29;
    if (!date1904 && (number < 61 || leapDay1900)) --number;
    return static_cast<double>(number) + t.hour / 24.0 + t.min / 1440.0 + t.sec / 86400.0 + t.msec / 86400000.0;
}

bool unpackDate(double value, bool date1904, DateTime& out) {
    if (!(value > lowestDate && value < highestDate)) return false;
    const double whole = value > 0 ? std::floor(value) : std::ceil(value);
    double fraction = value - whole + timeSlack;
    if (fraction >= 1) fraction -= timeSlack;

    out = {};
    auto number = static_cast<std::int64_t>(whole);
    if (unpackTime(fraction, out)) ++number;
    if (number > 0) {
        fromJulianDay(number + epochOf(date1904), out);
        mendStartOf1900(out);
    }
    return true;
}

}  // namespace vellum
