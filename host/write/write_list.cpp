#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/column_types.h"
#include "host/write/write_flow.h"

namespace quillet {
namespace {

constexpr HostType classBits = 0x1e000;  // of the type word of an item that is no scalar

/// Whether a list of any has an item that no cell can hold; it counts as a list of arrays then.
bool holdsMoreThanScalars(HostContext* context, HostList* list) {
    HostType type = 0;
    HostValue value = {.bits = 0};
    for (void* at = hostApi().hostListNext(list, nullptr, &type, &value); at;
         at = hostApi().hostListNext(list, at, &type, &value)) {
        if ((type & classBits) != 0) return true;
        if (elementType(type) > hostTypeBoolean && usableAsCell(context, type) != 0) return true;
    }
    return false;
}

int writePlainList(Item& item, HostList* list, HostType type) {
    ElementFlow flow(item.context, item.range, type, item.fieldTable);
    if (observer != nullptr) observer->laidOut(Layout::list, 0);
    if (flow.open(hostApi().hostListLength(list))) return 1;
    HostType own = 0;
    HostValue value = {.bits = 0};
    for (void* at = hostApi().hostListNext(list, nullptr, &own, &value); at && !flow.isFull();
         at = hostApi().hostListNext(list, at, &own, &value)) {
        if (flow.put(cellType(item.context, own), value)) return 1;
        value.bits = 0;
    }
    return 0;
}

}  // namespace

int writeList(Item& item) {
    HostList* const list = static_cast<HostList*>(item.object);
    if (!list) return fail(item.context, msg::uninitializedList);
    if (hostApi().hostListLength(list) == 0) return 0;
    const HostType word = hostApi().hostListElemType(list);
    bool ofArrays = (word & hostClassMask) == hostClassArray;
    if (!ofArrays && isUnionType(item.context, word)) ofArrays = holdsMoreThanScalars(item.context, list);
    if (ofArrays) return writeListOfArrays(item.context, item.range, list);
    return writePlainList(item, list, withTablePlace(word, item.type));
}

}  // namespace quillet
