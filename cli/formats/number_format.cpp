#include "cli/formats/number_format.h"

#include <algorithm>
#include <cmath>

#include "cli/formats/decimal.h"
#include "cli/formats/show_date.h"
#include "cli/formats/show_number.h"

namespace cli {
namespace {

constexpr const char* unshowable = "########";

}  // namespace

NumberFormat::Choice NumberFormat::choose(double value) const {
    std::size_t count = _sections.size();
    if (count > 3 || (count > 1 && _sections.back().has(Part::text))) --count;  // the last one is for texts
    const bool conditions = std::any_of(_sections.begin(), _sections.end(), [](const auto& s) { return s.condition; });
    if (!conditions) {
        if (count == 1 || value > 0 || (value == 0 && count < 3)) return {&_sections[0], true};
        return value < 0 ? Choice{&_sections[1], false} : Choice{&_sections[2], true};
    }
    for (std::size_t i = 0; i < count; ++i) {
        const auto& condition = _sections[i].condition;
        if (condition && condition->holds(value)) return {&_sections[i], !condition->onlyNegative()};
        // Without a condition of its own the second of three is for what lies below zero.
        if (!condition && (i + 1 == count || (i == 1 && value < 0))) return {&_sections[i], true};
    }
    return {nullptr, true};
}

std::string NumberFormat::show(double value, bool date1904) const {
    if (!std::isfinite(value)) return std::isnan(value) ? "NaN" : value < 0 ? "-INF" : "INF";
    const auto [section, signShown] = choose(value);
    if (section == nullptr) return unshowable;
    if (section->isDate()) return showDate(*section, value, date1904).value_or(unshowable);
    const bool negative = value < 0 && signShown;
    if (section->has(Part::text)) return generalText(value);
    const bool fraction = section->has(Part::slash) && section->has(Part::digit);
    const std::string text = fraction ? showFraction(*section, value) : showNumber(*section, std::fabs(value));
    return (negative && !section->pieces.empty() ? "-" : "") + text;
}

std::string NumberFormat::showText(std::string_view text) const {
    const FormatSection& last = _sections.back();
    if (_sections.size() < 4 && !last.has(Part::text)) return std::string(text);
    std::string out;
    for (const FormatPiece& piece : last.pieces) {
        out += piece.part == Part::text ? std::string_view(text) : std::string_view(piece.text);
    }
    return out;
}

}  // namespace cli
