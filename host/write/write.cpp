#include <algorithm>
#include <climits>

#include "host/interface/driver_calls.h"
#include "host/interface/observer.h"
#include "host/write/write_items.h"

namespace quillet {
namespace {

int writeItem(Item& item) {
    switch (itemForm(item.type)) {
        case ItemForm::scalar:
            return writeScalar(item);
        case ItemForm::set:
            return writeSet(item);
        case ItemForm::list:
            return writeList(item);
        case ItemForm::array:
            return writeArray(item.context, item.range, item.type, item.fieldTable,
                              static_cast<HostArray*>(item.object));
        case ItemForm::unknown:
            break;
    }
    return 1;
}

}  // namespace

int fitRows(RangeSpec& range, long long needed) {
    if (needed > range.height() && range.has(optGrow)) {
        range.lastRow = int(std::min(range.firstRow + needed - 1, static_cast<long long>(INT_MAX - 1)));
    }
    if (observer != nullptr) observer->rowsFitted(needed, range.height());
    return range.height();
}

int driverWrite(HostContext* context, void* source, int itemCount, const char* const* labels, const HostType* types,
                HostValue* values) {
    for (int i = 0; i < itemCount; ++i) {
        Item item{context, types[i], types, values[i].object};
        if (observer != nullptr) {
            observer->itemBegins(i, *static_cast<DriverContext*>(source), labels[i], ItemUse::write);
        }
        if (openItem(item, static_cast<DriverContext*>(source), labels[i], ItemUse::write)) return itemCount - i;
        if (observer != nullptr) observer->itemOpened(item, *static_cast<DriverContext*>(source));
        const int failed = writeItem(item);
        if (observer != nullptr) observer->itemDone(item);
        if (failed != 0) return itemCount - i;
        values[i].bits = 0;
    }
    return 0;
}

}  // namespace quillet
