// Values from text and back. Nothing here looks at the locale of the process.

#include "bindery/values/value_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "bindery/values/binary.h"
#include "bindery/values/datetime.h"
#include "bindery/values/error.h"
#include "bindery/values/storage.h"
#include "bindery/values/value_spec.h"

namespace bindery {

namespace {

constexpr int floatDigits = 7;
constexpr int doubleDigits = 14;
constexpr int maxPlaces = 15;

template <class Int>
bool parseInteger(std::string_view text, Int& to, long long least = std::numeric_limits<long long>::min(),
                  long long most = std::numeric_limits<long long>::max()) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return false;
    }
    if (text == "-0") text = "0";
    const auto result = std::from_chars(text.data(), text.data() + text.size(), to);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || text.empty()) return false;
    if constexpr (std::is_signed_v<Int>) return to >= least && to <= most;
    return true;
}

template <class T>
T& as(void* value) {
    return *static_cast<T*>(value);
}
template <class T>
const T& as(const void* value) {
    return *static_cast<const T*>(value);
}

template <class Int>
void appendInteger(std::string& out, Int value) {
    char buffer[24];
    out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

bool parseBoolean(std::string_view text, bool onOff, bool& to) {
    if (text == "true" || text == "1" || (onOff && text == "on")) {
        to = true;
    } else if (text == "false" || text == "0" || (onOff && text == "off")) {
        to = false;
    } else {
        return false;
    }
    return true;
}

/// Whether a number in proper form is smaller than one in size.
bool isBelowOne(std::string_view text) {
    const std::size_t e = text.find_first_of("eE");
    const std::string_view digits = text.substr(0, e);
    long long exponent = 0;
    if (e != std::string_view::npos) {
        std::string_view power = text.substr(e + 1);
        if (power.starts_with('+')) power.remove_prefix(1);
        const auto result = std::from_chars(power.data(), power.data() + power.size(), exponent);
        if (result.ec == std::errc::result_out_of_range) return power.starts_with('-');
    }
    const auto point = static_cast<long long>(std::min(digits.find('.'), digits.size()));
    const auto first = static_cast<long long>(std::min(digits.find_first_of("123456789"), digits.size()));
    return (first < point ? point - first - 1 : point - first) + exponent < 0;
}

DateKind dateKind(Atomic atomic) {
    return static_cast<DateKind>(static_cast<int>(atomic) - static_cast<int>(Atomic::dateTime));
}

bool store(const ValueSpec& spec, std::string_view text, void* value) {
    switch (spec.atomic) {
        case Atomic::narrow:
            as<std::string>(value) = text;
            repairUtf8(as<std::string>(value));
            return true;
        case Atomic::wide:
            as<std::wstring>(value).clear();
            appendWide(as<std::wstring>(value), text);
            return true;
        case Atomic::boolean:
            return parseBoolean(text, false, as<bool>(value));
        case Atomic::onOff:
            return parseBoolean(text, true, as<bool>(value));
        case Atomic::int8:
            return parseInteger(text, as<int>(value), -128, 127);
        case Atomic::int16:
            return parseInteger(text, as<int>(value), -32768, 32767);
        case Atomic::int32:
            return parseInteger(text, as<int>(value));
        case Atomic::int64:
            return parseInteger(text, as<long long>(value));
        case Atomic::uint8:
            return parseInteger(text, as<unsigned char>(value));
        case Atomic::uint16:
            return parseInteger(text, as<unsigned short>(value));
        case Atomic::uint32:
            return parseInteger(text, as<unsigned int>(value));
        case Atomic::uint64:
            return parseInteger(text, as<unsigned long long>(value));
        case Atomic::float32:
        case Atomic::float64:
            return parseReal(text, as<double>(value));
        case Atomic::decimal:
            return text.find_first_not_of("+-.0123456789") == std::string_view::npos &&
                   parseReal(text, as<double>(value));
        case Atomic::hex:
            return as<c_binary>(value).fromHex(text);
        case Atomic::base64:
            return as<c_binary>(value).fromBase64(text);
        case Atomic::empty:
            return text.empty();
        default:
            return c_datetime::parse(text, dateKind(spec.atomic), as<c_datetime>(value));
    }
}

}  // namespace

bool parseReal(std::string_view text, double& to) {
    if (text == "INF" || text == "+INF") {
        to = std::numeric_limits<double>::infinity();
    } else if (text == "-INF") {
        to = -std::numeric_limits<double>::infinity();
    } else if (text == "NaN") {
        to = std::numeric_limits<double>::quiet_NaN();
    } else {
        if (text.starts_with('+')) {
            text.remove_prefix(1);
            if (text.starts_with('-')) return false;
        }
        if (text.empty() || text.find_first_not_of("+-.0123456789eE") != std::string_view::npos) return false;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), to);
        if (result.ptr != text.data() + text.size()) return false;
        if (result.ec == std::errc::result_out_of_range) {
            to = isBelowOne(text) ? 0 : std::numeric_limits<double>::infinity();
            if (text.starts_with('-')) to = -to;
        } else if (result.ec != std::errc()) {
            return false;
        }
    }
    return true;
}

void appendReal(std::string& out, double value, int digits) {
    if (std::isnan(value)) {
        out += "NaN";
    } else if (std::isinf(value)) {
        out += value < 0 ? "-INF" : "INF";
    } else {
        char buffer[40];
        out.append(buffer,
                   std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits).ptr);
    }
}

bool parses(const ValueSpec& spec, std::string_view text) {
    if (spec.storage == Storage::string || spec.storage == Storage::wstring) return true;
    return visitStorage(spec.storage, [&](auto type) {
        typename decltype(type)::type value{};
        return store(spec, text, &value);
    });
}

int storeValue(const ValueSpec& spec, std::string_view text, void* value) {
    return store(spec, text, value) ? 0 : bad_value;
}

void appendValue(const ValueSpec& spec, const void* value, std::string& out) {
    switch (spec.storage) {
        case Storage::string:
            out += as<std::string>(value);
            break;
        case Storage::wstring:
            appendUtf8(out, as<std::wstring>(value));
            break;
        case Storage::boolean:
            out += as<bool>(value) ? "true" : "false";
            break;
        case Storage::integer:
            appendInteger(out, as<int>(value));
            break;
        case Storage::unsignedInteger:
            appendInteger(out, as<unsigned int>(value));
            break;
        case Storage::unsignedShort:
            appendInteger(out, as<unsigned short>(value));
            break;
        case Storage::unsignedChar:
            appendInteger(out, unsigned{as<unsigned char>(value)});
            break;
        case Storage::longInteger:
            appendInteger(out, as<long long>(value));
            break;
        case Storage::unsignedLong:
            appendInteger(out, as<unsigned long long>(value));
            break;
        case Storage::real: {
            const double number = as<double>(value);
            const int digits = spec.facets != nullptr ? spec.facets->fractionDigits : anyDigits;
            if (spec.atomic != Atomic::decimal || digits == anyDigits || !std::isfinite(number)) {
                appendReal(out, number, spec.atomic == Atomic::float32 ? floatDigits : doubleDigits);
                break;
            }
            char buffer[400];  // the longest number has 309 digits before its point
            const int places = std::min<int>(digits, maxPlaces);
            out.append(buffer,
                       std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::fixed, places).ptr);
            break;
        }
        case Storage::datetime:
            out += as<c_datetime>(value).text();
            break;
        case Storage::binary:
            out += spec.atomic == Atomic::hex ? as<c_binary>(value).hex() : as<c_binary>(value).base64();
            break;
        case Storage::empty:
            break;
    }
}

}  // namespace bindery
