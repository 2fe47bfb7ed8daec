#include "refhost/values/date.h"

#include <cstdio>

namespace refhost {
namespace {

/// Reads fixed-width numbers and single characters off the front of a text.
struct Scanner {
    std::string_view rest;

    bool number(std::size_t digits, int& out) {
        if (rest.size() < digits) return false;
        out = 0;
        for (const char c : rest.substr(0, digits)) {
            if (c < '0' || c > '9') return false;
            out = out * 10 + (c - '0');
        }
        rest.remove_prefix(digits);
        return true;
    }
    bool anyOf(std::string_view wanted) {
        if (rest.empty() || wanted.find(rest.front()) == wanted.npos) return false;
        rest.remove_prefix(1);
        return true;
    }
};

int daysIn(int year, int month) {
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return days[month - 1] + (month == 2 && leap);
}

bool scanDay(Scanner& in, Date& date) {
    int year, month, day;
    if (!in.number(4, year) || !in.anyOf("-") || !in.number(2, month) || !in.anyOf("-") || !in.number(2, day))
        return false;
    if (month < 1 || month > 12 || day < 1 || day > daysIn(year, month)) return false;
    date.hasDate = true;
    date.year = static_cast<std::int16_t>(year);
    date.month = static_cast<std::uint8_t>(month);
    date.day = static_cast<std::uint8_t>(day);
    return true;
}

bool scanTime(Scanner& in, Date& date) {
    int hour, minute, second = 0, fraction = 0;
    if (!in.number(2, hour) || !in.anyOf(":") || !in.number(2, minute)) return false;
    if (in.anyOf(":")) {
        if (!in.number(2, second)) return false;
        if (in.anyOf(",.")) {
            int digit, scale = 100;
            if (!in.number(1, digit)) return false;
            for (fraction = digit * scale; scale > 1 && in.number(1, digit);) fraction += digit * (scale /= 10);
        }
    }
    if (hour > 23 || minute > 59 || second > 59) return false;
    date.hasTime = true;
    date.millisecond = static_cast<std::uint32_t>(((hour * 60 + minute) * 60 + second) * 1000 + fraction);
    return true;
}

}  // namespace

std::optional<Date> parseDate(std::string_view text) {
    Date date;
    Scanner in{text};
    if (text.empty()) return date;
    if (text.size() > 2 && text[2] == ':') {
        if (!scanTime(in, date)) return std::nullopt;
    } else {
        if (!scanDay(in, date)) return std::nullopt;
        if (in.anyOf("T ") && !scanTime(in, date)) return std::nullopt;
    }
    if (!in.rest.empty()) return std::nullopt;
    return date;
}

int printDate(const Date& date, char (&out)[maxDateText]) {
    int length = 0;
    const auto room = [&] { return static_cast<std::size_t>(maxDateText - length); };
    out[0] = '\0';
    if (date.hasDate) length += std::snprintf(out, room(), "%04d-%02d-%02d", date.year, date.month, date.day);
    if (date.hasTime) {
        const auto seconds = static_cast<int>(date.millisecond / 1000),
                   fraction = static_cast<int>(date.millisecond % 1000);
        length += std::snprintf(out + length, room(), "%s%02d:%02d:%02d", date.hasDate ? "T" : "", seconds / 3600 % 24,
                                seconds / 60 % 60, seconds % 60);
        if (fraction) length += std::snprintf(out + length, room(), ",%03d", fraction);
    }
    return length;
}

}  // namespace refhost
