#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/read/read_items.h"
#include "host/values/array_shape.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"
#include "host/values/records.h"

namespace quillet {
namespace {

/// A value of a type of its own, by its text.
int readObject(Item& item) {
    HostValue value = {.bits = 0};
    if (readCellAs(item.context, item.range, item.type, &value, 0, 0)) return 1;
    const char* const text = value.text ? value.text : "";
    if (!hostApi().hostValueFromText(item.context, elementType(item.type), item.object, text, 0)) return 0;
    return failAt(item.context, item.range, msg::wrongResult, 0, 0);
}

int readRecordScalar(Item& item, int need) {
    const auto types = rowColumnTypes(item.context, item.range, nullptr, 0, item.type, need, item.fieldTable);
    if (!types) return 1;
    int cursor = 0;
    return readRecord(item.context, item.range, types.get(), 0, &cursor, item.object, item.type, item.fieldTable);
}

int readValue(Item& item) {
    int isRecord = 0;
    const int need = columnsForValue(item.context, item.type, item.fieldTable, &isRecord);
    if (need == 0) return fail(item.context, msg::wrongDataType);
    if (item.range.columnCount < need) return failColumns(item.context, item.range, need);
    if (observer != nullptr) observer->laidOut(Layout::scalar, 0);
    if (isRecord) return readRecordScalar(item, need);
    if (isBaseType(item.type)) {
        return readCellAs(item.context, item.range, item.type, static_cast<HostValue*>(item.object), 0, 0);
    }
    if (!isUnionType(item.context, item.type)) return readObject(item);
    if (!readCellToUnion(item.context, item.range, item.object, 0, 0)) return 0;
    return failAt(item.context, item.range, msg::wrongResult, 0, 0);
}

}  // namespace

// The first cell of the rectangle, whatever the selection says; only records go by the selected columns.
int readScalar(Item& item, int* counter) {
    if (readValue(item)) return 1;
    ++*counter;
    return 0;
}

}  // namespace quillet
