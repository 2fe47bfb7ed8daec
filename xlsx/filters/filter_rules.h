// The rules by which the cells of a column pass a filter.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engine/text/text_hash.h"
#include "xlsx/filters/filter_value.h"

namespace vellum::xlsx {

/// Whether a whole text is like a pattern: "*" stands for any run of characters, "?" for one; behind "~" each of the
/// three stands for itself.
bool matchesPattern(std::wstring_view text, std::wstring_view pattern);

/// One rule of a custom filter. Numbers compare as such with a value that is one, all else as text; patterns are for
/// "equal" and "not equal".
class CustomRule {
public:
    CustomRule(int op, std::wstring value);
    [[nodiscard]] std::optional<bool> passesNumber(double number) const;
    [[nodiscard]] bool passesText(std::wstring_view text) const;

private:
    [[nodiscard]] bool equals(std::wstring_view text) const;

    int _op;
    std::wstring _value;
    std::optional<double> _number;
    bool _isPattern;
    bool _isBlank;  // one blank stands for an empty text, too
};

/// A date down to some precision: year, month, day, hour, minute, second.
struct DateGroup {
    int fields[6] = {};
    int precision = 1;  // how many of them count
};

/// A list of values, of which one has to be the cell's.
class ValueList {
public:
    void allowBlank() { _blank = true; }
    void add(std::wstring value);
    void add(const DateGroup& group) { _dates.push_back(group); }
    /// To be called when all are there.
    void finish();

    [[nodiscard]] bool passesBlank() const { return _blank; }
    [[nodiscard]] bool passesText(std::wstring_view text) const;
    [[nodiscard]] bool passesNumber(double number) const;
    [[nodiscard]] bool hasDates() const { return !_dates.empty(); }
    [[nodiscard]] bool passesDate(double number, bool dates1904) const;

private:
    std::unordered_set<std::wstring, TextHash, std::equal_to<>> _texts;
    std::vector<double> _numbers;  // values that are numbers, sorted
    std::vector<DateGroup> _dates;
    bool _blank = false;
};

}  // namespace vellum::xlsx
