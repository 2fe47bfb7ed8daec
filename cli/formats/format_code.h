// Codes of number formats, taken apart.
//
//     #,##0.00;[Red]-#,##0.00;"none";@      four sections: above zero, below it, zero, texts
//     [>=1000]0.0,"k";0                     the first section whose condition holds
//     yyyy-mm-dd hh:mm                      a date: "m" behind hours or before seconds means minutes
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

enum class Part {
    literal,  // `text` as it stands
    digit,    // `letter` is 0, # or ?
    point,    // decimal point
    comma,    // groups of three, or thousands left out
    percent,
    exponent,  // `letter` is + or -, `text` the E as it is written
    slash,     // of a fraction
    text,      // @
    general,   // the word General
    year,
    month,
    day,
    hour,
    minute,
    second,
    secondFraction,  // `count` digits, with the point before them
    halfDay,         // AM/PM or A/P, in `text`
    elapsed,         // hours, minutes or seconds in all, by `letter`
};

struct FormatPiece {
    Part part = Part::literal;
    std::string text;
    char letter = 0;
    int count = 0;  // letters of a run
};

struct FormatCondition {
    std::string sign;  // <, <=, >, >=, =, <>
    double limit = 0;

    [[nodiscard]] bool holds(double value) const;
    /// Whether only numbers below zero pass, which then show without their sign.
    [[nodiscard]] bool onlyNegative() const;
};

struct FormatSection {
    std::vector<FormatPiece> pieces;
    std::optional<FormatCondition> condition;

    [[nodiscard]] bool has(Part part) const;
    [[nodiscard]] bool isDate() const;
};

/// Bytes of a code. Programs take 255 characters; what is far longer is no code, but would take room by its length.
constexpr std::size_t longestCode = 4096;

/// At least one section, at most four; more are left out. A longer code than the longest counts as "General".
std::vector<FormatSection> readFormatCode(std::string_view code);

}  // namespace cli
