#include "cli/formats/show_date.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "engine/facts/date.h"

namespace cli {
namespace {

constexpr std::string_view months[] = {"January", "February", "March",     "April",   "May",      "June",
                                       "July",    "August",   "September", "October", "November", "December"};
constexpr std::string_view days[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::string twoDigits(long long number, int count) {
    std::string digits = std::to_string(number);
    const auto wanted = static_cast<std::size_t>(std::max(count, 1));
    return digits.size() < wanted ? std::string(wanted - digits.size(), '0') + digits : digits;
}

/// A point in time to as many parts of a second as the code shows.
struct Moment {
    vellum::DateTime date;
    long long day = 0;           // number, without its time
    long long units = 0;         // since the epoch
    long long unitsASecond = 1;  // 1, 10, 100, 1000
    bool twelveHours = false;
};

std::string monthText(const Moment& at, int count) {
    const int month = at.date.month;
    if (count <= 2) return twoDigits(month, count);
    const std::string_view name = months[static_cast<std::size_t>(std::clamp(month, 1, 12) - 1)];
    return std::string(count == 3 ? name.substr(0, 3) : count == 5 ? name.substr(0, 1) : name);
}

std::string dayText(const Moment& at, int count) {
    if (count <= 2) return twoDigits(at.date.day, count);
    const std::string_view name = days[static_cast<std::size_t>((at.day + 6) % 7)];
    return std::string(count == 3 ? name.substr(0, 3) : name);
}

std::string halfDayText(const Moment& at, const std::string& code) {
    const bool after = at.date.hour >= 12;
    if (code.size() == 3) return std::string(1, code[after ? 2 : 0]);
    return after ? "PM" : "AM";
}

std::string hourText(const Moment& at, int count) {
    const int hour = at.twelveHours ? (at.date.hour + 11) % 12 + 1 : at.date.hour;
    return twoDigits(hour, std::min(count, 2));
}

std::string secondFractionText(const Moment& at, int count) {
    std::string text = twoDigits(at.units % at.unitsASecond, std::min(count, 3));
    text.insert(text.begin(), '.');
    return text.append(static_cast<std::size_t>(std::max(count - 3, 0)), '0');
}

std::string pieceText(const FormatPiece& piece, const Moment& at) {
    const long long seconds = at.units / at.unitsASecond;
    switch (piece.part) {
        case Part::year:
            return piece.count <= 2 ? twoDigits(at.date.year % 100, 2) : twoDigits(at.date.year, 4);
        case Part::month:
            return monthText(at, piece.count);
        case Part::day:
            return dayText(at, piece.count);
        case Part::hour:
            return hourText(at, piece.count);
        case Part::minute:
            return twoDigits(at.date.min, std::min(piece.count, 2));
        case Part::second:
            return twoDigits(at.date.sec, std::min(piece.count, 2));
        case Part::secondFraction:
            return secondFractionText(at, piece.count);
        case Part::halfDay:
            return halfDayText(at, piece.text);
        case Part::elapsed:
            return twoDigits(piece.letter == 'h'   ? seconds / 3600
                             : piece.letter == 'm' ? seconds / 60
                                                   : seconds,
                             piece.count);
        default:
            return piece.text;
    }
}

}  // namespace

std::optional<std::string> showDate(const FormatSection& section, double value, bool date1904) {
    constexpr double dayPastTheLast = 2958466;  // 31 December 9999 is the last
    if (!(value >= 0) || value >= dayPastTheLast) return std::nullopt;
    Moment at;
    for (const FormatPiece& piece : section.pieces) {
        if (piece.part == Part::secondFraction) {
            for (int i = 0; i < std::min(piece.count, 3) && at.unitsASecond < 1000; ++i) at.unitsASecond *= 10;
        }
        if (piece.part == Part::halfDay) at.twelveHours = true;
    }
    const long long unitsADay = 86400 * at.unitsASecond;
    at.units = std::llround(value * static_cast<double>(unitsADay));
    at.day = at.units / unitsADay;
    const long long seconds = at.units % unitsADay / at.unitsASecond;
    if (at.day == 0 && !date1904) {
        at.date.year = 1900, at.date.month = 1;  // times stand on the day before the first
    } else if (!vellum::unpackDate(static_cast<double>(at.day) + (at.day == 0 ? 1 : 0), date1904, at.date)) {
        return std::nullopt;
    } else if (at.day == 0) {
        at.date = {1904, 1, 1, 0, 0, 0, 0};
    }
    at.date.hour = static_cast<int>(seconds / 3600);
    at.date.min = static_cast<int>(seconds / 60 % 60);
    at.date.sec = static_cast<int>(seconds % 60);
    if (date1904) at.day += 1462;  // days of the week are counted from 1900
    std::string out;
    for (const FormatPiece& piece : section.pieces) out += pieceText(piece, at);
    return out;
}

}  // namespace cli
