#include "xlsx/features/block.h"

#include <algorithm>

#include "engine/failure/vlerror.h"
#include "xlsx/features/messages.h"

namespace vellum::xlsx {
namespace {

std::uint32_t checkedRow(int row) {
    if (row < 0 || static_cast<std::uint32_t>(row) >= sheetRows) throw vlerror(msg::rowOutOfRange);
    return static_cast<std::uint32_t>(row);
}

std::uint32_t checkedCol(int col) {
    if (col < 0 || static_cast<std::uint32_t>(col) >= sheetColumns) throw vlerror(msg::colOutOfRange);
    return static_cast<std::uint32_t>(col);
}

}  // namespace

CellRange block(int rowFirst, int rowLast, int colFirst, int colLast) {
    const std::uint32_t left = checkedCol(colFirst), right = checkedCol(colLast);
    const std::uint32_t top = checkedRow(rowFirst), bottom = checkedRow(rowLast);
    return {std::min(top, bottom), std::max(top, bottom), std::min(left, right), std::max(left, right)};
}

CellRange orderedBlock(int rowFirst, int rowLast, int colFirst, int colLast) {
    for (const int col : {colFirst, colLast}) {
        if (col < 0 || static_cast<std::uint32_t>(col) >= sheetColumns) throw vlerror(msg::colTooGreat);
    }
    if (rowLast < rowFirst) throw vlerror(msg::rowsReversed);
    if (colLast < colFirst) throw vlerror(msg::colsReversed);
    return block(rowFirst, rowLast, colFirst, colLast);
}

void giveBlock(const CellRange& range, int* rowFirst, int* rowLast, int* colFirst, int* colLast) {
    if (rowFirst) *rowFirst = static_cast<int>(range.rowFirst);
    if (rowLast) *rowLast = static_cast<int>(range.rowLast);
    if (colFirst) *colFirst = static_cast<int>(range.colFirst);
    if (colLast) *colLast = static_cast<int>(range.colLast);
}

}  // namespace vellum::xlsx
