// Dates and times as schemas know them.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace bindery {

/// Which fields a date value has.
enum class DateKind : std::uint8_t { dateTime, date, time, gYearMonth, gYear, gMonthDay, gDay, gMonth };

/// A date or time of XML Schema. Fields that the kind does not have are 0.
struct c_datetime {
    DateKind kind = DateKind::dateTime;
    bool hasZone = false;
    std::uint8_t month = 0, day = 0;  // from 1
    std::uint8_t hour = 0, minute = 0;
    std::int16_t zoneMinutes = 0;  // east of Greenwich
    std::int32_t year = 0;
    double second = 0;

    /// False when the text has not the form of the kind, or a field is out of its range.
    static bool parse(std::string_view text, DateKind kind, c_datetime& to);
    std::string text() const;

    friend bool operator==(const c_datetime&, const c_datetime&) = default;
};

}  // namespace bindery
