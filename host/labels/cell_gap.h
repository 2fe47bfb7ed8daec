// Stretches of a sheet that hold nothing, so that a visit of a range passes over them at once.
#pragma once
#include <cstdint>

#include "host/sources/table_ops.h"

namespace quillet {

/// What the last look for the next cell told: from the place that was asked for, up to that cell in row order, there is
/// none. Knows of no gap while it has no walk. Rows and columns count from 0 and are absolute.
class CellGap {
public:
    CellGap() = default;
    explicit CellGap(const CellWalk& walk) : _walk(walk) {}

    bool holds(int row, int col) const { return place(row, col) - _first < _length; }
    /// The cell behind the gap; notGiven when the rest of the sheet is empty.
    int nextRow() const { return _nextRow; }
    int nextCol() const { return _nextCol; }

    /// Asks for the next cell; to be called where there is none.
    void lookFrom(int row, int col) {
        if (!_walk.from) return;
        _nextRow = row;
        _nextCol = col;
        if (!_walk.from(_walk.cells, &_nextRow, &_nextCol)) _nextRow = _nextCol = notGiven;
        _first = place(row, col);
        _length = place(_nextRow, _nextCol) - _first;
    }

private:
    static std::uint64_t place(int row, int col) {
        return std::uint64_t{std::uint32_t(row)} << 32 | std::uint32_t(col);
    }

    CellWalk _walk;
    std::uint64_t _first = 0, _length = 0;
    int _nextRow = notGiven, _nextCol = notGiven;
};

}  // namespace quillet
