#include "host/values/index_sets.h"

#include "host/interface/observer.h"
#include "host/interface/owned_object.h"
#include "host/labels/report.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"

namespace quillet {
namespace {

bool isExplicit(HostSet* set) {
    return (hostApi().hostSetFlags(set) & hostFlagExplicit) != 0;
}

bool ruleAdmits(HostContext* context, HostType type, HostType aliased, IndexRule rule) {
    switch (rule) {
        case IndexRule::reading:
            return aliased != 0;
        case IndexRule::readingLists:
            return aliased != 0 && isTextCapable(context, type);
        case IndexRule::writing:
            return isTextCapable(context, type);
    }
    return false;
}

}  // namespace

int firstIndex(HostSet* set) {
    return isExplicit(set) ? 1 : hostApi().hostRangeFirst(set);
}

int lastIndex(HostSet* set) {
    return isExplicit(set) ? hostApi().hostSetSize(set) : hostApi().hostRangeLast(set);
}

bool isIntegerRange(HostSet* set) {
    return (hostApi().hostSetFlags(set) & (hostFlagExplicit | hostTypeMask)) == hostTypeInteger;
}

HostType indexType(HostContext* context, HostSet* set, IndexRule rule) {
    const HostType type = elementType(hostApi().hostSetFlags(set));
    if (isBaseType(type)) return type;
    const HostType aliased = aliasedType(context, type);
    if (!ruleAdmits(context, type, aliased, rule)) return 0;
    return aliased ? type << hostFieldIndexShift | aliased : type;
}

int indexTypes(HostContext* context, HostSet* const* sets, int count, IndexRule rule, HostType* types) {
    for (int d = 0; d < count; ++d) {
        types[d] = indexType(context, sets[d], rule);
        if (types[d] == 0) return fail(context, msg::wrongIndexType);
    }
    return 0;
}

int indexFromValue(HostContext* context, HostSet* set, HostType type, HostValue* value, int* position) {
    const HostApi& host = hostApi();
    const HostType base = elementType(type), alias = type >> hostFieldIndexShift;
    if (base < hostTypeFirstObject) return host.hostSetAdd(context, set, *value, position);
    const OwnedObject object(context, base);
    if (!object.get()) return 1;
    if (host.hostValueFromText(context, base, object.get(), value->text ? value->text : "", 0)) return 1;
    if (!alias) {
        value->object = object.get();
        return host.hostSetAdd(context, set, *value, position);
    }
    const OwnedObject converted(context, alias, host.hostConvertObject(context, alias, object.get()));
    if (!converted.get()) return 1;
    value->object = converted.get();
    return host.hostSetAdd(context, set, *value, position);
}

int readIndexColumns(HostContext* context, RangeSpec& range, HostSet* const* sets, const HostType* types, int count,
                     int row, int* tuple) {
    const PartScope index(CellPart::index);
    bool converted = true;
    for (int d = 0; d < count; ++d) {
        const int col = range.column(d);
        const int kind = range.kindAt(row, col);
        if (range.passesOver(kind) && !range.has(optEmptyIndex)) {
            if (observer != nullptr) {
                observer->cellToBeRead(range, row, col);
                observer->cellRead(range, CellPart::index, types[d], nullptr, kind, row, col);
            }
            return failAt(context, range, msg::emptyIndex, row, col);
        }
        HostValue value = {.bits = 0};
        if (readCellOfKind(context, range, kind, types[d], &value, row, col)) {
            converted = false;  // reported; the other index columns are still looked at
        } else if (indexFromValue(context, sets[d], types[d], &value, &tuple[d])) {
            return failAt(context, range, msg::wrongIndexValue, row, col);
        }
    }
    if (observer != nullptr && converted && count > 0) observer->rowIndexed(range, row, tuple, count);
    return converted ? 0 : 1;
}

int writeIndexColumns(HostContext* context, RangeSpec& range, HostSet* const* sets, const HostType* types, int count,
                      int row, const int* tuple) {
    const PartScope index(CellPart::index);
    for (int d = 0; d < count; ++d) {
        HostValue value = {.bits = 0};
        hostApi().hostSetElement(context, sets[d], tuple[d], &value);
        // Elements of an alias of a base type are base values; those of other aliases go by the alias type.
        const HostType alias = types[d] >> hostFieldIndexShift;
        const HostType type = alias && !isBaseType(types[d]) ? alias : types[d];
        if (writeValueToCell(context, range, type, row, range.column(d), &value)) {
            return failAt(context, range, msg::wrongDataValue, row, range.column(d));
        }
    }
    return 0;
}

IndexWalk::IndexWalk(HostContext* context, HostSet* const* sets, int count)
    : _context(context), _sets(sets), _count(count) {
    for (int d = 1; d < _count; ++d) hostApi().hostSetOpenWalk(_context, _sets[d]);
}

IndexWalk::~IndexWalk() {
    for (int d = _count - 1; d >= 1; --d) hostApi().hostSetCloseWalk(_context, _sets[d]);
}

}  // namespace quillet
