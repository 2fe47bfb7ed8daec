#include "host/sources/csv_typing.h"

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

// Short numbers are read whole: 16 characters, the first in the lowest byte, without a branch on where the point is.

constexpr std::size_t shortNumber = 16;  // characters without the sign
constexpr std::size_t exactDigits = 15;  // so many digits fit a double without loss
constexpr double powersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

__extension__ using Characters = unsigned __int128;

Characters charactersAt(const char* text) {
    Characters sixteen;
    std::memcpy(&sixteen, text, sizeof sixteen);
    return sixteen;
}

/// The first `count` characters, up to 15.
Characters first(std::size_t count) {
    return (Characters{1} << (8 * count)) - 1;
}

/// The highest bit of each of eight characters that is no digit.
std::uint64_t nonDigits(std::uint64_t word) {
    const std::uint64_t offset = word ^ 0x3030303030303030;  // 0 to 9 for a digit
    return (((offset & 0x7F7F7F7F7F7F7F7F) + 0x7676767676767676) | offset) & 0x8080808080808080;
}

std::size_t lowestByte(Characters bits) {
    const auto low = static_cast<std::uint64_t>(bits);
    const auto place = static_cast<std::size_t>(
        low != 0 ? std::countr_zero(low) : 64 + std::countr_zero(static_cast<std::uint64_t>(bits >> 64)));
    return place / 8;
}

/// The number that eight characters make, digits or NUL.
std::uint64_t ofEight(std::uint64_t word) {
    word = (word & 0x0F0F0F0F0F0F0F0F) * 2561 >> 8;
    word = (word & 0x00FF00FF00FF00FF) * 6553601 >> 16;
    return (word & 0x0000FFFF0000FFFF) * 42949672960001 >> 32;
}

/// The number that the first `count` characters make, all digits; 1 to 15 of them.
std::uint64_t numberOf(Characters digits, std::size_t count) {
    digits <<= 8 * (sizeof digits - count);  // NULs in front
    return ofEight(static_cast<std::uint64_t>(digits)) * 100'000'000 +
           ofEight(static_cast<std::uint64_t>(digits >> 64));
}

/// Up to 16 characters: an integer, or digits around a point. With 15 digits both the number that they make and the
/// power of ten are exact doubles, so that their quotient is rounded once, as every correct conversion rounds it. What
/// stands behind the text can be read for `typingSlack` bytes, and does not count.
Outcome shortDecimal(const char* text, std::size_t length, bool negative, char decimalSep, double& value) {
    Characters digits = charactersAt(text);
    Characters others = nonDigits(static_cast<std::uint64_t>(digits)) |
                        Characters{nonDigits(static_cast<std::uint64_t>(digits >> 64))} << 64;
    if (length < shortNumber) others &= first(length);
    if (others == 0) {
        if (length > exactDigits) return Outcome::unknown;
        const auto sum = static_cast<std::int64_t>(numberOf(digits, length));
        value = static_cast<double>(negative ? -sum : sum);  // of integers there is one zero
        return Outcome::number;
    }
    const std::size_t whole = lowestByte(others);
    const char other = text[whole];
    if (other != '.' && other != decimalSep) {
        const bool goesOn = other == 'e' || other == 'E' || other == 'x' || other == 'X';
        return goesOn ? Outcome::unknown : Outcome::noNumber;
    }
    const bool hasMoreOthers = (others & (others - 1)) != 0;
    if (length == 1 || hasMoreOthers) return Outcome::unknown;
    const Characters inFront = first(whole);
    digits = (digits & inFront) | (digits >> 8 & ~inFront);
    const auto all = static_cast<double>(numberOf(digits, length - 1));
    value = (negative ? -all : all) / powersOfTen[length - whole - 1];
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
    double number = 0;
    if (numberField(field, length, slack, static_cast<char>(table.decimalSep), number)) {
        return {CsvFieldKind::number, 0, number};
    }
    if (equals(field, length, table.trueText)) return {CsvFieldKind::boolean, 1, 0};
    if (equals(field, length, table.falseText)) return {CsvFieldKind::boolean, 0, 0};
    return {CsvFieldKind::text, 0, 0};
}

}  // namespace quillet
