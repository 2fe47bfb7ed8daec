// Neighbouring cells of a row whose kinds and numbers are asked for at once.
#pragma once
#include <algorithm>
#include <cstdint>

#include "host/sources/table_ops.h"

namespace quillet {

/// What the last look at a row told. Holds nothing while it has no look; what is written later it does not see. Rows
/// and columns count from 0 and are absolute.
class RowWindow {
public:
    RowWindow() = default;
    explicit RowWindow(const RowLook& look) : _look(look) {}

    bool holds(int row, int col) const { return row == _row && std::uint32_t(col) - std::uint32_t(_col) < _count; }
    /// As `cellKind` and, of a cell that is a number, `readReal`; of a cell that it holds.
    int kind(int col) const { return _kinds[col - _col]; }
    double number(int col) const { return _numbers[col - _col]; }

    /// Looks at up to `count` cells from this one on. False when it has no look.
    bool moveTo(int row, int col, int count) {
        if (!_look.at) return false;
        _row = row;
        _col = col;
        _count = std::uint32_t(std::clamp(count, 1, most));
        _look.at(_look.cells, row, col, int(_count), _kinds, _numbers);
        return true;
    }

private:
    static constexpr int most = 64;

    RowLook _look;
    int _row = 0, _col = 0;
    std::uint32_t _count = 0;
    std::uint8_t _kinds[most];
    double _numbers[most];
};

}  // namespace quillet
