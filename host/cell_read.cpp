#include <climits>
#include <cmath>
#include <limits>

#include "host/c_locale.h"
#include "host/cell_values.h"
#include "host/column_types.h"
#include "host/report.h"
#include "host/text_compare.h"

namespace quillet {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A cell of the range with its absolute place.
struct Cell {
    RangeSpec& range;
    int row, col;  // absolute
    int kind;

    bool readsAsEmpty() const { return kind == cellEmpty || kind == 4; }
    bool isDate() const { return range.ops.cellIsDate(range.sheet, row, col); }
    double real() const { return range.ops.readReal(range.sheet, row, col, nullptr); }
    const char* text() const { return range.ops.readText(range.sheet, row, col, nullptr); }
    int boolean() const { return range.ops.readBool(range.sheet, row, col, nullptr); }
};

/// Toward zero; the lowest integer for all that does not fit.
std::int32_t truncated(double value) {
    if (!(value > double(INT32_MIN) - 1 && value < double(INT32_MAX) + 1)) return INT32_MIN;
    return std::int32_t(value);
}

double numberIn(const char* text) {
    return text ? strtodC(text, nullptr) : 0.0;
}

double realFromNumber(const RangeSpec& range, double value) {
    if (!range.has(optSpecialNumbers)) return value;
    const SpecialValues& special = *range.specialValues;
    if (range.has(optNanNumber) && value == special.nanNumber) return nan;
    if (range.has(optInfNumber) && value == special.infNumber) return infinity;
    if (range.has(optMinfNumber) && value == special.minfNumber) return -infinity;
    return value;
}

double realFromText(const Cell& cell) {
    const RangeSpec& range = cell.range;
    if (!range.has(optSpecialTexts)) return range.ops.textToReal(range.sheet, cell.row, cell.col);
    const char* const text = cell.text();
    if (!text) return 0.0;
    const SpecialValues& special = *range.specialValues;
    if (range.has(optNanText) && equalIgnoringCase(text, special.nanText)) return nan;
    if (range.has(optInfText) && equalIgnoringCase(text, special.infText)) return infinity;
    if (range.has(optMinfText) && equalIgnoringCase(text, special.minfText)) return -infinity;
    return numberIn(text);
}

/// Formats a number into the text buffer; a format that fails leaves "0".
const char* formattedReal(HostContext* context, RangeSpec& range, double value) {
    char* const buffer = range.textBuffer;
    buffer[0] = '0';
    buffer[1] = '\0';
    hostApi().hostFormatReal(context, buffer, range.bufferSize, range.realFormat, value);
    buffer[range.bufferSize - 1] = '\0';
    return buffer;
}

const char* dateText(HostContext* context, RangeSpec& range, double serial) {
    if (dateCellText(range.book, serial, range.textBuffer)) return range.textBuffer;
    return formattedReal(context, range, serial);
}

bool readInteger(const Cell& cell, std::int32_t* out) {
    switch (cell.kind) {
        case cellNumber:
            *out = truncated(cell.real());
            return true;
        case cellText:
            *out = truncated(numberIn(cell.text()));
            return true;
        case cellBoolean:
            *out = cell.boolean();
            return true;
        default:
            *out = 0;
            return false;
    }
}

bool readReal(const Cell& cell, double* out) {
    switch (cell.kind) {
        case cellNumber:
            *out = realFromNumber(cell.range, cell.real());
            return true;
        case cellText:
            *out = realFromText(cell);
            return true;
        case cellBoolean:
            *out = cell.boolean();
            return true;
        default:
            *out = 0.0;
            return false;
    }
}

bool readBoolean(const Cell& cell, std::int32_t* out) {
    switch (cell.kind) {
        case cellNumber:
            *out = cell.real() == 0.0 ? 0 : 1;
            return true;
        case cellText:
            *out = cell.range.ops.textToBool(cell.range.sheet, cell.row, cell.col);
            return true;
        case cellBoolean:
            *out = cell.boolean();
            return true;
        default:
            *out = 0;
            return false;
    }
}

bool readText(HostContext* context, const Cell& cell, const char** out) {
    switch (cell.kind) {
        case cellNumber: {
            const double value = cell.real();
            *out = cell.isDate() ? dateText(context, cell.range, value) : formattedReal(context, cell.range, value);
            return true;
        }
        case cellText:
            *out = cell.text();
            return true;
        case cellBoolean:
            *out = cell.range.ops.readBoolText(cell.range.sheet, cell.row, cell.col);
            return true;
        default:
            *out = nullptr;
            return false;
    }
}

}  // namespace

int readCellOfKind(HostContext* context, RangeSpec& range, int kind, HostType type, HostValue* out, int row, int col) {
    const Cell cell{range, range.firstRow + row, range.firstCol + col, kind};
    bool hasValue = false;
    switch (elementType(type)) {
        case hostTypeInteger:
            hasValue = readInteger(cell, &out->integer);
            break;
        case hostTypeReal:
            hasValue = readReal(cell, &out->real);
            break;
        case hostTypeBoolean:
            hasValue = readBoolean(cell, &out->integer);
            break;
        default:
            hasValue = readText(context, cell, &out->text);
            if (elementType(type) == hostTypeText && out->text) {
                out->text = hostApi().hostRegisterText(context, out->text);
            }
    }
    if (hasValue || cell.readsAsEmpty() || range.passesOver(kind)) return 0;
    return failAt(context, range, msg::wrongResult, row, col);
}

int readCellAs(HostContext* context, RangeSpec& range, HostType type, HostValue* out, int row, int col) {
    return readCellOfKind(context, range, range.kindAt(row, col), type, out, row, col);
}

int readCellToUnion(HostContext* context, RangeSpec& range, void* object, int row, int col) {
    const HostApi& host = hostApi();
    const Cell cell{range, range.firstRow + row, range.firstCol + col, range.kindAt(row, col)};
    // What the union holds is dropped first, so that a text is taken by the union and not by the type of its old value.
    const auto setText = [&](const char* text) {
        if (const int failed = host.hostUnionClear(context, object)) return failed;
        return host.hostValueFromText(context, host.hostUnionType(object), object, text ? text : "", 0);
    };
    HostValue value = {.bits = 0};
    switch (cell.kind) {
        case cellNumber: {
            const double number = cell.real();
            if (cell.isDate()) return setText(dateText(context, range, number));
            value.integer = truncated(number);
            if (number == value.integer) return host.hostUnionSet(context, object, hostTypeInteger, value);
            value.real = number;
            return host.hostUnionSet(context, object, hostTypeReal, value);
        }
        case cellText:
            return setText(cell.text());
        case cellBoolean:
            value.integer = cell.boolean();
            return host.hostUnionSet(context, object, hostTypeBoolean, value);
        default:
            if (!cell.readsAsEmpty() && !range.passesOver(cell.kind)) return 1;
            return host.hostUnionClear(context, object);
    }
}

}  // namespace quillet
