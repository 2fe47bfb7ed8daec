#include "host/sources/csv_typing.h"

#include <cerrno>
#include <charconv>
#include <cmath>
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

/// The plain case of wholeNumber: digits, point and exponent. Leaves the rest to strtod: hexadecimal forms, and
/// values near or beyond the ends of the range, where only strtod says whether a range error counts.
bool plainNumber(const char* digits, const char* end, bool negative, double& value) {
    const auto [behind, error] = std::from_chars(digits, end, value, std::chars_format::general);
    if (error != std::errc{} || behind != end) return false;
    if (value != 0 && value < 2 * std::numeric_limits<double>::min()) return false;
    if (value == 0 && std::memchr(digits, 'e', static_cast<std::size_t>(end - digits))) return false;
    if (value == 0 && end - digits > 300) return false;
    if (negative) value = -value;
    return true;
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
    const bool isNumber =
        plainNumber(field + signs, field + length, field[0] == '-', value) || wholeNumber(field, length, value);
    if (foreignPoint) *firstOther = decimalSep;
    return isNumber;
}

bool numberField(char* field, std::size_t length, char decimalSep, double& value) {
    const std::size_t signs = field[0] == '+' || field[0] == '-' ? 1 : 0;
    if (signs == length) return false;
    const char first = field[signs];
    if (!isDigit(first) && first != decimalSep) return false;
    if (first == '0' && signs + 1 < length && isDigit(field[signs + 1])) return false;
    std::size_t digitsEnd = signs;
    while (digitsEnd < length && isDigit(field[digitsEnd])) ++digitsEnd;
    if (digitsEnd == length) return integerField(field, length, signs, value);
    return realField(field, length, signs, field + digitsEnd, decimalSep, value);
}

bool equals(const char* field, std::size_t length, const char* text) {
    return field[0] == text[0] && std::strncmp(field, text, length) == 0 && text[length] == '\0';
}

}  // namespace

CsvField typeCsvField(char* field, std::size_t length, const CsvTable& table) {
    CsvField typed{CsvFieldKind::number, 0, 0};
    if (numberField(field, length, static_cast<char>(table.decimalSep), typed.number)) return typed;
    field[length] = '\0';
    if (equals(field, length, table.trueText)) return {CsvFieldKind::boolean, 0, 1};
    if (equals(field, length, table.falseText)) return {CsvFieldKind::boolean, 0, 0};
    return {CsvFieldKind::text, 0, 0};
}

}  // namespace quillet
