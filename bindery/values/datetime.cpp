#include "bindery/values/datetime.h"

#include <charconv>
#include <cmath>

namespace bindery {

namespace {

/// Takes the fields of a date off the front of a text.
class Fields {
public:
    explicit Fields(std::string_view text) : _rest(text) {}

    bool literal(std::string_view text) {
        if (!_rest.starts_with(text)) return false;
        _rest.remove_prefix(text.size());
        return true;
    }

    /// Two digits within bounds.
    bool two(std::uint8_t& to, int least, int most) {
        if (_rest.size() < 2 || !isDigit(_rest[0]) || !isDigit(_rest[1])) return false;
        const int value = (_rest[0] - '0') * 10 + (_rest[1] - '0');
        if (value < least || value > most) return false;
        to = static_cast<std::uint8_t>(value);
        _rest.remove_prefix(2);
        return true;
    }

    /// Four digits, or more without a zero in front; with a sign before the common era. There is no year 0.
    bool year(std::int32_t& to) {
        const std::size_t sign = _rest.starts_with('-') ? 1 : 0;
        std::size_t n = sign;
        while (n < _rest.size() && isDigit(_rest[n])) ++n;
        if (n - sign < 4 || (n - sign > 4 && _rest[sign] == '0')) return false;
        const auto result = std::from_chars(_rest.data(), _rest.data() + n, to);
        _rest.remove_prefix(n);
        return result.ec == std::errc() && to != 0;
    }

    bool seconds(double& to) {
        std::size_t n = 0;
        while (n < _rest.size() && isDigit(_rest[n])) ++n;
        if (n != 2) return false;
        if (n + 1 < _rest.size() && _rest[n] == '.' && isDigit(_rest[n + 1]))
            for (++n; n < _rest.size() && isDigit(_rest[n]);) ++n;
        std::from_chars(_rest.data(), _rest.data() + n, to);
        _rest.remove_prefix(n);
        return to < 60;
    }

    bool zone(c_datetime& to) {
        if (_rest.empty()) return true;
        to.hasZone = true;
        if (literal("Z")) return true;
        const bool east = _rest[0] == '+';
        std::uint8_t hours = 0, minutes = 0;
        if (!(literal("+") || literal("-")) || !two(hours, 0, 14) || !literal(":") || !two(minutes, 0, 59))
            return false;
        if (hours == 14 && minutes != 0) return false;
        to.zoneMinutes = static_cast<std::int16_t>((hours * 60 + minutes) * (east ? 1 : -1));
        return true;
    }

    bool date(c_datetime& to) {
        return year(to.year) && literal("-") && two(to.month, 1, 12) && literal("-") &&
               two(to.day, 1, daysOf(to.year, to.month));
    }
    bool monthDay(c_datetime& to) {
        constexpr int leapYear = 4;
        return literal("--") && two(to.month, 1, 12) && literal("-") && two(to.day, 1, daysOf(leapYear, to.month));
    }
    bool time(c_datetime& to) {
        return two(to.hour, 0, 24) && literal(":") && two(to.minute, 0, 59) && literal(":") && seconds(to.second) &&
               (to.hour < 24 || (to.minute == 0 && to.second == 0));
    }

    bool atEnd() const { return _rest.empty(); }

private:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }

    /// By the calendar of today, which runs on without a year 0 before the common era.
    static int daysOf(std::int32_t year, int month) {
        constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const std::int32_t counted = year < 0 ? year + 1 : year;
        const bool leap = counted % 4 == 0 && (counted % 100 != 0 || counted % 400 == 0);
        return days[month - 1] + (leap && month == 2 ? 1 : 0);
    }

    std::string_view _rest;
};

void append(std::string& out, int value, int digits) {
    const std::string text = std::to_string(value);
    if (static_cast<int>(text.size()) < digits) out.append(static_cast<std::size_t>(digits) - text.size(), '0');
    out += text;
}

}  // namespace

bool c_datetime::parse(std::string_view text, DateKind kind, c_datetime& to) {
    to = c_datetime();
    to.kind = kind;
    Fields in(text);
    bool good = false;
    switch (kind) {
        case DateKind::dateTime:
            good = in.date(to) && in.literal("T") && in.time(to);
            break;
        case DateKind::date:
            good = in.date(to);
            break;
        case DateKind::time:
            good = in.time(to);
            break;
        case DateKind::gYearMonth:
            good = in.year(to.year) && in.literal("-") && in.two(to.month, 1, 12);
            break;
        case DateKind::gYear:
            good = in.year(to.year);
            break;
        case DateKind::gMonthDay:
            good = in.monthDay(to);
            break;
        case DateKind::gDay:
            good = in.literal("---") && in.two(to.day, 1, 31);
            break;
        case DateKind::gMonth:
            good = in.literal("--") && in.two(to.month, 1, 12);
            break;
    }
    return good && in.zone(to) && in.atEnd();
}

std::string c_datetime::text() const {
    std::string out;
    const auto putYear = [&] {
        if (year < 0) out += '-';
        append(out, std::abs(year), 4);
    };
    const auto putDate = [&] {
        putYear();
        append(out += '-', month, 2);
        append(out += '-', day, 2);
    };
    const auto putTime = [&] {
        append(out, hour, 2);
        append(out += ':', minute, 2);
        out += ':';
        if (second < 10) out += '0';
        char buffer[400];  // the smallest number has 326 characters
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, second, std::chars_format::fixed).ptr;
        out.append(buffer, end);
    };
    switch (kind) {
        case DateKind::dateTime:
            putDate();
            out += 'T';
            putTime();
            break;
        case DateKind::date:
            putDate();
            break;
        case DateKind::time:
            putTime();
            break;
        case DateKind::gYearMonth:
            putYear();
            append(out += '-', month, 2);
            break;
        case DateKind::gYear:
            putYear();
            break;
        case DateKind::gMonthDay:
            append(out += "--", month, 2);
            append(out += '-', day, 2);
            break;
        case DateKind::gDay:
            append(out += "---", day, 2);
            break;
        case DateKind::gMonth:
            append(out += "--", month, 2);
            break;
    }
    if (!hasZone) return out;
    if (zoneMinutes == 0) return out += 'Z';
    out += zoneMinutes < 0 ? '-' : '+';
    append(out, std::abs(zoneMinutes) / 60, 2);
    append(out += ':', std::abs(zoneMinutes) % 60, 2);
    return out;
}

}  // namespace bindery
