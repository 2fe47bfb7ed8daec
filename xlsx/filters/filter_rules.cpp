#include "xlsx/filters/filter_rules.h"

#include <algorithm>
#include <cmath>

#include "bindery/values/value_spec.h"
#include "engine/api/enums.h"
#include "engine/facts/date.h"
#include "xlsx/cells/cell_values.h"

namespace vellum::xlsx {
namespace {

std::optional<double> numberIn(std::wstring_view text) {
    bool whole = false;
    const double number = numberOf(bindery::toUtf8(text), &whole);
    return whole && !text.empty() && !std::isnan(number) ? std::optional<double>(number) : std::nullopt;
}

template <class T>
bool compares(int op, const T& a, const T& b) {
    switch (op) {
        case filterGreaterThan:
            return a > b;
        case filterGreaterThanOrEqual:
            return a >= b;
        case filterLessThan:
            return a < b;
        case filterLessThanOrEqual:
            return a <= b;
        case filterNotEqual:
            return a != b;
        default:
            return a == b;
    }
}

}  // namespace

/// Goes back to the last "*" only, so that the time is bounded by the product of both lengths.
bool matchesPattern(std::wstring_view text, std::wstring_view pattern) {
    std::size_t t = 0, p = 0, starAt = std::wstring_view::npos, retryAt = 0;
    const auto escapes = [&](std::size_t at) {
        return pattern[at] == L'~' && at + 1 < pattern.size() &&
               (pattern[at + 1] == L'*' || pattern[at + 1] == L'?' || pattern[at + 1] == L'~');
    };
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            starAt = p++;
            retryAt = t;
            continue;
        }
        if (p < pattern.size()) {
            const bool escaped = escapes(p);
            const wchar_t wanted = pattern[p + (escaped ? 1 : 0)];
            if ((!escaped && wanted == L'?') || wanted == text[t]) {
                p += escaped ? 2 : 1;
                ++t;
                continue;
            }
        }
        if (starAt == std::wstring_view::npos) return false;
        p = starAt + 1;
        t = ++retryAt;
    }
    while (p < pattern.size() && pattern[p] == L'*') ++p;
    return p == pattern.size();
}

CustomRule::CustomRule(int op, std::wstring value)
    : _op(op),
      _value(std::move(value)),
      _number(numberIn(_value)),
      _isPattern(_value.find_first_of(L"*?~") != std::wstring::npos),
      _isBlank(_value == L" ") {}

std::optional<bool> CustomRule::passesNumber(double number) const {
    if (!_number) return {};
    return compares(_op, number, *_number);
}

bool CustomRule::equals(std::wstring_view text) const {
    if (_isBlank && text.empty()) return true;
    return _isPattern ? matchesPattern(text, _value) : text == _value;
}

bool CustomRule::passesText(std::wstring_view text) const {
    if (_op == filterEqual) return equals(text);
    if (_op == filterNotEqual) return !equals(text);
    return compares(_op, text, _isBlank ? std::wstring_view() : std::wstring_view(_value));
}

void ValueList::add(std::wstring value) {
    if (const auto number = numberIn(value)) _numbers.push_back(*number);
    _texts.insert(std::move(value));
}

void ValueList::finish() {
    std::sort(_numbers.begin(), _numbers.end());
}

bool ValueList::passesText(std::wstring_view text) const {
    return (text.empty() && _blank) || _texts.contains(text);
}

/// By value, or by its text of 16 digits. That text is made only for numbers so close to a value that it may be the
/// same.
bool ValueList::passesNumber(double number) const {
    constexpr double closeBy = 1e-15;  // half a unit of the 16th digit at most
    const double margin = std::fabs(number) * closeBy;
    const auto near = std::lower_bound(_numbers.begin(), _numbers.end(), number - margin);
    if (near == _numbers.end() || *near > number + margin) return false;
    if (std::binary_search(near, _numbers.end(), number)) return true;
    return _texts.contains(bindery::toWide(shortNumberText(number)));
}

bool ValueList::passesDate(double number, bool dates1904) const {
    DateTime date;
    if (!unpackDate(number, dates1904, date)) return false;
    const int fields[] = {date.year, date.month, date.day, date.hour, date.min, date.sec};
    return std::any_of(_dates.begin(), _dates.end(), [&](const DateGroup& group) {
        return std::equal(group.fields, group.fields + group.precision, fields);
    });
}

}  // namespace vellum::xlsx
