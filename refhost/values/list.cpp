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
        const auto* object = isBaseType(type) ? nullptr : static_cast<const Object*>(value.object);
        const bool isAny = object != nullptr && object->kind == ObjectKind::anyUnion;
        auto any = std::make_unique<UnionObject>(isAny ? object->type : HostType{hostTypeAny});
        if (isAny)
            any->assign(_types, static_cast<const UnionObject&>(*object));
        else if (object != nullptr)
            any->set(cloneObject(_types, *object));
        else if (isBaseType(type))
            any->set(type, value);
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
