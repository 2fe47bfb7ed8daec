#include <climits>
#include <cmath>
#include <limits>

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/text/c_locale.h"
#include "host/text/text_compare.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"

namespace quillet {
namespace {

constexpr int cellBlank = 4;  // with a format; the table operations give it as empty
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A cell of the range with its absolute place.
struct Cell {
    RangeSpec& range;
    int row, col;  // absolute
    int kind;

    bool hasValue() const { return kind == cellNumber || kind == cellText || kind == cellBoolean; }
    bool readsAsEmpty() const { return kind == cellBlank || range.passesOver(kind); }
    bool isDate() const { return range.ops.cellIsDate(range.sheet, row, col); }
    double real() const { return range.numberAt(row, col); }
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

std::int32_t readInteger(const Cell& cell) {
    switch (cell.kind) {
        case cellNumber:
            return truncated(cell.real());
        case cellText:
            return truncated(numberIn(cell.text()));
        case cellBoolean:
            return cell.boolean();
        default:
            return 0;
    }
}

double readReal(const Cell& cell) {
    switch (cell.kind) {
        case cellNumber:
            return realFromNumber(cell.range, cell.real());
        case cellText:
            return realFromText(cell);
        case cellBoolean:
            return cell.boolean();
        default:
            return 0.0;
    }
}

std::int32_t readBoolean(const Cell& cell) {
    switch (cell.kind) {
        case cellNumber:
            return cell.real() == 0.0 ? 0 : 1;
        case cellText:
            return cell.range.ops.textToBool(cell.range.sheet, cell.row, cell.col);
        case cellBoolean:
            return cell.boolean();
        default:
            return 0;
    }
}

/// Null where the cell has no text.
const char* readText(HostContext* context, const Cell& cell) {
    switch (cell.kind) {
        case cellNumber: {
            const double value = cell.real();
            return cell.isDate() ? dateText(context, cell.range, value) : formattedReal(context, cell.range, value);
        }
        case cellText:
            return cell.text();
        case cellBoolean:
            return cell.range.ops.readBoolText(cell.range.sheet, cell.row, cell.col);
        default:
            return nullptr;
    }
}

const char* registered(HostContext* context, const char* text) {
    return text ? hostApi().hostRegisterText(context, text) : nullptr;
}

}  // namespace

int readCellOfKind(HostContext* context, RangeSpec& range, int kind, HostType type, HostValue* out, int row, int col) {
    const Cell cell{range, range.firstRow + row, range.firstCol + col, kind};
    if (observer != nullptr) observer->cellToBeRead(range, row, col);
    if (!cell.hasValue() && !cell.readsAsEmpty()) {
        if (observer != nullptr) observer->cellRead(range, observedPart, type, nullptr, kind, row, col);
        return failAt(context, range, msg::wrongResult, row, col);
    }
    switch (elementType(type)) {
        case hostTypeInteger:
            out->integer = readInteger(cell);
            break;
        case hostTypeReal:
            out->real = readReal(cell);
            break;
        case hostTypeText:
            out->text = registered(context, readText(context, cell));
            break;
        case hostTypeBoolean:
            out->integer = readBoolean(cell);
            break;
        default:
            out->text = readText(context, cell);
    }
    if (observer != nullptr) observer->cellRead(range, observedPart, type, out, kind, row, col);
    return 0;
}

int readCellAs(HostContext* context, RangeSpec& range, HostType type, HostValue* out, int row, int col) {
    return readCellOfKind(context, range, range.kindAt(row, col), type, out, row, col);
}

namespace {

int setUnion(HostContext* context, const Cell& cell, void* object) {
    const HostApi& host = hostApi();
    // What the union holds is dropped first, so that a text is taken by the union and not by the type of its old value.
    const auto setText = [&](const char* text) {
        if (const int failed = host.hostUnionClear(context, object)) return failed;
        return host.hostValueFromText(context, host.hostUnionType(object), object, text ? text : "", 0);
    };
    HostValue value = {.bits = 0};
    switch (cell.kind) {
        case cellNumber: {
            const double number = cell.real();
            if (cell.isDate()) return setText(dateText(context, cell.range, number));
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
            if (!cell.readsAsEmpty()) return 1;
            return host.hostUnionClear(context, object);
    }
}

}  // namespace

int readCellToUnion(HostContext* context, RangeSpec& range, void* object, int row, int col) {
    const Cell cell{range, range.firstRow + row, range.firstCol + col, range.kindAt(row, col)};
    if (observer != nullptr) observer->cellToBeRead(range, row, col);
    const int failed = setUnion(context, cell, object);
    if (observer != nullptr) {
        const HostValue value = {.object = object};
        observer->cellRead(range, observedPart, hostTypeAny, failed != 0 ? nullptr : &value, cell.kind, row, col);
    }
    return failed;
}

}  // namespace quillet
