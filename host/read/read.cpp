#include "host/interface/driver_calls.h"
#include "host/interface/observer.h"
#include "host/read/read_items.h"

namespace quillet {
namespace {

int readItem(Item& item, int* counter) {
    switch (itemForm(item.type)) {
        case ItemForm::scalar:
            return readScalar(item, counter);
        case ItemForm::set:
            return readSet(item, counter);
        case ItemForm::list:
            return readList(item, counter);
        case ItemForm::array:
            return readArray(item.context, item.range, item.type, item.fieldTable, static_cast<HostArray*>(item.object),
                             counter);
        case ItemForm::unknown:
            break;
    }
    return 1;
}

}  // namespace

int driverRead(HostContext* context, void* source, int itemCount, const char* const* labels, const HostType* types,
               HostValue* values, int* counters) {
    for (int i = 0; i < itemCount; ++i) {
        Item item{context, types[i], types, values[i].object};
        if (observer != nullptr) {
            observer->itemBegins(i, *static_cast<DriverContext*>(source), labels[i], ItemUse::read);
        }
        if (openItem(item, static_cast<DriverContext*>(source), labels[i], ItemUse::read)) return itemCount - i;
        if (observer != nullptr) observer->itemOpened(item, *static_cast<DriverContext*>(source));
        const int failed = readItem(item, &counters[i]);
        if (observer != nullptr) observer->itemDone(item);
        if (failed != 0) return itemCount - i;
        values[i].bits = 0;
    }
    return 0;
}

}  // namespace quillet
