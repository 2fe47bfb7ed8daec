#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/column_types.h"
#include "host/values/index_sets.h"
#include "host/write/write_flow.h"

namespace quillet {
namespace {

/// The type by which elements go to cells: elements of an alias of a base type are base values.
HostType elementCellType(HostContext* context, HostType type) {
    const HostType base = aliasedType(context, type);
    return cellType(context, isBaseType(base) ? base : type);
}

}  // namespace

int writeSet(Item& item) {
    HostSet* const set = static_cast<HostSet*>(item.object);
    if (!set) return fail(item.context, msg::uninitializedSet);
    const HostType type = withTablePlace(hostApi().hostSetFlags(set), item.type);
    const int size = hostApi().hostSetSize(set);
    ElementFlow flow(item.context, item.range, type, item.fieldTable);
    if (observer != nullptr) observer->laidOut(Layout::set, 0);
    if (flow.open(size)) return 1;
    const HostType cell = elementCellType(item.context, type);
    int index = firstIndex(set);
    for (int i = 0; i < size && !flow.isFull(); ++i, index = nextInteger(index)) {
        HostValue value = {.bits = 0};
        hostApi().hostSetElement(item.context, set, index, &value);
        if (flow.put(cell, value)) return 1;
    }
    return 0;
}

}  // namespace quillet
