#include "host/read/read_array_values.h"

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"
#include "host/values/records.h"

namespace quillet {
namespace {

constexpr int storedByReference = 2;  // what hostArrayStore answers for a union or a record

int storeUnion(HostContext* context, RangeSpec& range, HostArray* array, const int* tuple, int row, int col) {
    HostValue value = {.bits = 0};
    if (hostApi().hostArrayStore(context, array, tuple, &value) != storedByReference) return 1;
    return readCellToUnion(context, range, value.object, row, col);
}

int storeRecord(const ArrayReading& a, int row, int cursor) {
    HostValue value = {.bits = 0};
    if (hostApi().hostArrayStore(a.context, a.shape.array, a.tuple, &value) != storedByReference) {
        return failAt(a.context, a.range, msg::wrongResult, row, a.range.column(cursor));
    }
    if (readRecord(a.context, a.range, a.columnTypes, row, &cursor, value.object, a.shape.valueType,
                   a.shape.fieldTable)) {
        return 1;
    }
    ++*a.counter;
    return 0;
}

}  // namespace

int storeCell(HostContext* context, RangeSpec& range, HostArray* array, HostType type, const int* tuple, int row,
              int col, int* counter) {
    const int kind = range.kindAt(row, col);
    if (range.passesOver(kind)) {
        if (observer != nullptr) observer->cellPassedOver(range, row, col);
        return 0;
    }
    int refused = 0;
    if (type == hostTypeAny) {
        refused = storeUnion(context, range, array, tuple, row, col);
    } else {
        HostValue value = {.bits = 0};
        if (readCellOfKind(context, range, kind, type, &value, row, col)) return 1;
        refused = isBaseType(type) ? hostApi().hostArrayStore(context, array, tuple, &value)
                                   : hostApi().hostArrayStoreText(context, array, tuple, value.text ? value.text : "");
    }
    if (refused) return failAt(context, range, msg::wrongResult, row, col);
    ++*counter;
    return 0;
}

int ArrayReading::storeValue(int row, int cursor) const {
    if (shape.isRecord) return storeRecord(*this, row, cursor);
    return storeCell(context, range, shape.array, shape.cellType, tuple, row, range.column(cursor), counter);
}

int ArrayReading::storeUnlessEmpty(int row, int cursor) const {
    if (shape.isRecord && range.isEmpty(row, cursor, shape.need)) {
        if (observer != nullptr) observer->cellPassedOver(range, row, range.column(cursor));
        return 0;
    }
    return storeValue(row, cursor);
}

}  // namespace quillet
