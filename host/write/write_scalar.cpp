#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/array_shape.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"
#include "host/values/records.h"
#include "host/write/write_items.h"

namespace quillet {
namespace {

/// A refusal that nobody has reported yet.
int endWrite(const Item& item, CellWrite result, int col) {
    if (result == CellWrite::refused) failAt(item.context, item.range, msg::wrongResult, 0, col);
    return result == CellWrite::done ? 0 : 1;
}

int writeRecordScalar(Item& item, int need) {
    const auto types = rowColumnTypes(item.context, item.range, nullptr, 0, item.type, need, item.fieldTable);
    if (!types) return 1;
    int cursor = 0;
    const CellWrite result =
        putRecord(item.context, item.range, types.get(), 0, &cursor, item.object, item.type, item.fieldTable);
    return endWrite(item, result, result == CellWrite::done ? 0 : item.range.column(cursor));
}

}  // namespace

// The first row of the range. A range that is too narrow ends the statement without a message.
int writeScalar(Item& item) {
    int isRecord = 0;
    const int need = columnsForValue(item.context, item.type, item.fieldTable, &isRecord);
    if (need == 0) return fail(item.context, msg::wrongDataType);
    if (item.range.columnCount < need || item.range.height() < 1) return 1;
    if (observer != nullptr) observer->laidOut(Layout::scalar, 0);
    if (isRecord) return writeRecordScalar(item, need);
    const HostType type = cellType(item.context, item.type);
    const HostValue object = {.object = item.object};
    const HostValue* const value = isBaseType(type) ? static_cast<const HostValue*>(item.object) : &object;
    return endWrite(item, putValue(item.context, item.range, type, 0, 0, value), 0);
}

}  // namespace quillet
