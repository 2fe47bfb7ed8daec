#include <cmath>

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"

namespace quillet {
namespace {

/// Carries out one write into a cell.
template <class Write>
CellWrite put(const RangeSpec& range, int row, int col, Write&& write) {
    if (observer != nullptr) observer->cellToBeWritten(range, observedPart, row, col);
    const bool done = write(range.sheet, range.firstRow + row, range.firstCol + col) > 0;
    if (observer != nullptr) observer->cellWritten(range, row, col, done);
    return done ? CellWrite::done : CellWrite::refused;
}

CellWrite putText(const RangeSpec& range, int row, int col, const char* text) {
    return put(range, row, col,
               [&](Sheet* sheet, int r, int c) { return range.ops.writeText(sheet, r, c, text, nullptr); });
}

CellWrite putReal(const RangeSpec& range, int row, int col, double value) {
    return put(range, row, col,
               [&](Sheet* sheet, int r, int c) { return range.ops.writeReal(sheet, r, c, nullptr, value); });
}

CellWrite putBlank(const RangeSpec& range, int row, int col) {
    return put(range, row, col, [&](Sheet* sheet, int r, int c) { return range.ops.writeBlank(sheet, r, c, nullptr); });
}

CellWrite putBoolean(const RangeSpec& range, int row, int col, int value) {
    return put(range, row, col,
               [&](Sheet* sheet, int r, int c) { return range.ops.writeBool(sheet, r, c, value, nullptr); });
}

/// What stands for one of the values that are not finite.
struct SpecialForm {
    std::uint32_t textOption, numberOption;
    const char* text;
    double number;
};

CellWrite putSpecialReal(const RangeSpec& range, int row, int col, double value) {
    const SpecialValues* const s = range.specialValues;
    if (s) {
        const SpecialForm form = std::isnan(value) ? SpecialForm{optNanText, optNanNumber, s->nanText, s->nanNumber}
                                 : value < 0       ? SpecialForm{optMinfText, optMinfNumber, s->minfText, s->minfNumber}
                                                   : SpecialForm{optInfText, optInfNumber, s->infText, s->infNumber};
        if (range.has(form.textOption)) return putText(range, row, col, form.text);
        if (range.has(form.numberOption)) return putReal(range, row, col, form.number);
    }
    if (range.has(optSkipErrorCells)) return putBlank(range, row, col);
    return putReal(range, row, col, value);
}

CellWrite putRealOrSpecial(const RangeSpec& range, int row, int col, double value) {
    constexpr std::uint32_t specialOptions = optSpecialTexts | optSpecialNumbers | optSkipErrorCells;
    if (std::isfinite(value) || !range.has(specialOptions)) return putReal(range, row, col, value);
    return putSpecialReal(range, row, col, value);
}

/// A value of a type of its own, as the text that the host gives for it.
CellWrite putAsText(HostContext* context, RangeSpec& range, HostType type, int row, int col, HostValue value) {
    const int length = hostApi().hostValueToText(context, elementType(type), value, range.textBuffer, range.bufferSize);
    if (length < 0 || length >= range.bufferSize) {
        fail(context, msg::overflowOrType);
        return CellWrite::reported;
    }
    return putText(range, row, col, range.textBuffer);
}

CellWrite putByType(HostContext* context, RangeSpec& range, HostType type, int row, int col, const HostValue& value) {
    switch (elementType(type)) {
        case hostTypeInteger:
            return putReal(range, row, col, value.integer);
        case hostTypeReal:
            return putRealOrSpecial(range, row, col, value.real);
        case hostTypeText:
            return putText(range, row, col, value.text);
        case hostTypeBoolean:
            return putBoolean(range, row, col, value.integer);
        default:
            return putAsText(context, range, type, row, col, value);
    }
}

CellWrite putUnion(HostContext* context, RangeSpec& range, int row, int col, void* object) {
    if (!object) return putBlank(range, row, col);
    HostValue value = {.bits = 0};
    const int kind = hostApi().hostUnionGet(context, object, &value);
    if (kind == 0) return putBlank(range, row, col);
    if (kind >= hostTypeInteger && kind <= hostTypeBoolean) {
        return putByType(context, range, HostType(kind), row, col, value);
    }
    return putAsText(context, range, hostApi().hostUnionType(object), row, col, value);
}

}  // namespace

CellWrite putValue(HostContext* context, RangeSpec& range, HostType type, int row, int col, const HostValue* value) {
    if (!value) return putBlank(range, row, col);
    if (elementType(type) == hostTypeAny) return putUnion(context, range, row, col, value->object);
    return putByType(context, range, type, row, col, *value);
}

int writeValueToCell(HostContext* context, RangeSpec& range, HostType type, int row, int col, const HostValue* value) {
    return putValue(context, range, type, row, col, value) == CellWrite::done ? 0 : 1;
}

int writeBlankToCell(RangeSpec& range, int row, int col) {
    return putBlank(range, row, col) == CellWrite::done ? 0 : 1;
}

int writeRealToCell(RangeSpec& range, int row, int col, double value) {
    return putRealOrSpecial(range, row, col, value) == CellWrite::done ? 0 : 1;
}

}  // namespace quillet
