#include <algorithm>
#include <charconv>
#include <cmath>

#include "cli/formats/decimal.h"
#include "cli/formats/show_number.h"

namespace cli {
namespace {

struct Ratio {
    long long above = 0, below = 1;
};

/// The nearest ratio whose denominator does not exceed `largest`, by continued fractions.
Ratio nearestRatio(double value, long long largest) {
    constexpr double mostPart = 1e13;  // times a denominator of five digits it is an integer
    if (value > mostPart) return {std::llround(value), 1};
    long long above0 = 0, below0 = 1, above1 = 1, below1 = 0;
    double rest = value;
    for (int step = 0; step < 40; ++step) {
        const double whole = std::floor(rest);
        if (whole > mostPart) break;
        const auto part = static_cast<long long>(whole);
        const long long below2 = part * below1 + below0;
        if (below2 > largest) {
            // The largest step that still fits may be nearer than the last whole one.
            const long long fit = below1 == 0 ? 0 : (largest - below0) / below1;
            const Ratio between{fit * above1 + above0, fit * below1 + below0};
            const auto off = [value](const Ratio& r) {
                return std::fabs(value - static_cast<double>(r.above) / static_cast<double>(r.below));
            };
            if (between.below > 0 && off(between) < off({above1, below1})) return between;
            break;
        }
        const long long above2 = part * above1 + above0;
        above0 = above1, below0 = below1, above1 = above2, below1 = below2;
        if (rest - whole < 1e-12) break;
        rest = 1 / (rest - whole);
    }
    return {above1, below1};
}

std::string padded(std::string text, int width, bool left) {
    const int missing = width - static_cast<int>(text.size());
    if (missing > 0) text.insert(left ? 0 : text.size(), static_cast<std::size_t>(missing), ' ');
    return text;
}

/// "# ?/?" taken apart: places of the whole number, then of both sides of the slash.
struct Shape {
    int whole = 0, above = 0, below = 0;
    long long fixed = 0;  // a denominator that the code gives
    std::size_t firstAbove = 0, last = 0;
};

Shape shapeOf(const FormatSection& section) {
    const auto& pieces = section.pieces;
    Shape found;
    std::size_t slash = 0;
    while (slash < pieces.size() && pieces[slash].part != Part::slash) ++slash;
    found.firstAbove = slash;
    while (found.firstAbove > 0 && pieces[found.firstAbove - 1].part == Part::digit) --found.firstAbove, ++found.above;
    for (std::size_t i = 0; i < found.firstAbove; ++i) found.whole += pieces[i].part == Part::digit;
    found.last = slash;
    for (std::size_t i = slash + 1; i < pieces.size() && pieces[i].part == Part::digit; ++i) {
        ++found.below;
        found.last = i;
    }
    if (found.below == 0 && slash + 1 < pieces.size() && pieces[slash + 1].part == Part::literal) {
        const std::string& text = pieces[slash + 1].text;
        std::from_chars(text.data(), text.data() + text.size(), found.fixed);
        for (std::size_t i = slash + 2; i < pieces.size() && pieces[i].part == Part::digit && found.fixed > 0; ++i) {
            if (found.fixed < 100000) found.fixed *= 10;  // the noughts of 10, 100
            found.last = i;
        }
        found.last = std::max(found.last, slash + 1);
    }
    return found;
}

}  // namespace

std::string showFraction(const FormatSection& section, double value) {
    const Shape shape = shapeOf(section);
    value = std::fabs(value);
    if (value > 1e15) return generalText(value);
    double whole = shape.whole > 0 ? std::floor(value) : 0;
    const double rest = value - whole;
    Ratio ratio;
    if (shape.fixed > 0) {
        if (rest * static_cast<double>(shape.fixed) > 1e15) return generalText(value);
        ratio = {std::llround(rest * static_cast<double>(shape.fixed)), shape.fixed};
    } else {
        long long largest = 9;
        for (int i = 1; i < std::min(shape.below, 5); ++i) largest = largest * 10 + 9;
        ratio = nearestRatio(rest, largest);
    }
    if (shape.whole > 0 && ratio.above == ratio.below) {
        ++whole;
        ratio.above = 0;
    }
    const auto& pieces = section.pieces;
    std::string out;
    bool wholeGiven = false;
    for (std::size_t i = 0; i < shape.firstAbove; ++i) {
        if (pieces[i].part != Part::digit) {
            out += pieces[i].text;
        } else if (!wholeGiven) {
            wholeGiven = true;
            if (whole > 0 || pieces[i].letter == '0' || ratio.above == 0) {
                const std::string digits = roundedDecimal(whole, 0).whole;
                out += digits.empty() ? "0" : digits;
            }
        }
    }
    const std::string below = std::to_string(ratio.below);
    if (ratio.above == 0 && shape.whole > 0) {  // the place of the fraction stays, empty
        out.append(
            static_cast<std::size_t>(shape.above + 1 + std::max<int>(shape.below, static_cast<int>(below.size()))),
            ' ');
    } else {
        out += padded(std::to_string(ratio.above), shape.above, true) + '/' + padded(below, shape.below, false);
    }
    for (std::size_t i = shape.last + 1; i < pieces.size(); ++i) out += pieces[i].text;
    return out;
}

}  // namespace cli
