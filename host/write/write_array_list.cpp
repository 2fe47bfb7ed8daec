#include <algorithm>

#include "host/interface/observer.h"
#include "host/labels/report.h"
#include "host/values/array_list.h"
#include "host/values/cell_values.h"
#include "host/values/index_sets.h"
#include "host/write/write_items.h"

namespace quillet {
namespace {

/// The arrays of a list, merged by their index tuples: one row for each distinct tuple.
struct ArrayMerge {
    HostContext* context;
    RangeSpec& range;
    const ArrayList& list;
    CArray<int> tuples;     // of each array its current tuple, `dims` slots
    CArray<int> remaining;  // of each array its entries not yet written; 0 when it is out of the game
    CArray<int> lowest;     // the tuple of the next row

    int* tupleOf(int i) const { return tuples.get() + std::size_t(i) * std::size_t(list.dims); }
    int& left(int i) const { return remaining[std::size_t(i)]; }
};

int open(ArrayMerge& m) {
    const std::size_t count = std::size_t(m.list.count), dims = std::size_t(m.list.dims);
    m.tuples = allocateArray<int>(count * dims);
    m.remaining = allocateArray<int>(count);
    m.lowest = allocateArray<int>(dims);
    if (!m.tuples || !m.remaining || !m.lowest) return fail(m.context, msg::noMemory);
    for (int i = 0; i < m.list.count; ++i) {
        HostArray* const array = m.list.arrays[std::size_t(i)];
        if (hostApi().hostArrayFirstEntry(array, m.tupleOf(i)) == 0) m.left(i) = hostApi().hostArrayCount(array);
    }
    return 0;
}

/// Finds the lowest tuple among the arrays that have one left. Gives the largest number of entries left, 0 at the
/// end of the merge.
int pickLowest(const ArrayMerge& m) {
    int most = 0;
    const int* lowest = nullptr;
    for (int i = 0; i < m.list.count; ++i) {
        if (m.left(i) <= 0) continue;
        most = std::max(most, m.left(i));
        if (!lowest || hostApi().hostTupleCompare(m.list.dims, m.tupleOf(i), lowest) < 0) lowest = m.tupleOf(i);
    }
    if (lowest) std::copy_n(lowest, m.list.dims, m.lowest.get());
    return most;
}

/// Writes the value of one array into its column and steps on.
int putEntry(const ArrayMerge& m, int i, int row) {
    HostArray* const array = m.list.arrays[std::size_t(i)];
    const int col = m.range.column(m.list.indexColumns + i);
    HostValue value = {.bits = 0};
    hostApi().hostArrayGet(array, m.tupleOf(i), &value);
    if (writeValueToCell(m.context, m.range, m.list.valueTypes[std::size_t(i)], row, col, &value)) {
        return failAt(m.context, m.range, msg::wrongDataValue, row, col);
    }
    m.left(i) = hostApi().hostArrayNextEntry(array, m.tupleOf(i)) ? 0 : m.left(i) - 1;
    return 0;
}

int writeRow(const ArrayMerge& m, int row) {
    if (writeIndexColumns(m.context, m.range, m.list.sets.get(), m.list.indexTypes.get(), m.list.indexColumns, row,
                          m.lowest.get())) {
        return 1;
    }
    for (int i = 0; i < m.list.count; ++i) {
        if (m.left(i) <= 0 || hostApi().hostTupleCompare(m.list.dims, m.tupleOf(i), m.lowest.get()) != 0) continue;
        if (putEntry(m, i, row)) return 1;
    }
    return 0;
}

/// The rows of one block of the range. `*left` says how many entries the longest array has left at its end.
int writeBlock(const ArrayMerge& m, int height, int* left) {
    for (int row = 0; row < height; ++row) {
        if (*left <= 0) break;
        if (writeRow(m, row)) return 1;
        *left = pickLowest(m);
    }
    return 0;
}

/// How many rows it takes is only known at the end, as each row may serve any number of arrays. So the range takes
/// what the longest array needs, and when that is used up moves down as a whole.
int writeBlocks(const ArrayMerge& m) {
    int left = pickLowest(m);
    while (left > 0) {
        const int height = fitRows(m.range, left);
        if (height < 1) return 0;
        if (writeBlock(m, height, &left)) return 1;
        if (!m.range.has(optGrow)) {
            if (observer != nullptr && left > 0) observer->rowsLeft(left);
            return 0;
        }
        m.range.firstRow += height;
        m.range.lastRow += height;
    }
    return 0;
}

}  // namespace

int writeListOfArrays(HostContext* context, RangeSpec& range, HostList* arrays) {
    ArrayList list;
    if (describeArrayList(context, range, arrays, &list)) return 1;
    ArrayMerge merge{context, range, list, nullptr, nullptr, nullptr};
    if (open(merge)) return 1;
    if (observer != nullptr) observer->laidOut(Layout::arrayList, list.indexColumns);
    const IndexWalk walk(context, list.sets.get(), list.dims);
    return writeBlocks(merge);
}

}  // namespace quillet
