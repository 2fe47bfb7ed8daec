#include "host/write/write_flow.h"

#include "host/labels/report.h"
#include "host/values/cell_values.h"
#include "host/values/column_types.h"
#include "host/values/records.h"

namespace quillet {

int ElementFlow::open(int size) {
    _need = columnsForValue(_context, _type, _fieldTable, &_isRecord);
    if (_need == 0) return fail(_context, msg::wrongDataType);
    const int columns = _range.columnCount;
    if (columns < 1) return failColumns(_context, _range, 1);
    if (_isRecord) {
        if (_need > columns || columns % _need != 0) return failColumns(_context, _range, _need);
        _columnTypes = rowColumnTypes(_context, _range, nullptr, 0, _type, _need, _fieldTable);
        if (!_columnTypes) return 1;
    }
    const long long total = 1LL * size * _need;
    _height = fitRows(_range, (total + columns - 1) / columns);
    return 0;
}

int ElementFlow::put(HostType cellType, const HostValue& value) {
    int at = _cursor;
    const int failed =
        _isRecord ? writeRecord(_context, _range, _columnTypes.get(), _row, &at, value.object, _type, _fieldTable)
                  : writeValueToCell(_context, _range, cellType, _row, _range.column(at), &value);
    if (failed) return failAt(_context, _range, msg::wrongResult, _row, _range.column(at));
    _cursor += _need;
    if (_cursor >= _range.columnCount) {
        _cursor = 0;
        ++_row;
    }
    return 0;
}

}  // namespace quillet
