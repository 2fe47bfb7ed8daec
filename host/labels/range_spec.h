// Where the data of one item lie: all that the read and write code sees of a source.
#pragma once
#include <algorithm>
#include <cstdint>

#include "host/interface/c_memory.h"
#include "host/labels/cell_gap.h"
#include "host/labels/row_window.h"
#include "host/sources/options.h"
#include "host/sources/table_ops.h"

namespace quillet {

/// Built anew for each item, on the caller's stack. Rows and columns count from 0. The functions on it take rows and
/// columns relative to `firstRow` and `firstCol`; `columnMap` gives such columns.
struct RangeSpec {
    std::uint32_t flags = 0;  // OptionFlag bits of this item
    std::int32_t bufferSize = 0;
    SpecialValues* specialValues = nullptr;  // the item's own copy; null for csv
    char* textBuffer = nullptr;              // the source's, `bufferSize` bytes
    Book* book = nullptr;
    Sheet* sheet = nullptr;
    std::int32_t firstRow = 0, firstCol = 0, lastRow = 0, lastCol = 0;  // the data, absolute; without the header
    std::int32_t columnCount = 0;
    std::int32_t autoIndexStart = 0;  // value of `autondx=` less one
    std::int32_t headerRow = -1;      // absolute; -1 when there is none
    CArray<std::int32_t> columnMap;   // for each used column its offset from firstCol
    bool columnsInOrder = false;      // columnMap is 0, 1, 2, ...
    const char* realFormat = "";      // the host's format for reals
    TableOps ops = {};
    CellGap gap;  // while reading, as the next
    RowWindow window;

    bool has(std::uint32_t option) const { return (flags & option) != 0; }
    int height() const { return lastRow - firstRow + 1; }
    int width() const { return lastCol - firstCol + 1; }

    int kindAt(int row, int col) {
        row += firstRow;
        col += firstCol;
        if (!window.holds(row, col)) {
            if (gap.holds(row, col)) return cellEmpty;
            window.moveTo(row, col, columnsInOrder ? lastCol - col + 1 : 1);
        }
        const int kind = window.holds(row, col) ? window.kind(col) : ops.cellKind(sheet, row, col);
        if (kind == cellEmpty && !gap.holds(row, col)) gap.lookFrom(row, col);
        return kind;
    }
    /// The number of a cell that is one; the place is absolute.
    double numberAt(int row, int col) const {
        return window.holds(row, col) ? window.number(col) : ops.readReal(sheet, row, col, nullptr);
    }
    /// Whether a cell of this kind counts as empty.
    bool passesOver(int kind) const { return kind == cellEmpty || (kind == cellError && has(optSkipErrorCells)); }
    /// Whether `count` used columns of the row, from `first` on in columnMap, count as empty.
    bool isEmpty(int row, int first, int count) {
        for (int c = first; c < first + count; c = usedFrom(row, c + 1)) {
            if (!passesOver(kindAt(row, column(c)))) return false;
        }
        return true;
    }
    int column(int used) const { return columnMap[std::size_t(used)]; }

    /// The row behind one that was looked at. Rows that are known to hold nothing are passed over.
    int rowBehind(int row) const {
        ++row;
        return gap.holds(firstRow + row, firstCol) ? std::max(row, gap.nextRow() - firstRow) : row;
    }
    /// `used`, or a later one when those between are known to hold nothing in this row; columnCount when all of them
    /// are.
    int usedFrom(int row, int used) const {
        if (!columnsInOrder || used >= columnCount || !gap.holds(firstRow + row, firstCol + used)) return used;
        return gap.nextRow() == firstRow + row ? std::min(columnCount, gap.nextCol() - firstCol) : columnCount;
    }
};

}  // namespace quillet
