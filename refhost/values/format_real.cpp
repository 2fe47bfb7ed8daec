#include "refhost/values/format_real.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "refhost/values/c_numbers.h"

namespace refhost {
namespace {

constexpr int maxFastPrecision = 40;
constexpr int maxFastText = maxFastPrecision + 24;  // sign, point, "0.000" in front, exponent

/// The precision of a plain "%g" or "%.Ng", -1 for any other format.
int generalPrecision(const char* format) {
    if (*format++ != '%') return -1;
    int precision = 6;
    if (*format == '.') {
        ++format;
        precision = 0;
        while (*format >= '0' && *format <= '9' && precision <= maxFastPrecision)
            precision = precision * 10 + (*format++ - '0');
    }
    if (format[0] != 'g' || format[1] != '\0' || precision > maxFastPrecision) return -1;
    return std::max(precision, 1);
}

bool holdsOneDouble(const char* format) {
    int conversions = 0;
    for (const char* p = format; *p; ++p) {
        if (*p != '%') continue;
        if (*++p == '%') continue;
        p += std::strspn(p, "-+ #0");
        for (int digits = 0; *p >= '0' && *p <= '9'; ++p)
            if (++digits > 4) return false;
        if (*p == '.') {
            ++p;
            for (int digits = 0; *p >= '0' && *p <= '9'; ++p)
                if (++digits > 4) return false;
        }
        if (*p == 'l') ++p;
        if (*p == '\0' || !std::strchr("eEfFgGaA", *p)) return false;
        ++conversions;
    }
    return conversions == 1;
}

/// "%.{precision}g" of a finite number. When the shortest text has no more digits than asked for, and these are at most
/// 15, it holds the same digits: a double is closer to its shortest decimal than half a unit of the 15th digit.
int printGeneral(char* out, double value, int precision) {
    if (value == std::trunc(value) && std::fabs(value) < 1e15 && !(value == 0 && std::signbit(value))) {
        const auto whole = static_cast<std::int64_t>(value);
        char* end = std::to_chars(out, out + maxFastText, whole).ptr;
        if (end - out - (whole < 0) <= precision) return static_cast<int>(end - out);
    }
    if (precision <= 15 && std::isnormal(value)) {  // below the normal numbers digits are fewer
        char text[40];
        char* end = std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
        char* mantissa = text + (*text == '-');
        char* e = std::find(mantissa, end, 'e');
        const int digits = static_cast<int>(e - mantissa) - (e - mantissa > 1);
        int exponent = 0;
        std::from_chars(e + 1 + (e[1] == '+'), end, exponent);
        if (digits <= precision) {
            if (exponent < -4 || exponent >= precision) {
                std::memcpy(out, text, static_cast<std::size_t>(end - text));
                return static_cast<int>(end - text);
            }
            char* to = out;
            if (*text == '-') *to++ = '-';
            if (digits > 1) mantissa[1] = mantissa[0], ++mantissa;  // the digits without their point
            if (exponent < 0) {
                *to++ = '0';
                *to++ = '.';
                to = std::fill_n(to, -exponent - 1, '0');
                to = std::copy_n(mantissa, digits, to);
            } else {
                const int whole = std::min(digits, exponent + 1);
                to = std::copy_n(mantissa, whole, to);
                to = std::fill_n(to, exponent + 1 - whole, '0');
                if (digits > whole) {
                    *to++ = '.';
                    to = std::copy_n(mantissa + whole, digits - whole, to);
                }
            }
            return static_cast<int>(to - out);
        }
    }
    return static_cast<int>(std::to_chars(out, out + maxFastText, value, std::chars_format::general, precision).ptr -
                            out);
}

}  // namespace

int formatReal(char* buffer, int size, const char* format, double value) {
    const int precision = std::isfinite(value) ? generalPrecision(format) : -1;
    if (precision < 0) {
        if (!holdsOneDouble(format)) return -1;
        const CNumbers guard;
        return std::snprintf(buffer, static_cast<std::size_t>(std::max(size, 0)), format, value);
    }
    char text[maxFastText];
    const int length = printGeneral(text, value, precision);
    if (size > 0) {
        const auto copied = static_cast<std::size_t>(std::min(length, size - 1));
        std::memcpy(buffer, text, copied);
        buffer[copied] = '\0';
    }
    return length;
}

int shortestReal(char (&buffer)[32], double value) {
    if (std::isnan(value)) return static_cast<int>(std::strlen(std::strcpy(buffer, "nan")));
    char* const last = buffer + sizeof buffer - 1;
    const bool plainWhole = value == std::trunc(value) && std::fabs(value) < 1e16;  // 3000000000 rather than 3e+09
    char* end =
        (plainWhole ? std::to_chars(buffer, last, value, std::chars_format::fixed) : std::to_chars(buffer, last, value))
            .ptr;
    *end = '\0';
    return static_cast<int>(end - buffer);
}

}  // namespace refhost
