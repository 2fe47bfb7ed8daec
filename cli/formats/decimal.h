// Decimal digits of numbers, as spreadsheets show them.
#pragma once
#include <string>

namespace cli {

/// Digits before and behind the decimal point of a number without its sign; no leading zeros.
struct Decimal {
    std::string whole;  // empty for 0
    std::string fraction;
};

/// The number's size, rounded to so many digits behind the point. A number has 15 digits and no more; what lies in the
/// middle is rounded away from zero, as on paper. The number is finite.
Decimal roundedDecimal(double value, int places);

/// The number's size times ten to the power of -`exponent`, rounded likewise.
Decimal scaledDecimal(double value, int exponent, int places);

/// The power of ten of the first of its 15 digits; 0 for 0.
int decimalExponent(double value);

/// As under the code "General": at most 11 characters besides the sign, in powers of ten where that takes more.
std::string generalText(double value);

}  // namespace cli
