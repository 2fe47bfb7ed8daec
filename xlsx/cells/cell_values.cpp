#include "xlsx/cells/cell_values.h"

#include <locale.h>
#include <stdlib.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "engine/facts/date.h"

namespace vellum {
namespace {

locale_t cLocale() {
    static const locale_t made = newlocale(LC_ALL_MASK, "C", locale_t{});
    return made;
}

/// Blanks, hexadecimal digits, "inf", numbers out of range: as the C library says.
double slowNumberOf(std::string_view text, bool* whole) {
    const std::string terminated(text);
    char* end = nullptr;
    const double value = strtod_l(terminated.c_str(), &end, cLocale());
    if (whole) *whole = end != terminated.c_str() && end == terminated.c_str() + terminated.size();
    return value;
}

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Up to 15 digits, with a point between or behind them. Both the number that they make and the power of ten are exact
/// doubles then, so that their quotient is rounded once, as every correct conversion rounds it.
bool shortDecimal(std::string_view text, double& value) {
    constexpr std::size_t exactDigits = 15;
    constexpr double powersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char* at = text.data();
    const char* const end = at + text.size();
    const bool negative = at != end && *at == '-';
    if (negative) ++at;
    if (at == end || !isDigit(*at) || static_cast<std::size_t>(end - at) > exactDigits + 1) return false;
    std::uint64_t digits = 0;
    for (; at != end && isDigit(*at); ++at) digits = digits * 10 + static_cast<unsigned>(*at - '0');
    std::size_t decimals = 0;
    if (at != end && *at == '.') {
        const char* const first = ++at;
        for (; at != end && isDigit(*at); ++at) digits = digits * 10 + static_cast<unsigned>(*at - '0');
        decimals = static_cast<std::size_t>(at - first);
    } else if (text.size() - negative > exactDigits) {
        return false;
    }
    if (at != end) return false;
    const auto whole = static_cast<double>(digits);
    value = (negative ? -whole : whole) / powersOfTen[decimals];
    return true;
}

/// Takes the fields of a pattern off a text one by one, in the manner of scanf.
class FieldScanner {
public:
    explicit FieldScanner(std::string_view text) : _at(text.data()), _end(text.data() + text.size()) {}

    bool field(int& value) { return number(value); }
    bool field(double& value) { return number(value); }
    bool literal(char c) { return _at != _end && *_at == c && ++_at != nullptr; }
    [[nodiscard]] int taken() const { return _taken; }

private:
    template <class Value>
    bool number(Value& value) {
        while (_at != _end && isBlank(*_at)) ++_at;
        const char* from = _at;
        if (from != _end && *from == '+') ++from;
        const auto [behind, code] = std::from_chars(from, _end, value);
        if (code != std::errc()) return false;
        _at = behind;
        ++_taken;
        return true;
    }

    const char* _at;
    const char* _end;
    int _taken = 0;
};

}  // namespace

double numberOf(std::string_view text, bool* whole) {
    double value = 0.0;
    if (shortDecimal(text, value)) {
        if (whole) *whole = true;
        return value;
    }
    if (!text.empty() && (text[0] == '-' || isDigit(text[0]))) {
        const char* const end = text.data() + text.size();
        const auto [behind, code] = std::from_chars(text.data(), end, value);
        if (code == std::errc() && behind == end) {
            if (whole) *whole = true;
            return value;
        }
    }
    return slowNumberOf(text, whole);
}

NumberText::NumberText(double value) {
    constexpr double exactLimit = 9007199254740992.0;  // integers below have at most 16 digits
    char* const end = _text + sizeof _text;
    const char* behind;
    if (std::fabs(value) < exactLimit && value == std::trunc(value) && !(value == 0.0 && std::signbit(value))) {
        behind = std::to_chars(_text, end, static_cast<std::int64_t>(value)).ptr;
    } else {
        behind = std::to_chars(_text, end, value, std::chars_format::general, 17).ptr;
    }
    _size = static_cast<std::size_t>(behind - _text);
}

std::string shortNumberText(double value) {
    char text[32];
    const auto [behind, code] = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 16);
    return {text, code == std::errc() ? behind : text};
}

std::size_t positionOf(std::string_view text) {
    std::size_t position = 0;
    const auto [behind, code] = std::from_chars(text.data(), text.data() + text.size(), position);
    if (code == std::errc()) return position;
    bool whole = false;
    const double number = numberOf(text, &whole);
    return whole && number >= 0.0 && number < 4294967296.0 ? static_cast<std::size_t>(number)
                                                           : std::numeric_limits<std::size_t>::max();
}

std::optional<double> isoDateOf(std::string_view text, bool date1904) {
    DateTime t;
    double seconds = 0.0;
    FieldScanner in(text);
    const auto time = [&] {
        return in.field(t.hour) && in.literal(':') && in.field(t.min) && in.literal(':') && in.field(seconds);
    };
    if (text.find('-') == std::string_view::npos && text.find(':') != std::string_view::npos) {
        time();
    } else {
        in.field(t.year) && in.literal('-') && in.field(t.month) && in.literal('-') && in.field(t.day) &&
            in.literal('T') && time();
    }
    if (in.taken() == 0) return {};
    if (!(std::fabs(seconds) < 1e9)) return {};
    t.sec = static_cast<int>(std::floor(seconds));
    t.msec = static_cast<int>((seconds - std::floor(seconds)) * 1000 + 0.5);
    const double value = isTimeOnly(t) ? packTime(t) : packDate(t, date1904);
    if (!(value >= 0.0)) return {};
    return value;
}

}  // namespace vellum
