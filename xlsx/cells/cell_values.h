// Values of cells as text, independent of the process's locale.
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vellum {

/// The number at the start of a text, as the C library reads it: 0.0 when there is none. `whole`, when not null, tells
/// whether the text is a number and nothing else.
double numberOf(std::string_view text, bool* whole = nullptr);

/// A number with 17 significant digits, as a cell stores it. Lives in the object.
class NumberText {
public:
    explicit NumberText(double value);
    [[nodiscard]] std::string_view view() const { return {_text, _size}; }

private:
    char _text[32];
    std::size_t _size;
};

/// The number of a text with at most 16 digits, for readers of text.
std::string shortNumberText(double value);

/// A position in decimal; one past all tables when the text is none.
std::size_t positionOf(std::string_view text);

/// The day number of an ISO 8601 date, time, or both; nothing when no part of it can be read or it lies before the
/// first day.
std::optional<double> isoDateOf(std::string_view text, bool date1904);

}  // namespace vellum
