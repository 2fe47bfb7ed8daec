#include "xlsx/fitting/number_sample.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "xlsx/cells/cell_values.h"

namespace vellum::xlsx {
namespace {

enum class Form : unsigned char { general, whole, decimals, fixed, percent, scientific, text };

/// What of a number is shown, how many blanks stand for signs and currency, and whether more stand for the separators
/// of thousands.
struct Sample {
    Form form = Form::general;
    bool grouped = false;
    unsigned char blanks = 0;
    const char* behind = "";
};

constexpr Sample samples[firstFormatWithText] = {
    /* 0*/ {Form::general},
    /* 1*/ {Form::whole},
    /* 2*/ {Form::decimals},
    /* 3*/ {Form::whole, true},
    /* 4*/ {Form::decimals, true},
    /* 5*/ {Form::whole, true, 7},
    /* 6*/ {Form::whole, true, 7},
    /* 7*/ {Form::decimals, true, 7},
    /* 8*/ {Form::decimals, true, 7},
    /* 9*/ {Form::whole, false, 0, "00%"},
    /*10*/ {Form::percent},
    /*11*/ {Form::scientific},
    /*12*/ {Form::whole, false, 0, " 0/0"},
    /*13*/ {Form::whole, false, 0, " 00/00"},
    /*14*/ {Form::fixed, false, 0, "00/00/0000"},
    /*15*/ {Form::fixed, false, 0, "00/mmm/00"},
    /*16*/ {Form::fixed, false, 0, "00/mmm"},
    /*17*/ {Form::fixed, false, 0, "mmm/00"},
    /*18*/ {Form::fixed, false, 0, "00:00 AM"},
    /*19*/ {Form::fixed, false, 0, "00:00:00 AM"},
    /*20*/ {Form::fixed, false, 0, "00:00"},
    /*21*/ {Form::fixed, false, 0, "00:00:00"},
    /*22*/ {Form::fixed, false, 0, "00/00/0000 00:00"},
    /*23*/ {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    {},
    /*37*/ {Form::whole, true, 3},
    /*38*/ {Form::whole, true, 3},
    /*39*/ {Form::decimals, true, 3},
    /*40*/ {Form::decimals, true, 3},
    /*41*/ {Form::whole, true, 9},
    /*42*/ {Form::whole, true, 9},
    /*43*/ {Form::decimals, true, 9},
    /*44*/ {Form::decimals, true, 9},
    /*45*/ {Form::fixed, false, 0, "00:00"},
    /*46*/ {Form::fixed, false, 0, "0000000:00:00"},
    /*47*/ {Form::fixed, false, 0, "00:00,0"},
    /*48*/ {Form::fixed, false, 0, "00,0E+0"},
    /*49*/ {Form::text},
};

void appendWhole(std::string& text, double value) {
    char digits[24];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, wholePart(value)).ptr);
}

void appendReal(std::string& text, double value, std::chars_format format, int precision) {
    char digits[400];  // the largest number has 309 digits before its point
    text.append(digits, std::to_chars(digits, digits + sizeof digits, value, format, precision).ptr);
}

}  // namespace

std::int64_t wholePart(double value) {
    constexpr double limit = 9223372036854775808.0;
    if (std::isnan(value)) return 0;
    if (value >= limit) return std::numeric_limits<std::int64_t>::max();
    if (value <= -limit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(value);
}

void appendBuiltInSample(std::string& text, unsigned numFmtId, double value) {
    const Sample& sample = samples[numFmtId < firstFormatWithText ? numFmtId : 0];
    const std::size_t from = text.size();
    std::size_t grouped = 0;  // characters
    switch (sample.form) {
        case Form::general:
            appendReal(text, value, std::chars_format::general, 10);
            break;
        case Form::whole:
            appendWhole(text, value);
            grouped = text.size() - from;
            break;
        case Form::decimals:
            appendReal(text, value, std::chars_format::fixed, 2);
            if (text.size() - from > 5) grouped = text.size() - from - 3;
            break;
        case Form::percent:
            appendReal(text, value * 100, std::chars_format::fixed, 2);
            text += '%';
            break;
        case Form::scientific: {
            appendReal(text, value, std::chars_format::scientific, 2);
            if (const std::size_t e = text.find('e', from); e != std::string::npos) text[e] = 'E';
            break;
        }
        case Form::text:
            text += shortNumberText(value);
            break;
        case Form::fixed:
            break;
    }
    text.append((sample.grouped ? grouped / 3 : 0) + sample.blanks, ' ');
    text += sample.behind;
}

}  // namespace vellum::xlsx
