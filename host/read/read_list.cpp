#include "host/interface/observer.h"
#include "host/interface/owned_object.h"
#include "host/labels/report.h"
#include "host/read/read_items.h"
#include "host/values/array_shape.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"
#include "host/values/records.h"

namespace quillet {
namespace {

/// One list that is being filled.
struct ListReading {
    HostContext* context;
    RangeSpec& range;
    HostList* list;
    HostType type;  // of the elements, with its table place
    const HostType* fieldTable;
    int* counter;

    /// Appends a value that was read from a cell.
    int append(HostType elementWord, HostValue value, int row, int col) const {
        if (hostApi().hostListAppend(context, list, elementType(elementWord), value, 0)) {
            return failAt(context, range, msg::wrongResult, row, col);
        }
        ++*counter;
        return 0;
    }
};

enum class CellEnd { stored, notConverted, failed };  // notConverted: reported, but the row goes on

CellEnd readAny(const ListReading& l, int row, int col) {
    const OwnedObject object(l.context, elementType(l.type));
    if (!object.get()) return fail(l.context, msg::objectNotCreated), CellEnd::failed;
    if (readCellToUnion(l.context, l.range, object.get(), row, col)) {
        failAt(l.context, l.range, msg::wrongResult, row, col);
        return CellEnd::failed;
    }
    return l.append(l.type, {.object = object.get()}, row, col) ? CellEnd::failed : CellEnd::stored;
}

/// A value of a type of its own, by its text.
CellEnd appendObject(const ListReading& l, const char* text, int row, int col) {
    const OwnedObject object(l.context, elementType(l.type));
    if (!object.get()) return fail(l.context, msg::objectNotCreated), CellEnd::failed;
    if (hostApi().hostValueFromText(l.context, elementType(l.type), object.get(), text ? text : "", 0)) {
        failAt(l.context, l.range, msg::wrongResult, row, col);
        return CellEnd::failed;
    }
    return l.append(l.type, {.object = object.get()}, row, col) ? CellEnd::failed : CellEnd::stored;
}

CellEnd readBase(const ListReading& l, int kind, int row, int col) {
    HostValue value = {.bits = 0};
    if (readCellOfKind(l.context, l.range, kind, l.type, &value, row, col)) return CellEnd::notConverted;
    if (!isBaseType(l.type)) return appendObject(l, value.text, row, col);
    return l.append(l.type, value, row, col) ? CellEnd::failed : CellEnd::stored;
}

/// One element for each cell. A cell that does not convert fails its row, unless a later cell of the row converts.
int readCells(const ListReading& l) {
    const bool isUnion = isUnionType(l.context, l.type);
    const int height = l.range.height();
    for (int row = 0; row < height; row = l.range.rowBehind(row)) {
        bool converted = true;
        for (int c = 0; c < l.range.columnCount; c = l.range.usedFrom(row, c + 1)) {
            const int col = l.range.column(c);
            const int kind = l.range.kindAt(row, col);
            if (l.range.passesOver(kind)) {
                if (observer != nullptr) observer->cellPassedOver(l.range, row, col);
                continue;
            }
            const CellEnd end = isUnion ? readAny(l, row, col) : readBase(l, kind, row, col);
            if (end == CellEnd::failed) return 1;
            converted = end == CellEnd::stored;
        }
        if (!converted) return 1;
    }
    return 0;
}

int readOneRecord(const ListReading& l, const HostType* columnTypes, int row, int first) {
    const OwnedObject object(l.context, elementType(l.type));
    if (!object.get()) return fail(l.context, msg::objectNotCreated);
    int cursor = first;
    if (readRecord(l.context, l.range, columnTypes, row, &cursor, object.get(), l.type, l.fieldTable)) return 1;
    return l.append(l.type, {.object = object.get()}, row, l.range.column(first));
}

/// One record for each group of `need` columns that is not empty.
int readRecords(const ListReading& l, int need) {
    const int count = l.range.columnCount;
    if (count < need || count % need != 0) return failColumns(l.context, l.range, need);
    const auto types = rowColumnTypes(l.context, l.range, nullptr, 0, l.type, need, l.fieldTable);
    if (!types) return 1;
    const int height = l.range.height();
    for (int row = 0; row < height; row = l.range.rowBehind(row)) {
        const auto groupBehind = [&](int first) { return l.range.usedFrom(row, first + need) / need * need; };
        for (int first = 0; first < count; first = groupBehind(first)) {
            if (l.range.isEmpty(row, first, need)) {
                if (observer != nullptr) observer->rowPassedOver(l.range, row);
                continue;
            }
            if (readOneRecord(l, types.get(), row, first)) return 1;
        }
    }
    return 0;
}

/// Appends the size of the range, 0 and 0 for one that is not there. No value is counted.
int readRangeSize(const Item& item, HostList* list) {
    if (observer != nullptr) observer->laidOut(Layout::rangeSize, 0);
    for (const int size : {item.range.height(), item.range.width()}) {
        const HostValue value = {.integer = size > 0 ? size : 0};
        if (hostApi().hostListAppend(item.context, list, hostTypeInteger, value, 0)) {
            return failAt(item.context, item.range, msg::wrongResult, 0, 0);
        }
    }
    return 0;
}

}  // namespace

int readList(Item& item, int* counter) {
    HostList* const list = static_cast<HostList*>(item.object);
    if (!list) return fail(item.context, msg::uninitializedList);
    const HostType word = hostApi().hostListElemType(list);
    const HostType type = elementType(word), kind = word & (hostClassMask | hostTypeMask);
    const bool isRangeSize = item.range.has(optRangeSize);
    if ((kind & hostClassMask) == hostClassArray || kind == 0) {
        if (isRangeSize) return fail(item.context, msg::rangesizeNeedsIntegers);
        return readListOfArrays(item.context, item.range, list, counter);
    }
    if ((word & hostFlagDynamic) == 0) return fail(item.context, msg::nonDynamicList);
    if (isRangeSize && kind != hostTypeInteger) return fail(item.context, msg::rangesizeNeedsIntegers);
    if (isRangeSize) return readRangeSize(item, list);

    int isRecord = 0;
    const ListReading l{item.context, item.range, list, withTablePlace(type, item.type), item.fieldTable, counter};
    const int need = columnsForValue(item.context, l.type, item.fieldTable, &isRecord);
    if (need == 0) return fail(item.context, msg::wrongDataType);
    if (observer != nullptr) observer->laidOut(isRecord != 0 ? Layout::records : Layout::list, 0);
    return isRecord ? readRecords(l, need) : readCells(l);
}

}  // namespace quillet
