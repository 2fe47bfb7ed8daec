#include "cli/formats/decimal.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace cli {
namespace {

constexpr int significant = 15;

/// d.ddd... times 10^exponent, by its 15 digits.
struct Digits {
    std::string digits;
    int exponent = 0;
};

Digits digitsOf(double value) {
    char text[40];
    const auto end =
        std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific, significant - 1).ptr;
    const std::string all(text, end);
    const std::size_t e = all.find('e');
    Digits found{all.substr(0, 1) + all.substr(2, e - 2), 0};
    found.exponent = std::atoi(all.c_str() + e + 1);
    return found;
}

/// Adds one to the last of the digits; true when it needs one more in front.
bool increment(std::string& digits) {
    for (std::size_t i = digits.size(); i-- > 0;) {
        if (digits[i] != '9') {
            ++digits[i];
            return false;
        }
        digits[i] = '0';
    }
    digits.insert(digits.begin(), '1');
    return true;
}

Decimal cut(Digits number, int places) {
    const int wanted = number.exponent + 1 + places;  // digits that stay
    if (wanted < 0) number.digits.clear();
    if (wanted >= 0 && static_cast<std::size_t>(wanted) < number.digits.size()) {
        const bool up = number.digits[static_cast<std::size_t>(wanted)] >= '5';
        number.digits.resize(static_cast<std::size_t>(wanted));
        if (up && increment(number.digits)) ++number.exponent;
    }
    Decimal out;
    const auto digit = [&](int power) {
        const int at = number.exponent - power;
        return at >= 0 && at < static_cast<int>(number.digits.size()) ? number.digits[static_cast<std::size_t>(at)]
                                                                      : '0';
    };
    for (int power = number.exponent; power >= 0; --power) out.whole += digit(power);
    out.whole.erase(0, out.whole.find_first_not_of('0'));
    for (int power = -1; power >= -places; --power) out.fraction += digit(power);
    return out;
}

void dropZeros(std::string& text) {
    text.erase(text.find_last_not_of('0') + 1);
}

std::string scientificText(double value) {
    int exponent = decimalExponent(value);
    Decimal mantissa = scaledDecimal(value, exponent, 5);
    if (mantissa.whole.size() > 1) mantissa = scaledDecimal(value, ++exponent, 5);
    dropZeros(mantissa.fraction);
    std::string text = mantissa.whole + (mantissa.fraction.empty() ? "" : ".") + mantissa.fraction;
    text += exponent < 0 ? "E-" : "E+";
    const std::string digits = std::to_string(std::abs(exponent));
    return text + (digits.size() < 2 ? "0" : "") + digits;
}

}  // namespace

Decimal roundedDecimal(double value, int places) {
    return cut(digitsOf(value), places);
}

Decimal scaledDecimal(double value, int exponent, int places) {
    Digits number = digitsOf(value);
    number.exponent -= exponent;
    return cut(std::move(number), places);
}

int decimalExponent(double value) {
    return value == 0 ? 0 : digitsOf(value).exponent;
}

std::string generalText(double value) {
    if (value == 0) return "0";
    const std::string sign = value < 0 ? "-" : "";
    const int exponent = decimalExponent(value);
    if (exponent > 10) return sign + scientificText(value);
    const int places = exponent < 0 ? 9 : exponent > 9 ? 0 : 9 - exponent;
    Decimal shown = roundedDecimal(value, places);
    if (exponent < -4) {  // a small number stands as it is when all its digits fit
        const Decimal exact = roundedDecimal(value, places + significant);
        if (exact.fraction.find_last_not_of('0') >= static_cast<std::size_t>(places))
            return sign + scientificText(value);
    }
    dropZeros(shown.fraction);
    return sign + (shown.whole.empty() ? "0" : shown.whole) + (shown.fraction.empty() ? "" : ".") + shown.fraction;
}

}  // namespace cli
