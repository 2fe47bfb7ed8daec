#include "cli/formats/show_number.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "cli/formats/decimal.h"

namespace cli {
namespace {

/// Where the digits of a section go.
struct Layout {
    int whole = 0, fraction = 0, exponent = 0;  // places
    int thousands = 0;                          // commas behind the last place: each leaves three digits out
    int percents = 0;
    bool grouped = false, hasPoint = false, hasExponent = false;
};

Layout layoutOf(const FormatSection& section) {
    Layout found;
    int commas = 0;
    for (const FormatPiece& piece : section.pieces) {
        switch (piece.part) {
            case Part::digit:
                if (commas > 0 && found.whole > 0 && !found.hasPoint) found.grouped = true;
                commas = 0;
                ++(found.hasExponent ? found.exponent : found.hasPoint ? found.fraction : found.whole);
                break;
            case Part::comma:
                ++commas;
                break;
            case Part::point:
                found.thousands += commas;
                commas = 0;
                found.hasPoint = true;
                break;
            case Part::exponent:
                found.hasExponent = true;
                break;
            case Part::percent:
                ++found.percents;
                break;
            default:
                break;
        }
    }
    found.thousands += commas;
    if (found.whole + found.fraction == 0) found.thousands = 0;
    return found;
}

/// Gives digits to the places of a row of them, from the left; the first takes what is too many.
class Row {
public:
    Row(std::string digits, int places, bool grouped)
        : _digits(std::move(digits)), _places(places), _grouped(grouped) {}

    void next(char letter, std::string& out) {
        const int left = _places - _given++;  // places from this one to the end
        int power = left - 1;
        if (_given == 1) {
            for (int extra = static_cast<int>(_digits.size()) - 1; extra > power; --extra) digit(at(extra), extra, out);
        }
        if (power < static_cast<int>(_digits.size())) {
            digit(at(power), power, out);
        } else if (letter == '0') {
            digit('0', power, out);
        } else if (letter == '?') {
            out += ' ';
            if (_grouped && power > 0 && power % 3 == 0) out += ' ';
        }
    }
    /// What no place was there for.
    void all(std::string& out) const { out += _digits; }

private:
    char at(int power) const { return _digits[_digits.size() - 1 - static_cast<std::size_t>(power)]; }
    void digit(char c, int power, std::string& out) const {
        out += c;
        if (_grouped && power > 0 && power % 3 == 0) out += ',';
    }

    std::string _digits;
    int _places, _given = 0;
    bool _grouped;
};

/// Digits and the power of ten of a number in scientific form. With several places before the point the power is a
/// multiple of their number.
Decimal mantissaOf(double value, const Layout& layout, int& exponent) {
    const int step = std::max(layout.whole, 1);
    const auto aligned = [step](int e) { return e - ((e % step) + step) % step; };
    exponent = value == 0 ? 0 : aligned(decimalExponent(value));
    Decimal found = scaledDecimal(value, exponent, layout.fraction);
    if (static_cast<int>(found.whole.size()) > step) {  // 9.99 became 10.0
        exponent += step;
        found = scaledDecimal(value, exponent, layout.fraction);
    }
    return found;
}

}  // namespace

std::string showNumber(const FormatSection& section, double value) {
    const Layout layout = layoutOf(section);
    int exponent = 0;
    // Moving the point keeps the digits as they are, which a multiplication might not.
    const Decimal number = layout.hasExponent
                               ? mantissaOf(value, layout, exponent)
                               : scaledDecimal(value, 3 * layout.thousands - 2 * layout.percents, layout.fraction);
    Row whole(number.whole, layout.whole, layout.grouped);
    Row power(std::to_string(std::abs(exponent)), layout.exponent, false);
    const std::size_t lastDigit = number.fraction.find_last_not_of('0');
    const std::size_t shown = lastDigit == std::string::npos ? 0 : lastDigit + 1;
    std::size_t place = 0;
    bool behindPoint = false, inExponent = false;
    const char* sign = "";
    std::string out;
    for (const FormatPiece& piece : section.pieces) {
        switch (piece.part) {
            case Part::digit:
                if (inExponent) {
                    out += std::exchange(sign, "");  // of the power: right before its digits
                    power.next(piece.letter, out);
                } else if (!behindPoint) {
                    whole.next(piece.letter, out);
                } else {
                    const std::size_t at = place++;
                    if (at < shown || piece.letter == '0') {
                        out += number.fraction[at];
                    } else if (piece.letter == '?') {
                        out += ' ';
                    }
                }
                break;
            case Part::point:
                if (!behindPoint && layout.whole == 0) whole.all(out);
                behindPoint = true;
                out += '.';
                break;
            case Part::exponent:
                inExponent = true;
                out += piece.text;
                if (exponent < 0 || piece.letter == '+') sign = exponent < 0 ? "-" : "+";
                break;
            case Part::percent:
                out += '%';
                break;
            case Part::slash:
                out += '/';
                break;
            case Part::general:
                out += generalText(std::fabs(value));
                break;
            default:
                out += piece.text;
                break;
        }
    }
    return out;
}

}  // namespace cli
