// Lists: of one type, of any, or of arrays.
#pragma once
#include <vector>

#include "refhost/values/object.h"

namespace refhost {

/// One item. Objects are owned by the list; containers (class bits of `type` set) are not.
struct ListItem {
    HostType type = hostTypeAny;
    HostValue value{};
};

class List {
public:
    /// `elementWord` as hostListElemType gives it, without hostFlagDynamic: a type number; hostClassUnion for any;
    /// hostClassArray for a list of arrays.
    List(const TypeRegistry& types, HostType elementWord, bool dynamic)
        : _types(types), _elementWord(elementWord), _dynamic(dynamic) {}
    ~List();
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    HostType elementWord() const { return _elementWord | (_dynamic ? HostType{hostFlagDynamic} : 0u); }
    bool isOfArrays() const { return (_elementWord & hostClassMask) == hostClassArray; }
    const std::vector<ListItem>& items() const { return _items; }

    /// Appends a value, copying objects. A list of any takes every type and wraps what is not a container in a union.
    /// False when the type does not belong in the list.
    bool append(HostType type, HostValue value);

private:
    const TypeRegistry& _types;
    const HostType _elementWord;
    const bool _dynamic;
    std::vector<ListItem> _items;
};

}  // namespace refhost
