// Elements that are laid across the used columns of a range, row after row: sets and plain lists.
#pragma once
#include "host/values/array_shape.h"
#include "host/write/write_items.h"

namespace quillet {

class ElementFlow {
public:
    ElementFlow(HostContext* context, RangeSpec& range, HostType elementType, const HostType* fieldTable)
        : _context(context), _range(range), _type(elementType), _fieldTable(fieldTable) {}

    /// Tests that the elements go into the columns, and makes room for `size` of them. 0, or 1 after a message.
    int open(int size);

    /// Whether no row is left; what comes then is dropped.
    bool isFull() const { return _row >= _height; }

    /// Writes the next element. `cellType` is its own type, where it is no record. 0, or 1 after a message.
    int put(HostType cellType, const HostValue& value);

private:
    HostContext* _context;
    RangeSpec& _range;
    HostType _type;
    const HostType* _fieldTable;
    CArray<HostType> _columnTypes;
    int _need = 1;  // columns of one element
    int _isRecord = 0;
    int _height = 0;
    int _row = 0;
    int _cursor = 0;  // the next used column
};

}  // namespace quillet
