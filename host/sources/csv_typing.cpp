#include "host/sources/csv_typing.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "host/sources/csv_table.h"
#include "host/text/c_locale.h"

namespace quillet {
namespace {

constexpr std::size_t shortInteger = 10;            // characters, counting the sign
constexpr double integersEnd = 9007199254740992.0;  // 2^53

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// strtod over the whole field; false when it reports a range error or leaves something behind.
bool wholeNumber(const char* field, std::size_t length, double& value) {
    errno = 0;
    char* end;
    value = strtodC(field, &end);
    return errno == 0 && end == field + length;
}

enum class Outcome { number, noNumber, unknown };

// Short numbers are read by whole words: eight digits at once, the first in the lowest byte.

constexpr std::size_t shortNumber = 16;  // characters without the sign
constexpr std::size_t exactDigits = 15;  // so many digits fit a double without loss
constexpr double powersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

std::uint64_t wordAt(const char* text) {
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// How many of eight characters are digits, from the first on.
std::size_t leadingDigits(std::uint64_t word) {
    const std::uint64_t offset = word ^ 0x3030303030303030;  // 0 to 9 for a digit
    const std::uint64_t others = (((offset & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | offset) & 0x8080808080808080;
    return static_cast<std::size_t>(std::countr_zero(others)) / 8;
}

/// The number that the first `count` characters make, all digits; 1 to 8 of them.
std::uint64_t upToEight(std::uint64_t word, std::size_t count) {
    word <<= 64 - 8 * count;  // zeros in front
    word = (word & 0x0F0F0F0F0F0F0F0F) * 2561 >> 8;
    word = (word & 0x00FF00FF00FF00FF) * 6553601 >> 16;
    return (word & 0x0000FFFF0000FFFF) * 42949672960001 >> 32;
}

/// The same of up to 16 characters; 0 of none.
std::uint64_t upToSixteen(const char* text, std::size_t count) {
    if (count == 0) return 0;
    if (count <= 8) return upToEight(wordAt(text), count);
    constexpr std::uint64_t powers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    return upToEight(wordAt(text), 8) * powers[count - 8] + upToEight(wordAt(text + 8), count - 8);
}

std::size_t digitsAt(const char* text) {
    const std::size_t first = leadingDigits(wordAt(text));
    return first < 8 ? first : 8 + leadingDigits(wordAt(text + 8));
}

/// Up to 16 characters: an integer, or digits around a point. With 15 digits both the number that they make and the
/// power of ten are exact doubles, so that their quotient is rounded once, as every correct conversion rounds it. What
/// stands behind the text can be read for `typingSlack` bytes, and does not count.
Outcome shortDecimal(const char* text, std::size_t length, bool negative, char decimalSep, double& value) {
    const std::size_t whole = std::min(digitsAt(text), length);
    if (whole == length) {
        if (length > exactDigits) return Outcome::unknown;
        const auto sum = static_cast<std::int64_t>(upToSixteen(text, whole));
        value = static_cast<double>(negative ? -sum : sum);  // of integers there is one zero
        return Outcome::number;
    }
    const char other = text[whole];
    if (other != '.' && other != decimalSep) {
        const bool goesOn = other == 'e' || other == 'E' || other == 'x' || other == 'X';
        return goesOn ? Outcome::unknown : Outcome::noNumber;
    }
    const std::size_t decimals = length - whole - 1;
    if (whole + decimals == 0 || whole + decimals > exactDigits || digitsAt(text + whole + 1) < decimals) {
        return Outcome::unknown;
    }
    // Exact as well: products and sums of whole numbers below 10^15.
    const double digits = static_cast<double>(upToSixteen(text, whole)) * powersOfTen[decimals] +
                          static_cast<double>(upToSixteen(text + whole + 1, decimals));
    value = (negative ? -digits : digits) / powersOfTen[decimals];
    return Outcome::number;
}

/// Digits, point and exponent, for which std::from_chars says what strtod would. Leaves to strtod: hexadecimal forms,
/// and values near or beyond the ends of the range, where only strtod says whether a range error counts.
Outcome plainNumber(const char* digits, const char* end, double& value) {
    const auto [behind, error] = std::from_chars(digits, end, value, std::chars_format::general);
    if (error != std::errc{}) return Outcome::unknown;
    if (behind != end) return *behind == 'x' || *behind == 'X' ? Outcome::unknown : Outcome::noNumber;
    if (value != 0 && value < 2 * std::numeric_limits<double>::min()) return Outcome::unknown;
    if (value == 0 && std::memchr(digits, 'e', static_cast<std::size_t>(end - digits))) return Outcome::unknown;
    if (value == 0 && end - digits > 300) return Outcome::unknown;
    return Outcome::number;
}

/// Digits only, after an optional sign.
bool integerField(char* field, std::size_t length, std::size_t signs, double& value) {
    if (length <= shortInteger) {
        long long sum = 0;
        for (std::size_t i = signs; i < length; ++i) sum = sum * 10 + (field[i] - '0');
        value = static_cast<double>(field[0] == '-' ? -sum : sum);
        return true;
    }
    field[length] = '\0';
    return wholeNumber(field, length, value) && value > -integersEnd && value < integersEnd;
}

bool realField(char* field, std::size_t length, std::size_t signs, char* firstOther, char decimalSep, double& value) {
    const bool foreignPoint = *firstOther == decimalSep && decimalSep != '.';
    if (foreignPoint) *firstOther = '.';
    field[length] = '\0';
    const Outcome outcome = plainNumber(field + signs, field + length, value);
    if (outcome == Outcome::number && field[0] == '-') value = -value;
    const bool isNumber = outcome == Outcome::unknown ? wholeNumber(field, length, value) : outcome == Outcome::number;
    if (foreignPoint) *firstOther = decimalSep;
    return isNumber;
}

bool numberField(char* field, std::size_t length, std::size_t slack, char decimalSep, double& value) {
    const std::size_t signs = field[0] == '+' || field[0] == '-' ? 1 : 0;
    if (signs == length) return false;
    const char first = field[signs];
    if (!isDigit(first) && first != decimalSep) return false;
    if (first == '0' && signs + 1 < length && isDigit(field[signs + 1])) return false;
    if (slack >= typingSlack && length - signs <= shortNumber) {
        const Outcome outcome = shortDecimal(field + signs, length - signs, field[0] == '-', decimalSep, value);
        if (outcome != Outcome::unknown) return outcome == Outcome::number;
    }
    std::size_t digitsEnd = signs;
    while (digitsEnd < length && isDigit(field[digitsEnd])) ++digitsEnd;
    if (digitsEnd == length) return integerField(field, length, signs, value);
    return realField(field, length, signs, field + digitsEnd, decimalSep, value);
}

bool equals(const char* field, std::size_t length, const char* text) {
    return field[0] == text[0] && std::strncmp(field, text, length) == 0 && text[length] == '\0';
}

}  // namespace

CsvField typeCsvField(char* field, std::size_t length, std::size_t slack, const CsvTable& table) {
    CsvField typed{CsvFieldKind::number, 0, 0};
    if (numberField(field, length, slack, static_cast<char>(table.decimalSep), typed.number)) return typed;
    if (equals(field, length, table.trueText)) return {CsvFieldKind::boolean, 0, 1};
    if (equals(field, length, table.falseText)) return {CsvFieldKind::boolean, 0, 0};
    return {CsvFieldKind::text, 0, 0};
}

}  // namespace quillet
