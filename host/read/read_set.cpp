#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/read/read_items.h"
#include "host/values/cell_values.h"
#include "host/values/index_sets.h"

namespace quillet {
namespace {

enum class RowEnd { next, failed };

/// Adds the cells of one row. A cell that does not convert is reported and fails the row, unless a later cell of the
/// row converts.
RowEnd readRow(Item& item, HostSet* set, HostType type, int row, int* counter) {
    RangeSpec& range = item.range;
    RowEnd result = RowEnd::next;
    for (int c = 0; c < range.columnCount; c = range.usedFrom(row, c + 1)) {
        const int col = range.column(c);
        const int kind = range.kindAt(row, col);
        if (range.passesOver(kind)) {
            if (observer != nullptr) observer->cellPassedOver(range, row, col);
            continue;
        }
        HostValue value = {.bits = 0};
        if (readCellOfKind(item.context, range, kind, type, &value, row, col)) {
            result = RowEnd::failed;
            continue;
        }
        int position = 0;
        if (indexFromValue(item.context, set, type, &value, &position)) {
            failAt(item.context, range, msg::wrongResult, row, col);
            return RowEnd::failed;
        }
        ++*counter;
        result = RowEnd::next;
    }
    return result;
}

}  // namespace

int readSet(Item& item, int* counter) {
    HostSet* const set = static_cast<HostSet*>(item.object);
    if (!set) return fail(item.context, msg::uninitializedSet);
    if ((hostApi().hostSetFlags(set) & hostFlagDynamic) == 0) return fail(item.context, msg::nonDynamicSet);
    const HostType type = indexType(item.context, set, IndexRule::reading);
    if (type == 0) return fail(item.context, msg::wrongDataType);
    if (observer != nullptr) observer->laidOut(Layout::set, 0);

    RowEnd result = RowEnd::next;
    const int height = item.range.height();
    for (int row = 0; row < height && result == RowEnd::next; row = item.range.rowBehind(row)) {
        result = readRow(item, set, type, row, counter);
    }

    int finish = 0;
    hostApi().hostParam(item.context, hostParamFinishSets, &finish);
    if (finish) hostApi().hostSetFinish(item.context, set);
    return result == RowEnd::next ? 0 : 1;
}

}  // namespace quillet
