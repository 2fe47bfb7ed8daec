#include "refhost/values/list.h"

namespace refhost {
namespace {
bool isContainer(HostType word) {
    const HostType bits = word & hostClassMask;
    return bits == hostClassArray || bits == hostClassSet || bits == hostClassList;
}
}  // namespace

List::~List() {
    for (const ListItem& item : _items)
        if (!isContainer(item.type) && !isBaseType(item.type)) delete static_cast<Object*>(item.value.object);
}

bool List::append(HostType type, HostValue value) {
    const bool ofAny = (_elementWord & hostClassMask) == hostClassUnion;
    if (isContainer(type)) {
        // A list of arrays may be given something else by its declaration; telling so is the module's affair.
        if (!ofAny && !isOfArrays()) return false;
        _items.push_back({type & (hostTypeMask | hostClassMask), value});
        return true;
    }
    type &= hostTypeMask;
    if (ofAny) {
        auto any = std::make_unique<UnionObject>(HostType{hostTypeAny});
        if (isBaseType(type)) {
            any->set(type, value);
        } else if (const auto* object = static_cast<const Object*>(value.object)) {
            ObjectPtr copy = cloneObject(_types, *object);
            if (object->kind == ObjectKind::anyUnion)
                any.reset(static_cast<UnionObject*>(copy.release()));
            else
                any->set(std::move(copy));
        }
        value.object = any.release();
        _items.push_back({hostTypeAny, value});
        return true;
    }
    if (isOfArrays()) {
        if (!isBaseType(type)) return false;
    } else if (type != (_elementWord & hostTypeMask)) {
        return false;
    } else if (!isBaseType(type)) {
        if (!value.object) return false;
        value.object = cloneObject(_types, *static_cast<const Object*>(value.object), type).release();
        if (!value.object) return false;
    }
    _items.push_back({type, value});
    return true;
}

}  // namespace refhost
