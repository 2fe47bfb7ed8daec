#include "host/write/write_array_values.h"

#include "host/labels/report.h"
#include "host/values/cell_values.h"
#include "host/values/records.h"

namespace quillet {
namespace {

int putValueAt(const ArrayWriting& a, int row, int cursor, const HostValue& value) {
    int at = cursor;
    const int failed = a.shape.isRecord
                           ? writeRecord(a.context, a.range, a.columnTypes, row, &at, value.object, a.shape.valueType,
                                         a.shape.fieldTable)
                           : writeValueToCell(a.context, a.range, a.shape.cellType, row, a.range.column(at), &value);
    return failed ? failAt(a.context, a.range, msg::wrongDataValue, row, a.range.column(at)) : 0;
}

}  // namespace

int ArrayWriting::putEntry(int row, int cursor) const {
    HostValue value = {.bits = 0};
    hostApi().hostArrayGet(shape.array, tuple, &value);
    return putValueAt(*this, row, cursor, value);
}

int ArrayWriting::putEntryOrBlank(int row, int cursor, bool isDynamic) const {
    HostValue value = {.bits = 0};
    hostApi().hostArrayGet(shape.array, tuple, &value);
    // Whatever its type, an absent entry gives a slot that is zero as a real, so most entries need no second question.
    if (!shape.isRecord && isDynamic && value.real == 0.0 && !hostApi().hostArrayExists(shape.array, tuple)) {
        const int col = range.column(cursor);
        return writeBlankToCell(range, row, col) ? failAt(context, range, msg::wrongDataValue, row, col) : 0;
    }
    return putValueAt(*this, row, cursor, value);
}

}  // namespace quillet
