// Day numbers of dates and times.
#pragma once
namespace vellum {

/// A calendar date with its time of day. In a time without a date year, month and day are 0.
struct DateTime {
    int year = 0, month = 0, day = 0;
    int hour = 0, min = 0, sec = 0, msec = 0;
    friend bool operator==(const DateTime&, const DateTime&) = default;
};

/// The time of day as a fraction of a day.
double packTime(const DateTime& t);

/// Days since the epoch, 1 January 1904 or (as number 1) 1 January 1900, plus the time of day. The
/// 1900 system counts 29 February 1900, a day that never was, as number 60.
/// The engines answer differently when `isTimeOnly` holds, so it is for the caller to ask first.
double packDate(const DateTime& t, bool date1904);

/// Whether year, month and day are all below 1.
inline bool isTimeOnly(const DateTime& t) {
    return t.year < 1 && t.month < 1 && t.day < 1;
}

/// Takes a number apart, to the millisecond. False when it is no date, which is outside
/// -657435 to 2958466. A number below 1 gives a time only.
bool unpackDate(double value, bool date1904, DateTime& out);

}  // namespace vellum
