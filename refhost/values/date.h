// The built-in type `date`: a calendar date, a time of day, or both.
#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace refhost {

/// Nothing, a date, a time, or a date with a time. The empty value has neither.
struct Date {
    bool hasDate = false, hasTime = false;
    std::int16_t year = 0;            // 0 to 9999
    std::uint8_t month = 0, day = 0;  // from 1
    std::uint32_t millisecond = 0;    // of the day

    bool operator==(const Date&) const = default;
};

/// Reads "2024-03-01", "2024-03-01T08:30", "2024-03-01 08:30:05,250", "08:30:05" and the empty text; the fraction has
/// up to three digits behind "," or ".". Nothing else, and no day that the calendar does not have.
std::optional<Date> parseDate(std::string_view text);

constexpr int maxDateText = 24;
/// Writes the text of at most maxDateText - 1 characters with its NUL; the length.
int printDate(const Date& date, char (&out)[maxDateText]);

}  // namespace refhost
